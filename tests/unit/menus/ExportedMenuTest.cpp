#include "platform/linux/menus/ExportedMenu.h"

#include "support/BusMessages.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

QStringList titles(const ExportedMenu& menu) {
    QStringList all;
    for (const auto& item : menu.items()) {
        all += item.title;
    }
    return all;
}

class Exported : public ::testing::Test {
protected:
    template <typename... Values>
    a11y::MessageHandle with(const char* types, Values... values) {
        auto message = messages.blank();
        EXPECT_GE(sd_bus_message_append(message.get(), types, values...), 0);
        return test::BusMessages::sealed(std::move(message));
    }

    test::BusMessages messages;
    ExportedMenu menu;
};

TEST_F(Exported, beginsWithTheFirstGroup) {
    EXPECT_THAT(menu.takeUnknownGroups(), ElementsAre(0U));
    EXPECT_THAT(menu.takeUnknownGroups(), IsEmpty());
}

TEST_F(Exported, followsSubmenusAndSectionsInTheirOrder) {
    static_cast<void>(menu.takeUnknownGroups());
    menu.started(*with("a(uuaa{sv})", 1, 0U, 0U, 2,                          //
                       2, "label", "s", "_File", ":submenu", "(uu)", 1U, 0U, //
                       3, "label", "s", "_Quit", "action", "s", "app.quit", "accel", "s", "<Primary>q"));
    EXPECT_THAT(menu.takeUnknownGroups(), ElementsAre(1U));
    menu.started(*with("a(uuaa{sv})", 2, 1U, 0U, 1,   //
                       1, ":section", "(uu)", 1U, 1U, //
                       1U, 1U, 1,                     //
                       3, "label", "s", "_Save", "action", "s", "win.save", "accel", "s", "<Primary>s"));
    EXPECT_THAT(menu.takeUnknownGroups(), IsEmpty());
    EXPECT_THAT(titles(menu), ElementsAre(u"Save"_s, u"Quit"_s));
    const auto items = menu.items();
    EXPECT_EQ(items.front().action, "win.save");
    EXPECT_EQ(items.front().accelerator, (keys::Accelerator{{.control = true}, 0x73}));
}

TEST_F(Exported, takesUpChanges) {
    menu.started(*with("a(uuaa{sv})", 1, 0U, 0U, 3,                    //
                       2, "label", "s", "One", "action", "s", "win.1", //
                       2, "label", "s", "Two", "action", "s", "win.2", //
                       2, "label", "s", "Three", "action", "s", "win.3"));
    menu.changed(*with("a(uuuuaa{sv})", 1, 0U, 0U, 1U, 1U, 2,        //
                       2, "label", "s", "A", "action", "s", "win.a", //
                       2, "label", "s", "B", "action", "s", "win.b"));
    EXPECT_THAT(titles(menu), ElementsAre(u"One"_s, u"A"_s, u"B"_s, u"Three"_s));
}

TEST_F(Exported, bearsChangesOfWhatIsNotThere) {
    menu.changed(*with("a(uuuuaa{sv})", 1, 7U, 8U, 4'000'000'000U, 4'000'000'000U, 1, //
                       2, "label", "s", "A", "action", "s", "win.a"));
    menu.changed(*with("s", "nothing of the kind"));
    menu.started(*with("s", "nothing of the kind"));
    EXPECT_THAT(titles(menu), IsEmpty()) << "the first list does not refer to it";
}

TEST_F(Exported, showsAListThatRefersToItselfOnce) {
    menu.started(*with("a(uuaa{sv})", 1, 0U, 0U, 2,   //
                       1, ":submenu", "(uu)", 0U, 0U, //
                       2, "label", "s", "One", "action", "s", "win.1"));
    EXPECT_THAT(titles(menu), ElementsAre(u"One"_s));
}

TEST_F(Exported, takesAttributesOfOtherTypesForAbsent) {
    menu.started(*with("a(uuaa{sv})", 1, 0U, 0U, 1, //
                       4, "label", "i", 5, "action", "s", "win.1", "accel", "b", 1, ":section", "s", "x"));
    EXPECT_THAT(titles(menu), ElementsAre(QString()));
    EXPECT_FALSE(menu.items().front().accelerator);
}

} // namespace
} // namespace orvantile::platform::menus
