#include "app/AppDelegate.h"
#include "support/FakePlatform.h"

#include <gmock/gmock.h>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using ::testing::Not;

/// The shared instances live as long as the process, and so does the platform under them.
test::FakePlatform& processPlatform() {
    static auto& platform = *std::make_unique<test::FakePlatform>().release();
    return platform;
}

class FakeWindow final : public PresentableWindow {
public:
    explicit FakeWindow(test::CallLog log_) : log(std::move(log_)) {}

    void present() override { log->append(u"preferences.present"_s); }

private:
    test::CallLog log;
};

class AppDelegateTest : public ::testing::Test {
protected:
    AppDelegateTest() {
        settings.resetToDefaults();
        fakes.accessibility->trusted = true;
        fakes.statusBar->knowsSymbols = true;
        fakes.workspace->handlers.clear();
        fakes.workspace->frontmost = platform::RunningApplication{100};
        fakes.scheduler->advance(100);
        log.clear();
    }

    ~AppDelegateTest() override {
        delegate.reset();
        fakes.scheduler->advance(100);
    }

    /// Launches and lets the first deliveries of the subscriptions pass.
    void launch() {
        delegate->applicationDidFinishLaunching();
        fakes.scheduler->turn();
        log.clear();
    }

    void fire(const std::map<QString, platform::AttributeValue>& attributes) {
        fakes.accessibility->post(100, u"AXMenuItemSelected"_s, test::makeElement(attributes));
        fakes.scheduler->turn();
    }

    void fireSave() { fire({{u"AXTitle"_s, u"Save"_s}, {u"AXMenuItemCmdChar"_s, u"s"_s}}); }

    [[nodiscard]] QStringList shown() const { return log.filter(u"panel.setContent"_s); }

    [[nodiscard]] platform::Menu& menu() const { return *fakes.statusBar->item.lock()->menu; }

    [[nodiscard]] bool hasItem() const { return !fakes.statusBar->item.expired(); }

    test::FakePlatform& fakes = processPlatform();
    QStringList& log = *fakes.log;
    Settings& settings = Settings::shared();
    std::shared_ptr<AppDelegate> delegate = std::make_shared<AppDelegate>(fakes.platform(), [this] {
        log.append(u"preferences.create"_s);
        return std::make_unique<FakeWindow>(fakes.log);
    });
};

TEST_F(AppDelegateTest, creatingItTouchesNothing) {
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(AppDelegateTest, launchSequence) {
    delegate->applicationDidFinishLaunching();
    EXPECT_THAT(log, ElementsAre(u"statusBar.createItem"_s, u"statusItem.setImage keyboard"_s,
                                 u"statusItem.setMenu"_s, u"accessibility.createObserver 100"_s,
                                 u"accessibility.applicationElement 100"_s,
                                 u"observer.addNotification AXMenuItemSelected"_s,
                                 u"observer.addNotification AXMenuOpened"_s,
                                 u"observer.addNotification AXMenuClosed"_s, u"observer.addToMainLoop"_s,
                                 u"workspace.observeActivations"_s, u"accessibility.isProcessTrusted"_s,
                                 u"preferences.create"_s, u"preferences.present"_s));
    log.clear();
    fakes.scheduler->turn();
    EXPECT_THAT(log, ElementsAre(u"statusItem.setImage keyboard"_s))
        << "both subscriptions deliver once on a later turn; the item already matches";
}

TEST_F(AppDelegateTest, promptsOnceWhenNotTrustedAndNotAtAllWhenTrusted) {
    fakes.accessibility->trusted = false;
    delegate->applicationDidFinishLaunching();
    fakes.scheduler->advance(60);
    EXPECT_EQ(log.count(u"accessibility.promptForTrust"_s), 1);
    EXPECT_LT(log.indexOf(u"workspace.observeActivations"_s), log.indexOf(u"accessibility.promptForTrust"_s));
    EXPECT_LT(log.indexOf(u"accessibility.promptForTrust"_s), log.indexOf(u"preferences.present"_s));
}

TEST_F(AppDelegateTest, launchWithoutStatusItemStillOpensThePreferences) {
    settings.showInMenuBar = false;
    log.clear();
    delegate->applicationDidFinishLaunching();
    fakes.scheduler->turn();
    EXPECT_FALSE(hasItem());
    EXPECT_THAT(log, Not(Contains(u"statusBar.createItem"_s)));
    EXPECT_THAT(log, Contains(u"preferences.present"_s));
}

TEST_F(AppDelegateTest, labelsFollowTheSettings) {
    launch();
    fireSave();
    EXPECT_THAT(shown(), ElementsAre(u"panel.setContent ⌘S  Save"_s));
    settings.showShortcut = false;
    log.clear();
    fireSave();
    EXPECT_THAT(shown(), ElementsAre(u"panel.setContent Save"_s));
    settings.showShortcut = true;
    log.clear();
    fire({{u"AXTitle"_s, u"Save"_s}});
    EXPECT_THAT(shown(), ElementsAre(u"panel.setContent Save"_s));
}

TEST_F(AppDelegateTest, switchedOffThereIsNeitherHudNorSound) {
    launch();
    settings.enabled = false;
    for (const bool withShortcut : {true, false}) {
        settings.showShortcut = withShortcut;
        fireSave();
    }
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(log.filter(u"sounds.play"_s), IsEmpty());
}

TEST_F(AppDelegateTest, titlesAreNeitherTrimmedNorShortened) {
    launch();
    const QString title = u" "_s + QString(5000, u'x') + u"\n"_s;
    fire({{u"AXTitle"_s, title}, {u"AXMenuItemCmdChar"_s, u"s"_s}});
    EXPECT_THAT(shown(), ElementsAre(u"panel.setContent ⌘S  "_s + title));
}

TEST_F(AppDelegateTest, actionsAfterTheDelegateHasGoneAreDropped) {
    launch();
    fakes.accessibility->post(100, u"AXMenuItemSelected"_s, test::makeElement({{u"AXTitle"_s, u"Save"_s}}));
    settings.enabled = true;
    settings.showInMenuBar = false;
    delegate.reset();
    log.clear();
    fakes.scheduler->turn();
    EXPECT_THAT(shown(), IsEmpty());
    EXPECT_THAT(log.filter(u"statusItem.setImage"_s), IsEmpty());
}

TEST_F(AppDelegateTest, secondLaunchPresentsTheSameWindow) {
    launch();
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(false));
    EXPECT_TRUE(delegate->applicationShouldHandleReopen(true));
    EXPECT_THAT(log, ElementsAre(u"preferences.present"_s, u"preferences.present"_s));
}

