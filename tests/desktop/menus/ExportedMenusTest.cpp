// Programs that export their menus on the session bus, for a menu bar of the desktop's.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"
#include "support/desktop/SessionBusCalls.h"

#include <QDeadlineTimer>
#include <chrono>
#include <gmock/gmock.h>
#include <stdexcept>
#include <thread>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const Application featherpad{
    u"featherpad"_s, {u"notes.txt"_s}, u"featherpad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};

/// The service that tells which menu belongs to which window, and asks programs to export theirs by being
/// there.
std::unique_ptr<ChildProcess> startRegistrar(PrivateSession& session) {
    auto registrar = session.start(u"/usr/libexec/vala-panel/appmenu-registrar"_s);
    const SessionBusCalls bus(session.sessionBusAddress());
    const QDeadlineTimer deadline(std::chrono::seconds(20));
    while (bus.ownerOf(u"com.canonical.AppMenu.Registrar"_s) == 0) {
        if (deadline.hasExpired()) {
            throw std::runtime_error("no registrar of menus: " + registrar->standardError().toStdString());
        }
        std::this_thread::yield();
    }
    return registrar;
}

TEST(RegistrarTest, namesShortcutsOfAQtProgram) {
    Stage stage;
    stage.session().setVariable(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
    const auto registrar = startRegistrar(stage.session());
    stage.start(featherpad);
    stage.startOrvantile();
    stage.awaitCommandsOf(featherpad);
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"⌃F  Find"_s);
    EXPECT_EQ(stage.fire(u"Escape"_s), u"nothing"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"nothing"_s) << "there is nothing to undo yet";
    EXPECT_EQ(stage.fire(u"Ctrl+X"_s), u"⌃X  Cut"_s) << "all is selected";
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Alt+F7"_s), u"nothing"_s);
    // A dialog has none of these.
    EXPECT_EQ(stage.fire(u"Ctrl+O"_s), u"⌃O  Open"_s);
    stage.windows().awaitActive([](const Window& window) { return window.title.contains(u"Open"_s); },
                                QDeadlineTimer(std::chrono::seconds(20)));
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"nothing"_s);
}

TEST(GtkMenusTest, namesShortcutsOfAnOfficeSuiteThatTellsAssistiveTechnologyNothing) {
    Stage stage;
    stage.session().setVariable(u"NO_AT_BRIDGE"_s, u"1"_s);
    stage.start(writer);
    stage.startOrvantile();
    stage.awaitCommandsOf(writer);
    EXPECT_EQ(stage.fire(u"Ctrl+B"_s), u"⌃B  Bold"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Alt+F7"_s), u"nothing"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+X"_s), u"nothing"_s) << "nothing is selected";
}

} // namespace
} // namespace orvantile::test
