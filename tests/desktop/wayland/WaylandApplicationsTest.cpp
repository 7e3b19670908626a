// Real applications on a Wayland compositor, and what is named of them.

#include "support/QtPrinting.h"
#include "support/wayland/WaylandStage.h"

#include <QStandardPaths>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::IsEmpty;

const WaylandApplication mousepad{
    u"mousepad"_s, {u"--disable-server"_s, u"notes.txt"_s}, u"Mousepad"_s, u"Ctrl+A"_s, u"⌃A  Select All"_s};
const WaylandApplication featherpad{
    u"featherpad"_s, {u"--standalone"_s, u"draft.txt"_s}, u"draft.txt"_s, u"Ctrl+N"_s, u"⌃N  New"_s};

const WaylandApplication writer{u"soffice"_s,
                                {u"--writer"_s, u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s},
                                u"LibreOffice Writer"_s,
                                u"Ctrl+A"_s,
                                u"⌃A  Select All"_s};

/// Qt programs tell their commands through the helper.
void loadHelper(WaylandStage& stage) {
    const auto folders = QStringLiteral(ORVANTILE_HELPERS);
    stage.session().setVariable(u"QT_PLUGIN_PATH"_s, folders % u"/qt5:"_s % folders % u"/qt6"_s);
    stage.session().setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile"_s);
    stage.session().setVariable(u"QT_QPA_PLATFORM"_s, u"wayland"_s);
}

TEST(WaylandApplications, commandsOfAGtkProgramAreNamed) {
    WaylandStage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"⌃F  Find"_s);
    stage.keys().press(u"Escape"_s);
    stage.keys().press(u"Ctrl+Home"_s);
    stage.keys().type(u"x"_s);
    EXPECT_EQ(stage.awaitCommandsOf(mousepad), QStringList());
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s)
        << "as it stood before the key: it is insensitive after";
}

TEST(WaylandApplications, typedTextIsNotTold) {
    WaylandStage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.keys().type(u"the quick brown fox"_s);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), IsEmpty());
}

TEST(WaylandApplications, commandsAreNamedAgainAfterTheProgramWasStopped) {
    WaylandStage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.orvantile().signal(SIGSTOP);
    stage.keys().press(u"Ctrl+Shift+S"_s);
    stage.awaitFocus(u"Save As"_s); // by now the registry has given the program up
    stage.orvantile().signal(SIGCONT);
    stage.keys().press(u"Escape"_s);
    stage.awaitFocus(mousepad.title);
    stage.awaitCommandsOf(mousepad);
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"⌃F  Find"_s);
}

TEST(WaylandApplications, anOpenMenuKeepsShortcutsFromBeingNamed) {
    WaylandStage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    stage.keys().press(u"F10"_s);
    stage.keys().press(u"Down"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"nothing"_s);
    stage.keys().press(u"Escape"_s);
    stage.keys().press(u"Escape"_s);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), IsEmpty());
}

TEST(WaylandApplications, commandsOfAQtProgramAreNamedThroughTheHelper) {
    WaylandStage stage;
    loadHelper(stage);
    stage.start(featherpad);
    stage.startOrvantile();
    stage.awaitCommandsOf(featherpad);
    EXPECT_EQ(stage.fire(u"Ctrl+S"_s), u"nothing"_s) << "there is nothing to save";
    stage.keys().type(u"x"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+S"_s), u"⌃⇧S  Save As"_s);
}

TEST(WaylandApplications, commandsOfAnOfficeSuiteAreNamed) {
    WaylandStage stage;
    stage.session().writeFile(u".config/libreoffice/4/user/registrymodifications.xcu"_s,
                              R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)");
    stage.session().setVariable(u"SAL_USE_VCLPLUGIN"_s, u"gtk3"_s);
    stage.start(writer);
    stage.startOrvantile();
    stage.awaitCommandsOf(writer);
    EXPECT_EQ(stage.fire(u"Ctrl+B"_s), u"⌃B  Bold"_s);
}

TEST(WaylandApplications, commandsOfFirefoxAreNamedOnceTheirMenuWasOpen) {
    const auto program = u"firefox-esr"_s;
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        GTEST_SKIP()
            << "firefox-esr is not installed; it is large, and among the programs of the compatibility table";
    }
    WaylandStage stage;
    stage.session().setVariable(u"MOZ_ENABLE_WAYLAND"_s, u"1"_s);
    stage.session().writeFile(u"profile/user.js"_s, R"(
user_pref("browser.aboutwelcome.enabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("browser.shell.checkDefaultBrowser", false);
)");
    const auto firefox =
        stage.session().start(program, {u"--no-remote"_s, u"--profile"_s,
                                        stage.session().home() + u"/profile"_s, u"about:blank"_s});
    stage.awaitFocus(u"Firefox"_s);
    stage.startOrvantile();
    const auto nameOf = [&](const QString& combination) {
        stage.keys().press(combination);
        return stage.huds().awaitNext(QDeadlineTimer(2500));
    };
    std::optional<QString> named;
    for (const QDeadlineTimer deadline(std::chrono::seconds(60)); !named && !deadline.hasExpired();) {
        EXPECT_EQ(nameOf(u"Alt+F"_s), std::nullopt) << "which opens a menu, and takes its time to fill it";
        stage.keys().press(u"Escape"_s);
        EXPECT_EQ(nameOf(u"Escape"_s), std::nullopt) << "which leaves the menu bar";
        named = nameOf(u"Ctrl+T"_s);
    }
    EXPECT_EQ(named, u"⌃T  New Tab"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+B"_s), u"nothing"_s) << "it is in a menu that has not been open";
}

TEST(WaylandApplications, switchingBetweenTwoToolkitsKeepsBothNamed) {
    WaylandStage stage;
    loadHelper(stage);
    stage.start(mousepad);
    stage.start(featherpad);
    stage.startOrvantile();
    for (int round = 0; round < 3; ++round) {
        stage.focus(u"app_id=mousepad"_s, mousepad.title);
        EXPECT_THAT(stage.awaitCommandsOf(mousepad), IsEmpty());
        stage.focus(u"app_id=featherpad"_s, {}); // it has opened other files by now
        EXPECT_THAT(stage.awaitCommandsOf(featherpad), IsEmpty());
    }
}

TEST(WaylandApplications, theDialogInFrontHidesTheCommandsOfTheWindow) {
    WaylandStage stage;
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+S"_s), u"⌃⇧S  Save As..."_s);
    stage.awaitFocus(u"Save As"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"nothing"_s);
}

} // namespace
} // namespace orvantile::test