TEST_F(AppDelegateTest, menuInOrder) {
    launch();
    QStringList lines;
    for (const auto& item : menu().items()) {
        lines << (item.isSeparator() ? u"-"_s
                                     : item.title + u'|' + item.keyEquivalent +
                                           u"|%1|%2"_s.arg(item.tag).arg(item.on ? u"on"_s : u"off"_s));
    }
    EXPECT_THAT(lines,
                ElementsAreArray({u"Enabled||1|on"_s, u"-"_s, u"Preferences…||0|off"_s,
                                  u"Check for Updates…||0|off"_s, u"-"_s, u"Quit Orvantile|q|0|off"_s}));
    EXPECT_EQ(menu().items().back().action, platform::MenuAction::terminate);
    menu().items()[2].handler();
    EXPECT_THAT(log, ElementsAre(u"preferences.present"_s));
}

TEST_F(AppDelegateTest, toggleShowsAtOnceInTheMenuAndLaterInTheIcon) {
    launch();
    menu().items()[0].handler();
    EXPECT_FALSE(settings.enabled());
    EXPECT_THAT(log, ElementsAre(u"defaults.set enabled false"_s));
    EXPECT_FALSE(menu().itemWithTag(1)->on);
    fakes.scheduler->turn();
    EXPECT_THAT(log, ElementsAre(u"defaults.set enabled false"_s, u"statusItem.setImage keyboard.fill"_s));
}

TEST_F(AppDelegateTest, iconIsATemplateAndDescribed) {
    launch();
    const auto image = fakes.statusBar->item.lock()->image;
    ASSERT_TRUE(image);
    EXPECT_TRUE(image->isTemplate);
    EXPECT_EQ(image->accessibilityDescription, u"Orvantile"_s);
}

TEST_F(AppDelegateTest, unknownSymbolClearsTheIcon) {
    launch();
    fakes.statusBar->knowsSymbols = false;
    settings.enabled = false;
    fakes.scheduler->turn();
    EXPECT_THAT(log, Contains(u"statusItem.setImage none"_s));
    EXPECT_EQ(fakes.statusBar->item.lock()->image, std::nullopt);
}

TEST_F(AppDelegateTest, menuAboutToOpenShowsWhatWasChangedElsewhere) {
    launch();
    settings.enabled = false;
    fakes.scheduler->turn();
    EXPECT_TRUE(menu().itemWithTag(1)->on);
    menu().willOpen(menu());
    EXPECT_FALSE(menu().itemWithTag(1)->on);
}

TEST_F(AppDelegateTest, menuWithoutTheTaggedItemIsLeftAlone) {
    platform::Menu other({platform::MenuItem{.title = u"Other"_s, .on = true}});
    delegate->menuWillOpen(other);
    EXPECT_TRUE(other.items().front().on);
}

TEST_F(AppDelegateTest, hidingAndShowingMakesAFreshItemOnALaterTurn) {
    launch();
    settings.enabled = false;
    settings.showInMenuBar = false;
    EXPECT_TRUE(hasItem());
    fakes.scheduler->turn();
    EXPECT_FALSE(hasItem());
    log.clear();
    settings.showInMenuBar = true;
    fakes.scheduler->turn();
    EXPECT_THAT(log, ElementsAre(u"defaults.set showInMenuBar true"_s, u"statusBar.createItem"_s,
                                 u"statusItem.setImage keyboard.fill"_s, u"statusItem.setMenu"_s));
    EXPECT_FALSE(menu().itemWithTag(1)->on);
}

TEST_F(AppDelegateTest, equalAssignmentsDeliverAgainAndMakeNoSecondItem) {
    launch();
    settings.showInMenuBar = true;
    settings.enabled = true;
    fakes.scheduler->turn();
    EXPECT_EQ(log.count(u"statusBar.createItem"_s), 0);
    EXPECT_EQ(log.count(u"statusItem.setImage keyboard"_s), 1);
}

TEST_F(AppDelegateTest, resetBringsTheItemBackInItsEnabledState) {
    launch();
    settings.enabled = false;
    settings.showInMenuBar = false;
    fakes.scheduler->turn();
    settings.resetToDefaults();
    fakes.scheduler->turn();
    ASSERT_TRUE(hasItem());
    EXPECT_EQ(fakes.statusBar->item.lock()->image->name, u"keyboard"_s);
    EXPECT_TRUE(menu().itemWithTag(1)->on);
}

TEST_F(AppDelegateTest, updatesStartWithTheFirstCheckOnly) {
    launch();
    EXPECT_THAT(log.filter(u"updater."_s), IsEmpty());
    menu().items()[3].handler();
    menu().items()[3].handler();
    EXPECT_THAT(log.filter(u"updater."_s),
                ElementsAre(u"updater.createController starting yes"_s, u"updater.checkForUpdates"_s,
                            u"updater.checkForUpdates"_s));
}

} // namespace
} // namespace orvantile
