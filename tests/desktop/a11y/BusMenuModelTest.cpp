#include "desktop/a11y/ModelFixture.h"
#include "support/QtPrinting.h"
#include "support/desktop/SessionBusCalls.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <csignal>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using platform::AttributeValue;

class BusMenuModel : public ModelFixture {};

TEST_F(BusMenuModel, learnsTheCommandsOfTheProgramInFront) {
    const auto program = startInFront();
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    EXPECT_TRUE(fires(*program, u"<Primary><Shift>s"_s, u"Save As…"_s)) << "without the blanks around it";
    EXPECT_EQ(fired(*program, u"<Primary>s"_s), u"(none)") << "it is disabled";
    EXPECT_EQ(fired(*program, u"<Primary>a"_s), u"(none)");
    EXPECT_EQ(model->reach(program->processIdentifier()).items, 4U);
}

TEST_F(BusMenuModel, givesTheAttributesOfAMenuItem) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary><Shift>s"_s, u"Save As…"_s));
    const auto node =
        model->commandFor(windowOf(*program), {{{.control = true, .shift = true}, u's'}}).command;
    ASSERT_TRUE(node);
    EXPECT_EQ(node->copyAttribute(u"AXTitle"), AttributeValue(u"Save As…"_s));
    EXPECT_EQ(node->copyAttribute(u"AXMenuItemCmdChar"), AttributeValue(u"s"_s));
    EXPECT_EQ(node->copyAttribute(u"AXMenuItemCmdModifiers"), AttributeValue(std::int64_t{4 + 1 + 8}));
    EXPECT_EQ(node->copyAttribute(u"AXMenuItemCmdGlyph"), AttributeValue());
    EXPECT_EQ(node->copyAttribute(u"AXRole"), AttributeValue());
}

TEST_F(BusMenuModel, triesTheMeaningsOfAKeyInOrder) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    const auto node = model
                          ->commandFor(windowOf(*program), {{{.alt = true}, u'q'},
                                                            {{.control = true}, u'n'},
                                                            {{.control = true, .shift = true}, u's'}})
                          .command;
    ASSERT_TRUE(node);
    EXPECT_EQ(node->copyAttribute(u"AXTitle"), AttributeValue(u"New"_s));
}

TEST_F(BusMenuModel, followsWhatBecomesEnabledAndDisabled) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->order("enable Save");
    EXPECT_TRUE(fires(*program, u"<Primary>s"_s, u"Save"_s));
    program->order("disable Save");
    EXPECT_TRUE(fires(*program, u"<Primary>s"_s, u"(none)"_s));
}

TEST_F(BusMenuModel, readsTheAcceleratorOfAnItemThatBecomesEnabled) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->order("bind About=;;F1\nenable About");
    EXPECT_TRUE(fires(*program, u"F1"_s, u"About"_s));
}

TEST_F(BusMenuModel, keepsTheSnapshotThatTheKeyMet) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    const auto node = model->commandFor(windowOf(*program), {{{.control = true}, u'n'}}).command;
    program->order("rename New=New Window");
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New Window"_s));
    EXPECT_EQ(node->copyAttribute(u"AXTitle"), AttributeValue(u"New"_s));
}

TEST_F(BusMenuModel, findsItemsThatAreAdded) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->order("add Macro=;;<Primary>m");
    EXPECT_TRUE(fires(*program, u"<Primary>m"_s, u"Macro"_s));
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"New");
}

TEST_F(BusMenuModel, knowsTheWindowUnderItsNewTitle) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->order("retitle Another Title");
    EXPECT_EQ(fired(windowOf(*program, u"Another Title"_s), u"<Primary>n"_s), u"New");
}

TEST_F(BusMenuModel, firesNothingOfTheWindowBehindADialog) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    auto dialog = windowOf(*program, u"Save As"_s, true);
    dialog.handle = 77;
    EXPECT_EQ(fired(dialog, u"<Primary>n"_s), u"(none)") << "it is not known yet";
    program->order("dialog Save As");
    model->windowActivated(dialog);
    EXPECT_EQ(fired(dialog, u"<Primary>n"_s), u"(none)");
    model->windowActivated(windowOf(*program));
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"New");
}

TEST_F(BusMenuModel, readsTitlesAgainThatChangedUntoldBehindADialog) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    auto dialog = windowOf(*program, u"Offset"_s, true);
    dialog.handle = 77;
    model->windowActivated(dialog);
    program->order("rename-silently New=Repeat Offset");
    model->windowActivated(windowOf(*program));
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"Repeat Offset"_s));
}

TEST_F(BusMenuModel, readsTitlesAgainThatACommandHasChangedUntold) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    ASSERT_TRUE(fires(*program, u"<Primary><Shift>s"_s, u"Save As…"_s));
    program->order("rename-silently New=New Like Before");
    ASSERT_EQ(fired(*program, u"<Primary><Shift>s"_s), u"Save As…");
    bool read = false;
    model->onTableComplete = [&read](std::int32_t) { read = true; };
    ASSERT_TRUE(eventually([&read] { return read; }));
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"New Like Before");
}

