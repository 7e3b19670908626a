// A program with the helper in it, for both versions of Qt.

#include "desktop/helper/HelperStage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::EndsWith;

class MenuApplicationTest : public ::testing::TestWithParam<int> {
protected:
    MenuApplicationTest() {
        loadHelper(stage.session());
        window = stage.start(application);
        stage.startOrvantile();
        stage.awaitCommandsOf(application);
    }

    QStringList shownBy(const std::function<void()>& action) { return stage.shownBy(application, action); }

    /// The next action of the program that is no fence; empty when there is none in time.
    std::string awaitAction() {
        for (;;) {
            const auto line = stage.process(application).awaitLine();
            if (!line || (!line->endsWith("Fence") && !line->endsWith("ready"))) {
                return line.value_or(QByteArray()).toStdString();
            }
        }
    }

    Window openFileMenu() {
        stage.keys().click(window.frame.topLeft() + QPoint(18, 10));
        return stage.windows().awaitMenus(1).front();
    }

    Application application = menuApplication(GetParam());
    Stage stage;
    Window window;
};

TEST_P(MenuApplicationTest, namesShortcuts) {
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+S"_s), u"⌃⇧S  Save As…"_s) << "without mnemonic and tab";
    EXPECT_EQ(stage.fire(u"Ctrl+Alt+F"_s), u"⌃⌥F  Find & Replace"_s) << "in a submenu";
    EXPECT_EQ(stage.fire(u"Ctrl+J"_s), u"⌃J  保存"_s);
    EXPECT_EQ(stage.fire(u"F5"_s), u"F5  Refresh"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
}

TEST_P(MenuApplicationTest, namesSequencesOnceTheyAreComplete) {
    EXPECT_EQ(stage.fire(u"Ctrl+K"_s), u"nothing"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+C"_s), u"⌃K ⌃C  Comment"_s);
}

TEST_P(MenuApplicationTest, keysThatFireNoCommandShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    stage.keys().press(u"Ctrl+L"_s); // disabled
                    stage.keys().press(u"Ctrl+A"_s); // the text takes it before the menu
                    stage.keys().press(u"Ctrl+D"_s); // two commands want it
                    stage.keys().press(u"Ctrl+H"_s); // in no menu
                    stage.keys().press(u"Ctrl+W"_s); // nobody's
                    stage.keys().type(u"typed text"_s);
                }),
                ElementsAre());
}

TEST_P(MenuApplicationTest, picksWithTheMouseShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    const auto menu = openFileMenu();
                    stage.keys().click(menu.frame.topLeft() + QPoint(30, 14));
                    EXPECT_THAT(awaitAction(), EndsWith("&New"));
                    stage.windows().awaitMenus(0);
                }),
                ElementsAre());
}

TEST_P(MenuApplicationTest, picksWithTheKeyboardShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    openFileMenu();
                    stage.keys().press(u"n"_s); // by its mnemonic
                    EXPECT_THAT(awaitAction(), EndsWith("&New"));
                    stage.windows().awaitMenus(0);
                }),
                ElementsAre());
}

TEST_P(MenuApplicationTest, shortcutsWhileAMenuIsOpenShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    openFileMenu();
                    stage.keys().press(u"Ctrl+N"_s);
                    stage.keys().press(u"F5"_s);
                    while (!stage.windows().menus().empty()) {
                        stage.keys().press(u"Escape"_s);
                        stage.windows().awaitMenus(0);
                    }
                }),
                ElementsAre());
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
}

TEST_P(MenuApplicationTest, isHeardByAProgramThatIsStartedAgain) {
    stage.orvantile().signal(SIGKILL);
    ASSERT_TRUE(stage.orvantile().awaitExit().has_value());
    stage.keys().press(u"Ctrl+N"_s); // to a socket that nobody serves
    stage.startOrvantile();
    EXPECT_THAT(stage.awaitCommandsOf(application), ElementsAre());
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
}

TEST_P(MenuApplicationTest, filtersOfTheProgramComeFirst) {
    stage.process(application).end();
    application.arguments = {u"--swallow"_s};
    stage.start(application);
    stage.keys().press(u"Ctrl+N"_s);
    stage.keys().press(u"F5"_s);
    stage.process(application).end();
    application.arguments = {u"--watch"_s};
    stage.start(application);
    EXPECT_THAT(stage.awaitCommandsOf(application), ElementsAre());
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
}

TEST_P(MenuApplicationTest, isNotHeldUpByAProgramThatHasStopped) {
    stage.orvantile().signal(SIGSTOP);
    stage.session().setVariable(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    const auto busy = stage.session().start(application.program, {u"--fire"_s, u"10000"_s});
    EXPECT_EQ(busy->awaitLine(), "ready");
    const auto done = busy->awaitLine(QDeadlineTimer(std::chrono::seconds(60)));
    EXPECT_TRUE(done && done->startsWith("done 10000 ")) << busy->standardError().toStdString();
    EXPECT_EQ(busy->awaitExit(), 0);
    stage.orvantile().signal(SIGCONT);
    // What comes before it has read what was waiting is lost, so this takes a moment.
    EXPECT_THAT(stage.awaitCommandsOf(application), ElementsAre()) << "another program has sent the rest";
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);
}

INSTANTIATE_TEST_SUITE_P(Qt, MenuApplicationTest, ::testing::Values(ORVANTILE_QT_VERSIONS),
                         [](const auto& version) { return std::to_string(version.param); });

} // namespace
} // namespace orvantile::test
