#include "monitor/ShortcutMonitor.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using platform::AccessibilityElement;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Report {
    std::optional<QString> shortcut;
    QString title;

    friend bool operator==(const Report&, const Report&) = default;
};

class ShortcutMonitorTest : public ::testing::Test {
protected:
    ShortcutMonitorTest() {
        fakes.workspace->frontmost = platform::RunningApplication{100};
        monitor->onAction = [this](std::optional<QString> shortcut, const QString& title) {
            reports.push_back({std::move(shortcut), title});
        };
    }

    void post(const QString& notification, std::int32_t process = 100) {
        fakes.accessibility->post(process, notification, save);
    }

    void postAndTurn(const QString& notification, std::int32_t process = 100) {
        post(notification, process);
        fakes.scheduler->turn();
    }

    [[nodiscard]] int count(const QString& line) const { return static_cast<int>(fakes.log->count(line)); }

    test::FakePlatform fakes;
    std::shared_ptr<ShortcutMonitor> monitor = std::make_shared<ShortcutMonitor>(fakes.platform());
    std::vector<Report> reports;
    AccessibilityElement save = test::makeElement({{u"AXTitle"_s, u"Save"_s},
                                                   {u"AXMenuItemCmdChar"_s, u"s"_s},
                                                   {u"AXMenuItemCmdModifiers"_s, std::int64_t{0}}});
    Report saved{u"⌘S"_s, u"Save"_s};
};

const QString selected = u"AXMenuItemSelected"_s;
const QString opened = u"AXMenuOpened"_s;
const QString closed = u"AXMenuClosed"_s;

TEST_F(ShortcutMonitorTest, observesNothingUntilStarted) {
    EXPECT_THAT(*fakes.log, IsEmpty());
}

TEST_F(ShortcutMonitorTest, attachesInOrder) {
    monitor->start();
    EXPECT_THAT(*fakes.log,
                ElementsAre(u"accessibility.createObserver 100"_s, u"accessibility.applicationElement 100"_s,
                            u"observer.addNotification AXMenuItemSelected"_s,
                            u"observer.addNotification AXMenuOpened"_s,
                            u"observer.addNotification AXMenuClosed"_s, u"observer.addToMainLoop"_s,
                            u"workspace.observeActivations"_s));
}

TEST_F(ShortcutMonitorTest, shortcutWithoutOpenMenuIsReportedOnce) {
    monitor->start();
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, handlesNotificationsOnALaterTurnAndInOrder) {
    monitor->start();
    post(selected);
    post(opened);
    post(selected);
    post(closed);
    post(selected);
    EXPECT_THAT(reports, IsEmpty());
    fakes.scheduler->turn();
    EXPECT_THAT(reports, ElementsAre(saved, saved));
}

TEST_F(ShortcutMonitorTest, pickFromAnOpenMenuIsNotReported) {
    monitor->start();
    postAndTurn(opened);
    postAndTurn(selected);
    postAndTurn(closed);
    EXPECT_THAT(reports, IsEmpty());
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, submenusCountAndTheCountHasAFloor) {
    monitor->start();
    postAndTurn(opened);
    postAndTurn(opened);
    postAndTurn(closed);
    postAndTurn(selected);
    EXPECT_THAT(reports, IsEmpty());
    postAndTurn(closed);
    postAndTurn(closed);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
    postAndTurn(opened);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved)) << "a third close left the count at 0, not below";
}

TEST_F(ShortcutMonitorTest, activatingTheObservedApplicationAgainKeepsObserverAndCount) {
    monitor->start();
    postAndTurn(opened);
    fakes.workspace->activate(100);
    postAndTurn(selected);
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_EQ(count(u"accessibility.createObserver 100"_s), 1);
    EXPECT_EQ(count(u"observer.release 100"_s), 0);
}

