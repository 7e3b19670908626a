#include "macos/shell/tests/ShellTest.h"
#include "platform/macos/application/MacApplication.h"
#include "platform/macos/statusitem/MacStatusBar.h"

namespace orvantile::test {
namespace {

using platform::Menu;
using platform::MenuAction;
using platform::MenuItem;
using platform::SymbolImage;
using platform::macos::MacApplication;
using platform::macos::MacStatusBar;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Qt::StringLiterals::operator""_s;

class MacStatusItemTest : public ShellTest {
protected:
    MacStatusItemTest() {
        MacApplication::prepare();
        forgetCalls();
    }

    [[nodiscard]] std::shared_ptr<Menu> makeMenu() {
        return std::make_shared<Menu>(std::vector<MenuItem>{
            {.title = u"Enabled"_s,
             .action = MenuAction::call,
             .handler = [this] { chosen.push_back("Enabled"); },
             .command = u"toggleEnabled"_s,
             .tag = 1,
             .on = true},
            MenuItem::separator(),
            {.title = u"Preferences…"_s,
             .action = MenuAction::call,
             .handler = [this] { chosen.push_back("Preferences"); },
             .command = u"openPreferences"_s},
            {.title = u"Check for Updates…"_s,
             .action = MenuAction::call,
             .handler = [this] { chosen.push_back("Updates"); },
             .command = u"checkForUpdates"_s},
            MenuItem::separator(),
            {.title = u"Quit Orvantile"_s, .action = MenuAction::terminate, .keyEquivalent = u"q"_s},
        });
    }

    /// An item with a menu, its creation forgotten.
    void showMenu() {
        item = bar.createItem();
        menu = makeMenu();
        item->setMenu(menu);
        forgetCalls();
    }

