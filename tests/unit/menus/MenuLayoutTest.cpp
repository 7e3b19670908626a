#include "platform/linux/menus/MenuLayout.h"

#include "support/BusMessages.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>
#include <string>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr keys::KeySymbol letterS = 0x73;
constexpr keys::Modifiers control{.control = true};

/// Writes answers to GetLayout.
class Layout : public ::testing::Test {
protected:
    void SetUp() override {
        message = messages.blank();
        sd_bus_message_append(message.get(), "u", 1U);
    }

    void open(int number, bool inside = true) {
        if (inside) {
            sd_bus_message_open_container(message.get(), 'v', "(ia{sv}av)");
        }
        sd_bus_message_open_container(message.get(), 'r', "ia{sv}av");
        sd_bus_message_append(message.get(), "i", number);
        sd_bus_message_open_container(message.get(), 'a', "{sv}");
    }

    void text(const char* name, const char* value) {
        sd_bus_message_append(message.get(), "{sv}", name, "s", value);
    }

    void flag(const char* name, bool value) {
        sd_bus_message_append(message.get(), "{sv}", name, "b", int{value});
    }

    void shortcut(const char* modifier, const char* key) {
        sd_bus_message_append(message.get(), "{sv}", "shortcut", "aas", 1, 2, modifier, key);
    }

    void children() {
        sd_bus_message_close_container(message.get());
        sd_bus_message_open_container(message.get(), 'a', "v");
    }

    void close(bool inside = true) {
        sd_bus_message_close_container(message.get());
        sd_bus_message_close_container(message.get());
        if (inside) {
            sd_bus_message_close_container(message.get());
        }
    }

    void leaf(int number, const char* label, const char* key) {
        open(number);
        text("label", label);
        shortcut("Control", key);
        children();
        close();
    }

    std::optional<MenuLayout> read() {
        return MenuLayout::read(*test::BusMessages::sealed(std::move(message)));
    }

    test::BusMessages messages;
    a11y::MessageHandle message;
};

TEST_F(Layout, hasTheItemsOfSubmenus) {
    open(0, false);
    children();
    open(1);
    text("label", "_File");
    children();
    leaf(2, "_Save", "S");
    leaf(3, "Close", "W");
    close();
    close(false);
    const auto layout = read();
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->size(), 4U);
    EXPECT_THAT(layout->commands(), ElementsAre(Command{u"Save"_s, {control, letterS}, true},
                                                Command{u"Close"_s, {control, u'w'}, true}));
}

TEST_F(Layout, takesItemsOfHiddenAndDisabledMenusForDisabled) {
    open(0, false);
    children();
    open(1);
    flag("enabled", false);
    children();
    leaf(2, "Save", "S");
    close();
    open(3);
    flag("visible", false);
    children();
    leaf(4, "Close", "W");
    close();
    close(false);
    const auto layout = read();
    ASSERT_TRUE(layout);
    EXPECT_THAT(layout->commands(), ElementsAre(Command{u"Save"_s, {control, letterS}, false},
                                                Command{u"Close"_s, {control, u'w'}, false}));
}

TEST_F(Layout, followsWhatItsItemsTell) {
    open(0, false);
    children();
    leaf(2, "Save", "S");
    close(false);
    auto layout = read();
    ASSERT_TRUE(layout);

    auto change = messages.blank();
    sd_bus_message_append(change.get(), "a(ia{sv})a(ias)", 1, 2, 2, "enabled", "b", 0, "label", "s",
                          "Save _All", 0);
    layout->update(*test::BusMessages::sealed(std::move(change)));
    EXPECT_THAT(layout->commands(), ElementsAre(Command{u"Save All"_s, {control, letterS}, false}));

    auto removal = messages.blank();
    sd_bus_message_append(removal.get(), "a(ia{sv})a(ias)", 0, 1, 2, 1, "enabled");
    layout->update(*test::BusMessages::sealed(std::move(removal)));
    EXPECT_THAT(layout->commands(), ElementsAre(Command{u"Save All"_s, {control, letterS}, true}));
}

TEST_F(Layout, hasNoAcceleratorForSeveralStrokes) {
    open(0, false);
    sd_bus_message_append(message.get(), "{sv}", "shortcut", "aas", 2, 2, "Control", "K", 2, "Control", "C");
    children();
    close(false);
    const auto layout = read();
    ASSERT_TRUE(layout);
    EXPECT_THAT(layout->commands(), IsEmpty());
}

TEST_F(Layout, isAbsentWhenItIsTooDeep) {
    constexpr int levels = 25;
    open(0, false);
    for (int level = 1; level < levels; ++level) {
        children();
        open(level);
    }
    children();
    for (int level = 1; level < levels; ++level) {
        close();
    }
    close(false);
    EXPECT_FALSE(read());
}

TEST_F(Layout, isAbsentWhenItIsTooLarge) {
    open(0, false);
    children();
    for (int number = 1; number <= static_cast<int>(mostItems); ++number) {
        leaf(number, "Item", "S");
    }
    close(false);
    EXPECT_FALSE(read());
}

TEST_F(Layout, isAbsentWhenTheAnswerIsSomethingElse) {
    sd_bus_message_append(message.get(), "s", "menu");
    EXPECT_FALSE(read());
}

TEST_F(Layout, keepsToItsItemsWhenAChangeIsSomethingElse) {
    open(0, false);
    children();
    leaf(2, "Save", "S");
    close(false);
    auto layout = read();
    auto change = messages.blank();
    sd_bus_message_append(change.get(), "s", "nothing of the kind");
    layout->update(*test::BusMessages::sealed(std::move(change)));
    auto unknown = messages.blank();
    sd_bus_message_append(unknown.get(), "a(ia{sv})a(ias)", 1, 99, 1, "enabled", "b", 0, 0);
    layout->update(*test::BusMessages::sealed(std::move(unknown)));
    EXPECT_THAT(layout->commands(), ElementsAre(Command{u"Save"_s, {control, letterS}, true}));
}

} // namespace
} // namespace orvantile::platform::menus