TEST_F(BusMenuModel, learnsOfAProgramThatStartsLater) {
    const auto first = startInFront();
    ASSERT_TRUE(fires(*first, u"<Primary>n"_s, u"New"_s));
    const auto second = startInFront();
    EXPECT_TRUE(fires(*second, u"<Primary>n"_s, u"New"_s));
}

TEST_F(BusMenuModel, remembersAProgramThatComesBackToTheFront) {
    const auto first = startInFront();
    ASSERT_TRUE(fires(*first, u"<Primary>n"_s, u"New"_s));
    const auto second = startInFront();
    ASSERT_TRUE(fires(*second, u"<Primary>n"_s, u"New"_s));
    first->order("rename New=New Document");
    bringToFront(*first);
    EXPECT_EQ(fired(*first, u"<Primary>n"_s), u"New") << "at once, from memory";
    EXPECT_TRUE(fires(*first, u"<Primary>n"_s, u"New Document"_s)) << "then what has changed meanwhile";
}

TEST_F(BusMenuModel, forgetsAProgramThatQuits) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->order("quit");
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items == 0; }));
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"(none)");
}

TEST_F(BusMenuModel, handlesWindowSystemEventsBeforeMessages) {
    QStringList seen; // outlives the program, whose end turns the main loop
    std::function<void()> watch;
    model = platform::a11y::makeBusMenuModel([&] {
        if (watch) {
            watch();
        }
    });
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    watch = [&] { seen.append(fired(*program, u"<Primary>n"_s)); };
    program->order("disable New");
    ASSERT_TRUE(eventually([&] { return seen.contains(u"(none)"_s); }));
    EXPECT_EQ(seen.first(), u"New") << "as it stood before the message";
}

TEST_F(BusMenuModel, isAvailableWhileTheDesktopWantsAccessibility) {
    EXPECT_TRUE(eventually([&] { return model->isAvailable(); }));
    session.setAccessibilityEnabled(false);
    EXPECT_TRUE(eventually([&] { return !model->isAvailable(); }));
    model->accessibilityBus().setEnabled(true);
    EXPECT_TRUE(eventually([&] { return model->isAvailable(); }));
    EXPECT_TRUE(session.accessibilityEnabled());
}

TEST_F(BusMenuModel, saysEachTimeThatItIsAvailable) {
    int times = 0;
    session.setAccessibilityEnabled(false);
    model = platform::a11y::makeBusMenuModel([] {});
    model->onAvailable = [&] {
        EXPECT_TRUE(model->isAvailable());
        ++times;
    };
    ASSERT_TRUE(eventually([&] { return model->accessibilityBus().isConnected(); }));
    EXPECT_EQ(times, 0);
    for (const bool on : {true, false, true}) {
        session.setAccessibilityEnabled(on);
        ASSERT_TRUE(eventually([&] { return model->isAvailable() == on; }));
    }
    EXPECT_EQ(times, 2);
}

TEST_F(BusMenuModel, survivesTheEndOfTheBusAndUsesTheNextOne) {
    const auto first = startInFront();
    ASSERT_TRUE(fires(*first, u"<Primary>n"_s, u"New"_s));
    session.stopAccessibility();
    EXPECT_TRUE(eventually([&] { return !model->isAvailable(); }));
    EXPECT_EQ(fired(*first, u"<Primary>n"_s), u"(none)");
    session.startAccessibility();
    const auto second = startInFront();
    EXPECT_TRUE(fires(*second, u"<Primary>n"_s, u"New"_s));
    EXPECT_TRUE(model->isAvailable());
}

TEST_F(BusMenuModel, asksARestartedRegistryForEventsAgain) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    const SessionBusCalls bus(session.accessibilityBusAddress());
    const auto registry = bus.ownerOf(u"org.a11y.atspi.Registry"_s);
    ASSERT_GT(registry, 0);
    ASSERT_EQ(kill(registry, SIGKILL), 0);
    ASSERT_TRUE(eventually([&] { return bus.ownerOf(u"org.a11y.atspi.Registry"_s) != registry; }));
    program->order("rename New=New Window");
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New Window"_s)) << "the program is still there";
    const auto later = startInFront(); // it brings the registry back
    EXPECT_TRUE(fires(*later, u"<Primary>n"_s, u"New"_s));
}

TEST_F(BusMenuModel, doesWithoutAnyBus) {
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    qunsetenv("XDG_RUNTIME_DIR");
    model = platform::a11y::makeBusMenuModel({});
    model->follow(1);
    EXPECT_FALSE(model->isAvailable());
    EXPECT_EQ(model->commandFor({1, 1, u"Title"_s, false}, {{{.control = true}, u'n'}}).command, nullptr);
}

TEST_F(BusMenuModel, sleepsWhileNothingHappens) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    QEventLoop loop;
    QTimer::singleShot(std::chrono::milliseconds(500), &loop, [&] { loop.quit(); });
    loop.exec(); // what follows the command that has been fired
    int wakeups = 0;
    const auto counting = QObject::connect(QAbstractEventDispatcher::instance(),
                                           &QAbstractEventDispatcher::awake, [&] { ++wakeups; });
    QTimer::singleShot(std::chrono::seconds(2), &loop, [&] { loop.quit(); });
    loop.exec();
    QObject::disconnect(counting);
    EXPECT_LE(wakeups, 2) << "the beginning and the end of the measurement";
}

} // namespace
} // namespace orvantile::test
