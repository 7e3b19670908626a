#include "platform/linux/a11y/MenuTable.h"

#include <ctime>
#include <gmock/gmock.h>

namespace orvantile::platform::a11y {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr keys::Accelerator controlS{{.control = true}, u's'};
constexpr keys::Accelerator controlQ{{.control = true}, u'q'};

class Table : public ::testing::Test {
protected:
    MenuItem& add(const std::string& path, const QString& title, bool enabled,
                  const keys::Accelerator& accelerator = controlS, const std::string& toplevel = "/window") {
        auto& item = *table.insert(path, toplevel);
        item.title = title;
        item.enabled = enabled;
        table.setAccelerator(item, accelerator);
        return item;
    }

    [[nodiscard]] QString fired(const keys::Accelerator& accelerator = controlS,
                                const std::string& toplevel = "/window") const {
        const auto* item = table.command(toplevel, accelerator);
        return item == nullptr ? u"(none)"_s : item->title;
    }

    MenuTable table;
};

TEST_F(Table, findsTheItemThatAnAcceleratorFires) {
    add("/1", u"Save"_s, true);
    add("/2", u"Quit"_s, true, controlQ);
    EXPECT_EQ(fired(), u"Save");
    EXPECT_EQ(fired(controlQ), u"Quit");
    EXPECT_EQ(fired({{.control = true, .shift = true}, u's'}), u"(none)");
}

TEST_F(Table, passesOverDisabledItemsForAnEnabledOne) {
    add("/1", u"Save Selection"_s, false);
    add("/2", u"Save"_s, true);
    EXPECT_EQ(fired(), u"Save");
    table.find("/2")->enabled = false;
    EXPECT_EQ(fired(), u"(none)");
}

TEST_F(Table, knowsThatADisabledItemIsNotWhenItsCopyIsEnabled) {
    add("/1", u"Navigator"_s, false);
    auto& copy = *table.insert("/2", "/window");
    copy.title = u"Navigator"_s;
    copy.enabled = true;
    EXPECT_EQ(fired(), u"(none)") << "any other of that title";
    copy.copy = true;
    EXPECT_EQ(fired(), u"Navigator");
    copy.enabled = false;
    EXPECT_EQ(fired(), u"(none)");
}

TEST_F(Table, prefersWhatWasFoundFirst) {
    add("/9", u"First"_s, true);
    add("/1", u"Second"_s, true);
    EXPECT_EQ(fired(), u"First");
}

TEST_F(Table, knowsNoItemWithoutTitle) {
    add("/1", u""_s, true);
    EXPECT_EQ(fired(), u"(none)");
}

TEST_F(Table, keepsWindowsApart) {
    add("/1", u"Save"_s, true, controlS, "/one");
    add("/2", u"Save Picture"_s, true, controlS, "/two");
    EXPECT_EQ(fired(controlS, "/two"), u"Save Picture");
    table.removeToplevel("/two");
    EXPECT_EQ(fired(controlS, "/two"), u"(none)");
    EXPECT_EQ(fired(controlS, "/one"), u"Save");
}

TEST_F(Table, followsChangesOfAnAccelerator) {
    auto& item = add("/1", u"Save"_s, true);
    table.setAccelerator(item, controlQ);
    EXPECT_EQ(fired(), u"(none)");
    EXPECT_EQ(fired(controlQ), u"Save");
    table.setAccelerator(item, std::nullopt);
    EXPECT_EQ(fired(controlQ), u"(none)");
    EXPECT_EQ(table.acceleratedCount(), 0U);
}

TEST_F(Table, dropsWhatAReadingHasNotFound) {
    add("/1", u"Old"_s, true).seen = 1;
    add("/2", u"New"_s, true).seen = 2;
    add("/3", u"Elsewhere"_s, true, controlQ, "/other").seen = 1;
    table.removeUnseen("/window", 2);
    EXPECT_EQ(table.find("/1"), nullptr);
    EXPECT_EQ(fired(), u"New");
    EXPECT_EQ(fired(controlQ, "/other"), u"Elsewhere");
}

TEST_F(Table, forgetsManyItemsOfOneAcceleratorAsFastAsOthers) {
    for (std::size_t index = 0; index < MenuTable::capacity; ++index) {
        add("/" + std::to_string(index), u"Item"_s, true);
    }
    table.find("/0")->enabled = false;
    EXPECT_EQ(table.command("/window", controlS), table.find("/1"));
    const auto used = std::clock(); // of this process alone, however busy the machine is
    table.removeToplevel("/window");
    EXPECT_LT(std::clock() - used, CLOCKS_PER_SEC / 5) << "not by the square";
    EXPECT_EQ(table.size(), 0U);
    EXPECT_EQ(table.acceleratedCount(), 0U);
}

TEST_F(Table, takesNoMoreThanItsCapacity) {
    for (std::size_t index = 0; index < MenuTable::capacity; ++index) {
        ASSERT_NE(table.insert("/" + std::to_string(index), "/window"), nullptr);
    }
    EXPECT_EQ(table.insert("/more", "/window"), nullptr);
    EXPECT_NE(table.insert("/1", "/window"), nullptr) << "what is there stays within reach";
    EXPECT_EQ(table.size(), MenuTable::capacity);
}

} // namespace
} // namespace orvantile::platform::a11y
