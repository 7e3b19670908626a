#include "desktop/wayland/WaylandFixture.h"
#include "platform/linux/wayland/SeatKeymap.h"
#include "platform/linux/wayland/Toplevels.h"

#include "support/wayland/VirtualKeyboard.h"

#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::wayland {
namespace {

using keys::Accelerator;
using Qt::StringLiterals::operator""_s;
using test::awaitThat;
using ::testing::ElementsAre;

using FocusTest = WaylandFixture;

TEST_F(FocusTest, theCompositorTellsWhichWindowHasIt) {
    int changes = 0;
    const Toplevels toplevels(globals, [&] { ++changes; });
    connection->flush();
    const auto title = [&] { return toplevels.focused() ? toplevels.focused()->title : u"unknown"_s; };

    QWidget first;
    first.setWindowTitle(u"first"_s);
    first.show();
    ASSERT_TRUE(awaitThat([&] { return title().startsWith(u"first"); })) << title().toStdString();
    const auto number = toplevels.focused()->number;
    {
        QWidget second;
        second.setWindowTitle(u"second"_s);
        second.show();
        ASSERT_TRUE(awaitThat([&] { return title().startsWith(u"second"); })) << title().toStdString();
        EXPECT_NE(toplevels.focused()->number, number);
    }
    ASSERT_TRUE(awaitThat([&] { return title().startsWith(u"first"); })) << title().toStdString();
    first.setWindowTitle(u"renamed"_s);
    ASSERT_TRUE(awaitThat([&] { return title().startsWith(u"renamed"); })) << title().toStdString();
    EXPECT_EQ(toplevels.focused()->number, number);
    EXPECT_FALSE(toplevels.focused()->applicationId.isEmpty());
    EXPECT_GE(changes, 4);
    first.hide();
    EXPECT_TRUE(awaitThat([&] { return toplevels.focused() && toplevels.focused()->number == 0; }));
}

TEST_F(FocusTest, theKeymapIsThatOfTheCompositorsKeyboard) {
    SeatKeymap keymap;
    keymap.follow(globals);
    connection->flush();
    const test::VirtualKeyboard keyboard(u"us,ru"_s);
    constexpr std::uint32_t control = 4;
    constexpr std::uint32_t keyZ = 52;
    const auto candidates = [&] { return keymap.candidates(XKB_KEY_Cyrillic_ya, keyZ, control); };
    ASSERT_TRUE(awaitThat([&] { return candidates().size() == 2; }));
    EXPECT_THAT(candidates(), ElementsAre(Accelerator{{.control = true}, XKB_KEY_Cyrillic_ya},
                                          Accelerator{{.control = true}, XKB_KEY_z}));
}

} // namespace
} // namespace orvantile::platform::wayland
