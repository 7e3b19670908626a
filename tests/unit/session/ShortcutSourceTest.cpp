#include "platform/linux/session/ShortcutSource.h"
#include "monitor/ShortcutMonitor.h"
#include "platform/linux/session/LinuxAccessibility.h"
#include "platform/linux/session/LinuxWorkspace.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile::platform {
namespace {

using Qt::StringLiterals::operator""_s;
using session::ActiveWindow;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t own = 1;
constexpr std::int32_t editor = 100;
constexpr std::int32_t browser = 200;
const keys::Accelerator ctrlS{{.control = true}, 's'};
const keys::Accelerator ctrlZ{{.control = true}, 'z'};

class FakeSession final : public session::DesktopSession {
public:
    void start() override {}

    [[nodiscard]] std::optional<ActiveWindow> activeWindow() const override { return active; }

    [[nodiscard]] int openMenus(std::int32_t process) const override { return process == editor ? open : 0; }

    [[nodiscard]] bool hearsKeys() const override { return hears; }

    void drain() override {}

    void activate(std::optional<ActiveWindow> window) {
        active = std::move(window);
        onActiveWindowChanged(active);
    }

    std::optional<ActiveWindow> active;
    int open = 0;
    bool hears = true;
};

/// Knows one command, Save on Control-S, of any window whose title is "document".
class FakeMenus final : public a11y::MenuModel {
public:
    [[nodiscard]] bool isAvailable() const override { return available; }

    void follow(std::int32_t process) override { log.append(u"follow %1"_s.arg(process)); }

    void windowActivated(const ActiveWindow& window) override { log.append(u"window "_s + window.title); }

    void menuClosed() override { log.append(u"menu closed"_s); }

    [[nodiscard]] a11y::MenuReach reach(std::int32_t) const override { return {}; }

    [[nodiscard]] a11y::MenuAnswer commandFor(const ActiveWindow& window,
                                              const keys::Candidates& candidates) override {
        class Save final : public AccessibilityNode {
            [[nodiscard]] AttributeValue copyAttribute(QStringView name) const override {
                if (name == u"AXTitle") {
                    return u"Save"_s;
                }
                if (name == u"AXMenuItemCmdChar") {
                    return u"s"_s;
                }
                return name == u"AXMenuItemCmdModifiers" ? AttributeValue(std::int64_t{12})
                                                         : AttributeValue();
            }
        };

        const bool fires = window.title == u"document" && candidates == keys::Candidates{ctrlS};
        return {.command = fires ? std::make_shared<Save>() : nullptr, .decided = fires};
    }

    QStringList log;
    bool available = true;
};

/// The real monitor over the real joining of both sources, with fakes at the outer ends.
class ShortcutSourceTest : public ::testing::Test {
protected:
    ShortcutSourceTest() {
        fakes.platform().workspace = std::make_unique<session::LinuxWorkspace>(source, [] {});
        fakes.platform().accessibility =
            std::make_unique<session::LinuxAccessibility>(source, desktop, menus, [this] { ++prompts; });
        monitor = std::make_shared<ShortcutMonitor>(fakes.platform());
        monitor->onAction = [this](const std::optional<QString>& shortcut, const QString& title) {
            reports.append(shortcut.value_or(u"-"_s) + u' ' + title);
        };
    }

    ~ShortcutSourceTest() override { monitor.reset(); }

    void start(std::optional<ActiveWindow> window) {
        desktop.active = std::move(window);
        monitor->start();
    }

    void press(const keys::Accelerator& key) {
        desktop.onKeyPressed({key});
        fakes.scheduler->turn();
    }