TEST_F(ShortcutMonitorTest, activatingAnotherApplicationDetachesFirstAndResetsTheCount) {
    monitor->start();
    postAndTurn(opened);
    fakes.log->clear();
    fakes.workspace->activate(200);
    EXPECT_THAT(fakes.log->mid(0, 3), ElementsAre(u"observer.removeFromMainLoop"_s, u"observer.release 100"_s,
                                                  u"accessibility.createObserver 200"_s));
    postAndTurn(selected, 200);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, comingBackWithAMenuStillOpenStartsFromZero) {
    monitor->start();
    postAndTurn(opened);
    fakes.workspace->activate(200);
    fakes.workspace->activate(100);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, staleNotificationIsHandledAgainstTheCurrentState) {
    monitor->start();
    post(closed);
    fakes.workspace->activate(200);
    post(opened, 200);
    fakes.scheduler->turn();
    postAndTurn(selected, 200);
    EXPECT_THAT(reports, IsEmpty()) << "the stale close came first and left 0, the open made it 1";

    post(closed, 200);
    post(opened, 200);
    fakes.scheduler->turn();
    post(closed, 200);
    fakes.workspace->activate(100);
    post(opened, 100);
    fakes.scheduler->turn();
    postAndTurn(closed, 100);
    postAndTurn(selected, 100);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, emptyMissingAndIllTypedTitlesAreDropped) {
    monitor->start();
    for (const auto& attributes :
         {std::map<QString, platform::AttributeValue>{{u"AXTitle"_s, QString()}},
          std::map<QString, platform::AttributeValue>{},
          std::map<QString, platform::AttributeValue>{{u"AXTitle"_s, std::int64_t{7}}}}) {
        fakes.accessibility->post(100, selected, test::makeElement(attributes));
    }
    fakes.scheduler->turn();
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(ShortcutMonitorTest, itemWithoutKeyEquivalentIsReportedWithoutShortcut) {
    monitor->start();
    fakes.accessibility->post(100, selected, test::makeElement({{u"AXTitle"_s, u"Save"_s}}));
    fakes.scheduler->turn();
    EXPECT_THAT(reports, ElementsAre(Report{std::nullopt, u"Save"_s}));
}

TEST_F(ShortcutMonitorTest, readsTheTitleFirstAndTheShortcutOnlyForAClient) {
    monitor->start();
    const auto log = std::make_shared<QStringList>();
    fakes.accessibility->post(100, selected, test::makeElement({{u"AXTitle"_s, u"Save"_s}}, log));
    fakes.scheduler->turn();
    EXPECT_THAT(*log,
                ElementsAre(u"element.copy AXTitle"_s, u"element.copy AXMenuItemCmdChar"_s,
                            u"element.copy AXMenuItemCmdGlyph"_s, u"element.copy AXMenuItemCmdModifiers"_s));
    log->clear();
    monitor->onAction = nullptr;
    fakes.accessibility->post(100, selected, test::makeElement({{u"AXTitle"_s, u"Save"_s}}, log));
    fakes.scheduler->turn();
    EXPECT_THAT(*log, ElementsAre(u"element.copy AXTitle"_s));
}

TEST_F(ShortcutMonitorTest, noFrontmostApplicationAtStartWaitsForTheFirstActivation) {
    fakes.workspace->frontmost.reset();
    monitor->start();
    EXPECT_THAT(*fakes.log, ElementsAre(u"workspace.observeActivations"_s));
    fakes.workspace->activate(100);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, failedObserverCreationIsTriedAgainAtTheNextActivation) {
    fakes.accessibility->unobservable = {100};
    monitor->start();
    EXPECT_THAT(*fakes.log,
                ElementsAre(u"accessibility.createObserver 100"_s, u"workspace.observeActivations"_s));
    fakes.accessibility->unobservable.clear();
    fakes.workspace->activate(100);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, failedCreationLeavesThePreviousApplication) {
    monitor->start();
    fakes.accessibility->unobservable = {200};
    fakes.workspace->activate(200);
    EXPECT_EQ(count(u"observer.release 100"_s), 1);
    fakes.workspace->activate(100);
    EXPECT_EQ(count(u"accessibility.createObserver 100"_s), 2);
}

TEST_F(ShortcutMonitorTest, refusedNotificationsLeaveItAttachedAndSilent) {
    fakes.accessibility->refusesNotifications = true;
    monitor->start();
    postAndTurn(selected);
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_EQ(count(u"observer.addNotification AXMenuClosed"_s), 1) << "all three are asked for";
    EXPECT_EQ(count(u"observer.addToMainLoop"_s), 1);
}

TEST_F(ShortcutMonitorTest, activationOfAnUnknownApplicationChangesNothing) {
    monitor->start();
    fakes.workspace->activate(std::nullopt);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, unknownNotificationsAreIgnored) {
    monitor->start();
    postAndTurn(u"AXFocusedWindowChanged"_s);
    postAndTurn(u"axmenuopened"_s);
    postAndTurn(selected);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, secondStartKeepsBothHandlersAndReplacesTheToken) {
    monitor->start();
    const auto first = fakes.workspace->latestToken;
    monitor->start();
    EXPECT_TRUE(first.expired());
    EXPECT_FALSE(fakes.workspace->latestToken.expired());
    EXPECT_EQ(fakes.workspace->handlers.size(), 2U);
    fakes.workspace->activate(200);
    EXPECT_EQ(count(u"accessibility.createObserver 200"_s), 1);
    postAndTurn(selected, 200);
    EXPECT_THAT(reports, ElementsAre(saved));
}

TEST_F(ShortcutMonitorTest, workUnderWayKeepsTheMonitorAndHandlersDoNot) {
    monitor->start();
    post(selected);
    const std::weak_ptr<ShortcutMonitor> watched = monitor;
    monitor.reset();
    EXPECT_FALSE(watched.expired());
    fakes.scheduler->turn();
    EXPECT_TRUE(watched.expired());
    EXPECT_THAT(reports, ElementsAre(saved));
    fakes.log->clear();
    fakes.workspace->activate(200);
    EXPECT_THAT(*fakes.log, IsEmpty());
}

TEST_F(ShortcutMonitorTest, withoutAClientNothingHappens) {
    monitor->onAction = nullptr;
    monitor->start();
    postAndTurn(selected);
    EXPECT_THAT(reports, IsEmpty());
}

} // namespace
} // namespace orvantile