    MacStatusBar bar;
    std::unique_ptr<platform::StatusItem> item;
    std::shared_ptr<Menu> menu;
    std::vector<std::string> chosen;
};

TEST_F(MacStatusItemTest, takesAnItemOfVariableLengthAndGivesItBack) {
    item = bar.createItem();
    EXPECT_THAT(calls(),
                ElementsAre("[NSStatusBar systemStatusBar]", "[NSStatusBar statusItemWithLength:-1]"));
    EXPECT_EQ(desktop::statusItems().size(), 1U);
    forgetCalls();

    item.reset();
    EXPECT_THAT(calls(), ElementsAre("[NSStatusBar systemStatusBar]",
                                     "[NSStatusBar removeStatusItem:<NSStatusItem>]"));
    EXPECT_THAT(desktop::statusItems(), IsEmpty());
}

TEST_F(MacStatusItemTest, asksForTheSymbolOnceMarksItAsATemplateAndShowsIt) {
    item = bar.createItem();
    forgetCalls();
    auto image = bar.symbolImage(u"keyboard"_s, u"Orvantile"_s);
    ASSERT_TRUE(image);
    image->isTemplate = true;
    item->setImage(image);

    EXPECT_THAT(
        calls(),
        ElementsAre("[NSImage imageWithSystemSymbolName:\"keyboard\" accessibilityDescription:\"Orvantile\"]",
                    "[NSImage setTemplate:YES]", "[NSStatusItem button]",
                    "[NSStatusBarButton setImage:<NSImage keyboard>]"));
    const auto shown = desktop::statusItems().front();
    EXPECT_EQ(shown.symbol, "keyboard");
    EXPECT_EQ(shown.description, "Orvantile");
    EXPECT_TRUE(shown.isTemplate);
}

TEST_F(MacStatusItemTest, showsASymbolThatNobodyHasAskedForBefore) {
    item = bar.createItem();
    item->setImage(SymbolImage{u"keyboard.fill"_s, u"Orvantile"_s, false});

    EXPECT_EQ(desktop::statusItems().front().symbol, "keyboard.fill");
    EXPECT_FALSE(desktop::statusItems().front().isTemplate);
}

TEST_F(MacStatusItemTest, clearsTheImageWhenTheSystemHasNoSuchSymbol) {
    item = bar.createItem();
    item->setImage(bar.symbolImage(u"keyboard"_s, u"Orvantile"_s));
    desktop::setSymbolNames({});
    const auto missing = bar.symbolImage(u"keyboard.fill"_s, u"Orvantile"_s);
    EXPECT_EQ(missing, std::nullopt);
    item->setImage(missing);

    EXPECT_EQ(desktop::statusItems().front().symbol, "");
}

TEST_F(MacStatusItemTest, doesWithoutAButton) {
    desktop::setStatusItemsHaveButtons(false);
    item = bar.createItem();
    item->setImage(bar.symbolImage(u"keyboard"_s, u"Orvantile"_s));

    EXPECT_EQ(desktop::statusItems().front().symbol, "");
}

TEST_F(MacStatusItemTest, showsTheMenuWithItsTitlesCommandsKeysTargetsTagsAndStates) {
    showMenu();

    EXPECT_THAT(
        desktop::menu(),
        ElementsAre(
            desktop::MenuItem{
                .title = "Enabled", .action = "toggleEnabled", .hasTarget = true, .on = true, .tag = 1},
            desktop::MenuItem{.separator = true},
            desktop::MenuItem{.title = "Preferences…", .action = "openPreferences", .hasTarget = true},
            desktop::MenuItem{.title = "Check for Updates…", .action = "checkForUpdates", .hasTarget = true},
            desktop::MenuItem{.separator = true},
            desktop::MenuItem{.title = "Quit Orvantile", .action = "terminate:", .keyEquivalent = "q"}));
}

TEST_F(MacStatusItemTest, buildsTheMenuInOrderAndMakesTheDelegateItsDelegate) {
    item = bar.createItem();
    forgetCalls();
    item->setMenu(makeMenu());

    EXPECT_THAT(
        calls(),
        ElementsAre(
            "[NSMenuItem initWithTitle:\"Enabled\" action:toggleEnabled keyEquivalent:\"\"]",
            "[NSMenuItem setTarget:<AppDelegate>]", "[NSMenuItem setState:1]", "[NSMenuItem setTag:1]",
            "[NSMenu addItem:<NSMenuItem Enabled>]", "[NSMenuItem separatorItem]",
            "[NSMenu addItem:<NSMenuItem separator>]",
            "[NSMenuItem initWithTitle:\"Preferences…\" action:openPreferences keyEquivalent:\"\"]",
            "[NSMenuItem setTarget:<AppDelegate>]", "[NSMenu addItem:<NSMenuItem Preferences…>]",
            "[NSMenuItem initWithTitle:\"Check for Updates…\" action:checkForUpdates keyEquivalent:\"\"]",
            "[NSMenuItem setTarget:<AppDelegate>]", "[NSMenu addItem:<NSMenuItem Check for Updates…>]",
            "[NSMenuItem separatorItem]", "[NSMenu addItem:<NSMenuItem separator>]",
            "[NSMenuItem initWithTitle:\"Quit Orvantile\" action:terminate: keyEquivalent:\"q\"]",
            "[NSMenu addItem:<NSMenuItem Quit Orvantile>]", "[NSMenu setDelegate:<AppDelegate>]",
            "[NSStatusItem setMenu:<NSMenu>]"));
}

TEST_F(MacStatusItemTest, carriesOutWhatIsChosen) {
    showMenu();
    desktop::chooseItem("Preferences…");
    desktop::chooseItem("Enabled");
    desktop::chooseItem("Check for Updates…");

    EXPECT_THAT(chosen, ElementsAre("Preferences", "Enabled", "Updates"));
}

TEST_F(MacStatusItemTest, followsTheStateOfTheMenu) {
    showMenu();
    menu->setState(1, false);

    EXPECT_FALSE(desktop::menu().front().on);
    EXPECT_THAT(calls(), ElementsAre("[NSMenu itemWithTag:1]", "[NSMenuItem setState:0]"));
}

TEST_F(MacStatusItemTest, asksForTheStatesEachTimeTheMenuIsAboutToOpen) {
    showMenu();
    int opened = 0;
    menu->willOpen = [&](Menu& opening) {
        ++opened;
        opening.setState(1, false);
    };
    desktop::openMenu();

    EXPECT_EQ(opened, 1);
    EXPECT_FALSE(desktop::menu().front().on);
}

TEST_F(MacStatusItemTest, setsTheStateAnewWhenTheMenuOpensThoughItHasNotChanged) {
    showMenu();
    desktop::openMenu();

    EXPECT_THAT(calls(), ElementsAre("[NSMenu itemWithTag:1]", "[NSMenuItem setState:1]"));
}

TEST_F(MacStatusItemTest, doesNotMindAnotherMenuOpening) {
    showMenu();
    menu->willOpen = [](Menu&) { FAIL() << "another menu opened"; };
    desktop::openAnotherMenu();
}

TEST_F(MacStatusItemTest, letsAChoiceRemoveTheItem) {
    item = bar.createItem();
    menu = std::make_shared<Menu>(std::vector<MenuItem>{
        {.title = u"Enabled"_s,
         .action = MenuAction::call,
         .handler =
             [this, text = std::string("a capture that lives as long as the handler does")] {
                 item.reset();
                 menu.reset();
                 chosen.push_back(text);
             },
         .command = u"toggleEnabled"_s}});
    item->setMenu(menu);
    desktop::chooseItem("Enabled");

    EXPECT_EQ(chosen.size(), 1U);
    EXPECT_THAT(desktop::statusItems(), IsEmpty());
}

TEST_F(MacStatusItemTest, leavesAMenuThatItNoLongerShowsAlone) {
    showMenu();
    item->setMenu(makeMenu());
    forgetCalls();
    menu->setState(1, false);

    EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(MacStatusItemTest, showsNoMenuWhenItIsTakenAway) {
    showMenu();
    item->setMenu(nullptr);

    EXPECT_FALSE(desktop::statusItems().front().hasMenu);
}

} // namespace
} // namespace orvantile::test