    test::FakePlatform fakes;
    FakeSession desktop;
    FakeMenus menus;
    session::ShortcutSource source{desktop, menus, own};
    std::shared_ptr<ShortcutMonitor> monitor;
    QStringList reports;
    int prompts = 0;
    ActiveWindow document{.handle = 1, .processIdentifier = editor, .title = u"document"_s, .dialog = false};
    ActiveWindow page{.handle = 2, .processIdentifier = browser, .title = u"page"_s, .dialog = false};
};

TEST_F(ShortcutSourceTest, keyThatNamesACommandIsReported) {
    start(document);
    press(ctrlS);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s));
}

TEST_F(ShortcutSourceTest, otherKeysAreNot) {
    start(document);
    press(ctrlZ);
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(ShortcutSourceTest, followsTheFrontmostProcessAndItsWindow) {
    start(document);
    desktop.activate(page);
    desktop.activate(document);
    EXPECT_THAT(menus.log, ElementsAre(u"follow 100"_s, u"window document"_s, u"follow -1"_s, u"follow 200"_s,
                                       u"window page"_s, u"window page"_s, u"follow -1"_s, u"follow 100"_s,
                                       u"window document"_s, u"window document"_s));
}

TEST_F(ShortcutSourceTest, keysOnTheBareDesktopAreNotReported) {
    start(document);
    desktop.activate(std::nullopt);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty());
    desktop.activate(document);
    press(ctrlS);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s));
}

TEST_F(ShortcutSourceTest, focusThatPassesThroughNobodyKeepsTheObserver) {
    start(document);
    desktop.onMenuOpened(editor);
    fakes.scheduler->turn();
    desktop.activate(std::nullopt);
    desktop.activate(document);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty()) << "the menu still counts as open";
}

TEST_F(ShortcutSourceTest, ownWindowsAreNeverObserved) {
    start(document);
    auto preferences = document;
    preferences.processIdentifier = own;
    desktop.activate(preferences);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty());
    desktop.activate(document);
    press(ctrlS);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s));
}

TEST_F(ShortcutSourceTest, menusOfTheObservedProcessAndOfUnknownOnesGateReports) {
    start(document);
    desktop.onMenuOpened(browser);
    press(ctrlS);
    EXPECT_EQ(reports.size(), 1);
    desktop.onMenuOpened(editor);
    press(ctrlS);
    desktop.onMenuClosed(editor);
    press(ctrlS);
    EXPECT_EQ(reports.size(), 2);
    desktop.onMenuOpened(-1);
    press(ctrlS);
    desktop.onMenuClosed(-1);
    press(ctrlS);
    EXPECT_EQ(reports.size(), 3);
}

TEST_F(ShortcutSourceTest, menusAlreadyOpenWhenAttachingCount) {
    desktop.open = 2;
    start(document);
    fakes.scheduler->turn();
    press(ctrlS);
    desktop.onMenuClosed(editor);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty());
    desktop.onMenuClosed(editor);
    press(ctrlS);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s));
}

TEST_F(ShortcutSourceTest, keysBeforeTheProcessIsAttachedAreNotReported) {
    start(std::nullopt);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty());
    desktop.active = document;
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty()) << "nobody has been told that the editor came to the front";
}

TEST_F(ShortcutSourceTest, processWithoutIdentifierIsNobody) {
    auto anonymous = document;
    anonymous.processIdentifier = -1;
    start(anonymous);
    press(ctrlS);
    desktop.activate(anonymous);
    press(ctrlS);
    EXPECT_THAT(reports, IsEmpty());
    EXPECT_THAT(menus.log, IsEmpty());
}

TEST_F(ShortcutSourceTest, titleChangeIsPassedOnWithoutAnotherActivation) {
    start(document);
    menus.log.clear();
    auto renamed = document;
    renamed.title = u"*document"_s;
    desktop.activate(renamed);
    desktop.activate(document);
    EXPECT_THAT(menus.log.filter(u"follow"_s), IsEmpty());
    EXPECT_THAT(menus.log, ::testing::Contains(u"window *document"_s));
}

