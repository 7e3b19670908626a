// Starts the program on a private desktop beside a real editor, fires three shortcuts, prints the labels that
// were on the screen and keeps screenshots of them.

#include "demo/Wallpaper.h"
#include "support/desktop/HudWatcher.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/WindowWatcher.h"

#include <QDir>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

constexpr auto text = "Press a shortcut, and a capsule names what it did.\n"
                      "\n"
                      "Key casters show keys. This shows what the keys did:\n"
                      "the name of the menu command, straight from the\n"
                      "application in front.\n";

struct Shot {
    QString keys;
    QString file;
};

/// Presses until the first label appears: the editor's commands are known a moment after it has come to the
/// front.
void awaitReadiness(KeyInjector& keys, HudWatcher& huds) {
    const QDeadlineTimer deadline(patience);
    while (!deadline.hasExpired()) {
        keys.press(u"Ctrl+A"_s);
        if (huds.awaitNext(QDeadlineTimer(250ms))) {
            huds.awaitHidden();
            return;
        }
    }
    throw std::runtime_error("no shortcut was named");
}

/// The HUD at rest: its entrance and the compositor take a moment to come to an end.
QImage settledScreen(const QString& display) {
    const XConnection x(display);
    auto before = takeScreenshot(display);
    const QDeadlineTimer deadline(900ms);
    while (!deadline.hasExpired()) {
        x.await([] { return false; }, [](const auto&) {}, QDeadlineTimer(100ms));
        auto now = takeScreenshot(display);
        if (now == before) {
            break;
        }
        before = std::move(now);
    }
    return before;
}

void run(const QString& directory) {
    if (!QDir().mkpath(directory)) {
        throw std::runtime_error("cannot make the folder " + directory.toStdString());
    }
    PrivateSession session({.compositor = true});
    paintWallpaper(session.display());
    KeyInjector keys(session.display());
    const WindowWatcher windows(session.display());
    HudWatcher huds(session.display());

    const auto file = session.writeFile(u"notes.txt"_s, text);
    const auto editor = session.start(u"mousepad"_s, {u"--disable-server"_s, file});
    const auto window = windows.awaitActive(ofClass(u"mousepad"_s));
    const auto orvantile = session.start(QStringLiteral(ORVANTILE_EXECUTABLE));
    windows.close(windows.awaitWindow(titled(u"Orvantile Preferences"_s)).handle);
    windows.activate(window.handle);
    awaitReadiness(keys, huds);

    const std::array shots{Shot{u"Ctrl+A"_s, u"1-select-all.png"_s}, Shot{u"Ctrl+X"_s, u"2-cut.png"_s},
                           Shot{u"Ctrl+Z"_s, u"3-undo.png"_s}};
    for (const auto& shot : shots) {
        keys.press(shot.keys);
        const auto hud = huds.awaitNext(QDeadlineTimer(2s));
        if (!hud) {
            throw std::runtime_error("nothing was shown for " + shot.keys.toStdString());
        }
        const auto path = QDir(directory).filePath(shot.file);
        if (!settledScreen(session.display()).save(path)) {
            throw std::runtime_error("cannot write " + path.toStdString());
        }
        std::printf("%-8s →  %s\n", qUtf8Printable(shot.keys), qUtf8Printable(hud->label));
        huds.awaitHidden();
    }
    std::printf("Screenshots: %s\n", qUtf8Printable(QDir(directory).absolutePath()));
}

} // namespace
} // namespace orvantile::test

int main(int argc, char* argv[]) {
    try {
        orvantile::test::run(QString::fromLocal8Bit(argc > 1 ? argv[1] : "build/demo"));
        return EXIT_SUCCESS;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return EXIT_FAILURE;
    }
}
