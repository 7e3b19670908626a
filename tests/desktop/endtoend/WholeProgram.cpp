#include "desktop/endtoend/WholeProgram.h"

#include "desktop/endtoend/ShownCapsule.h"

#include <QFile>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;
using std::chrono::steady_clock;

bool isPreferences(const Window& window) {
    return window.title == u"Orvantile Preferences"_s;
}

const QString settingsPath = u".config/orvantile/orvantile.ini"_s;

/// Programs take their time to start on a busy machine.
constexpr std::chrono::seconds startPatience{60};

} // namespace

WholeProgram::WholeProgram(const QByteArray& settings)
    : statusBar(desktop.session().sessionBusAddress()),
      client(desktop.session().accessibilityBusAddress()) {
    paintDesktopGrey();
    desktop.session().writeFile(settingsPath, settings);
    editor = desktop.start(mousepad);
    desktop.windows().moveTo(editor.handle, {0, 0});
    statusBar.appear();
    start();
}

void WholeProgram::paintDesktopGrey() {
    const XConnection x(desktop.session().display());
    constexpr auto level = static_cast<std::uint32_t>(ShownCapsule::desktopGrey);
    constexpr std::uint32_t grey = level << 16U | level << 8U | level;
    xcb_change_window_attributes(x.get(), x.root(), XCB_CW_BACK_PIXEL, &grey);
    xcb_clear_area(x.get(), 0, x.root(), 0, 0, 0, 0);
    x.synchronize();
}

void WholeProgram::start() {
    program = desktop.session().start(QStringLiteral(ORVANTILE_EXECUTABLE));
    desktop.windows().awaitActive(isPreferences, QDeadlineTimer(startPatience));
    static_cast<void>(control(radioButton, u"General"_s)); // it answers, and no longer moves its windows
    if (!statusBar.await([this] { return !statusBar.items().isEmpty(); })) {
        throw std::runtime_error("the bar does not get the item");
    }
}

void WholeProgram::showPreferences() {
    if (!statusBar.choose(u"Preferences…"_s)) {
        throw std::runtime_error("no menu with preferences");
    }
    desktop.windows().awaitActive(isPreferences);
}

void WholeProgram::closePreferences() {
    const auto preferences = desktop.windows().awaitWindow(isPreferences);
    desktop.windows().close(preferences.handle);
    desktop.windows().awaitGone(preferences.handle);
}

ShownHud WholeProgram::fire() {
    for (const QDeadlineTimer deadline(startPatience); !deadline.hasExpired();) {
        desktop.windows().activate(editor.handle);
        desktop.keys().press(mousepad.fenceKeys);
        if (const auto hud = desktop.huds().awaitNext(QDeadlineTimer(500ms))) {
            return *hud;
        }
    }
    throw std::runtime_error("the editor's commands are not named; " +
                             program->standardError().toStdString());
}

QString WholeProgram::fireInVain() {
    desktop.windows().activate(editor.handle);
    desktop.keys().press(mousepad.fenceKeys);
    const auto hud = desktop.huds().awaitNext(QDeadlineTimer(2s));
    return hud ? hud->label : u"nothing"_s;
}

std::chrono::duration<double> WholeProgram::awaitHidden(const ShownHud& hud) {
    if (!desktop.huds().awaitHidden()) {
        throw std::runtime_error("the HUD does not go");
    }
    desktop.huds().takeAll();
    return steady_clock::now() - hud.time;
}

void WholeProgram::chooseNeighbour(const QString& present, const QString& key, const QString& wanted) {
    showPreferences();
    const auto picker = control(comboBox, present);
    const bool opened = client.perform(picker, u"ShowMenu"_s);
    const auto item = control(u"list item"_s, wanted);
    desktop.keys().press(key);
    if (!opened || !await([&] { return client.has(item, AccessibleState::focused); })) {
        throw std::runtime_error("the picker does not go to " + wanted.toStdString());
    }
    desktop.keys().press(u"Return"_s);
    static_cast<void>(control(comboBox, wanted));
    desktop.huds().takeAll(); // the picker's list looks like one
}

QByteArray WholeProgram::settings() {
    QFile file(desktop.session().home() + u'/' + settingsPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace orvantile::test