TEST_F(ShortcutSourceTest, closedMenusAskForAFreshTable) {
    start(document);
    menus.log.clear();
    desktop.onMenuOpened(editor);
    desktop.onMenuClosed(editor);
    EXPECT_THAT(menus.log, ElementsAre(u"menu closed"_s));
}

/// A command that an application names by itself.
class ToldCommand final : public AccessibilityNode {
public:
    explicit ToldCommand(QString title_) : title(std::move(title_)) {}

    [[nodiscard]] AttributeValue copyAttribute(QStringView name) const override {
        return name == u"AXTitle" ? AttributeValue(title) : AttributeValue();
    }

private:
    QString title;
};

class ToldShortcutTest : public ShortcutSourceTest {
protected:
    void tell(std::int32_t process, const QString& title, int openMenus = 0) {
        source.commandTold(process, openMenus, std::make_shared<ToldCommand>(title));
        fakes.scheduler->turn();
    }
};

TEST_F(ToldShortcutTest, isReportedForTheProcessInFrontOnly) {
    start(document);
    tell(editor, u"New"_s);
    tell(browser, u"Back"_s);
    EXPECT_THAT(reports, ElementsAre(u"- New"_s));
}

TEST_F(ToldShortcutTest, whatTheTableHasNamedIsNotReportedTwice) {
    start(document);
    press(ctrlS);
    tell(editor, u"Save"_s);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s));
    // From here on the process is believed, and the table is not asked.
    press(ctrlS);
    tell(editor, u"Save"_s);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s, u"- Save"_s));
}

TEST_F(ToldShortcutTest, keysPressedLaterDoNotHideWhatIsTold) {
    start(document);
    press(ctrlS);
    press(ctrlZ);
    tell(editor, u"Save"_s);
    EXPECT_THAT(reports, ElementsAre(u"⌃S Save"_s, u"- Save"_s));
}

TEST_F(ToldShortcutTest, openMenusOfTheProcessGateIt) {
    start(document);
    source.menusTold(editor, 2);
    tell(editor, u"New"_s, 2);
    EXPECT_THAT(reports, IsEmpty());
    tell(editor, u"Open"_s); // the messages about the closing have been lost
    EXPECT_THAT(reports, ElementsAre(u"- Open"_s));
}

TEST_F(ToldShortcutTest, menusThatWindowsAndTheProcessTellCountOnce) {
    start(document);
    desktop.onMenuOpened(editor);
    source.menusTold(editor, 1);
    tell(editor, u"New"_s, 1);
    EXPECT_THAT(reports, IsEmpty());
    source.menusTold(editor, 0);
    desktop.onMenuClosed(editor);
    desktop.onMenuOpened(editor); // a window that looks like a menu
    tell(editor, u"New"_s);
    EXPECT_THAT(reports, ElementsAre(u"- New"_s));
}

TEST_F(ToldShortcutTest, anotherProcessInFrontIsJudgedByTheTableAgain) {
    start(document);
    tell(editor, u"New"_s);
    desktop.activate(page);
    desktop.activate(document);
    press(ctrlS);
    EXPECT_THAT(reports, ElementsAre(u"- New"_s, u"⌃S Save"_s));
}

TEST_F(ToldShortcutTest, closedMenusAskForAFreshTableToo) {
    start(document);
    source.menusTold(editor, 1);
    menus.log.clear();
    source.menusTold(editor, 0);
    EXPECT_THAT(menus.log, ElementsAre(u"menu closed"_s));
}

TEST_F(ShortcutSourceTest, trustNeedsBothTheBusAndKeys) {
    auto& accessibility = *fakes.platform().accessibility;
    EXPECT_TRUE(accessibility.isProcessTrusted());
    menus.available = false;
    EXPECT_FALSE(accessibility.isProcessTrusted());
    menus.available = true;
    desktop.hears = false;
    EXPECT_FALSE(accessibility.isProcessTrusted());
    accessibility.promptForTrust();
    EXPECT_EQ(prompts, 1);
}

} // namespace
} // namespace orvantile::platform
