#include "endtoend/EditorDesktop.h"

#include "support/desktop/HudWatcher.h"

#include <stdexcept>

namespace orvantile::bench {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

} // namespace

EditorDesktop::EditorDesktop() : injector(desktop.display()), watcher(desktop.display()) {
    const auto text = desktop.writeFile(u"notes.txt"_s, "A short text to work on.\n");
    // A HUD that goes soon lets the next shot start soon.
    desktop.writeFile(u".config/orvantile/orvantile.ini"_s, "[General]\ndisplaySeconds=0.3\n");
    editor = desktop.start(u"mousepad"_s, {u"--disable-server"_s, text});
    editorWindow = watcher.awaitActive(test::ofClass(u"mousepad"_s)).handle;
}

pid_t EditorDesktop::startOrvantile() {
    test::HudWatcher huds(desktop.display());
    orvantile = desktop.start(QStringLiteral(ORVANTILE_EXECUTABLE));
    watcher.close(watcher.awaitWindow(test::titled(u"Orvantile Preferences"_s)).handle);
    watcher.activate(editorWindow);
    // The table of the editor's commands is complete a moment after it has come to the front.
    const QDeadlineTimer deadline(test::patience);
    while (!deadline.hasExpired()) {
        injector.press(u"Ctrl+A"_s);
        if (huds.awaitNext(QDeadlineTimer(200ms))) {
            huds.awaitHidden();
            return orvantile->processIdentifier();
        }
    }
    throw std::runtime_error("the program does not name Ctrl+A: " + orvantile->standardError().toStdString());
}

} // namespace orvantile::bench
