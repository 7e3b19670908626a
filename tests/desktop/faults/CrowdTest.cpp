// Many windows, many applications, and applications that live for a moment.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"
#include "support/desktop/SessionBusCalls.h"

#include <gmock/gmock.h>
#include <vector>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

class Crowd : public ::testing::Test {
protected:
    void SetUp() override {
        editor = stage.start(mousepad);
        stage.startOrvantile();
        stage.awaitCommandsOf(mousepad);
    }

    /// A small window somewhere; the window manager sees it unless it is unmanaged.
    static xcb_window_t makeWindow(const XConnection& x, bool managed) {
        const auto window = xcb_generate_id(x.get());
        const std::uint32_t unmanaged = managed ? 0 : 1;
        xcb_create_window(x.get(), XCB_COPY_FROM_PARENT, window, x.root(), 5, 5, 4, 4, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &unmanaged);
        xcb_map_window(x.get(), window);
        return window;
    }

    Stage stage;
    Window editor;
};

TEST_F(Crowd, twoThousandWindows) {
    const XConnection x(stage.session().display());
    std::vector<xcb_window_t> all;
    for (int number = 0; number < 2'000; ++number) {
        all.push_back(makeWindow(x, false));
    }
    x.synchronize();
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
    for (const auto window : all) {
        xcb_destroy_window(x.get(), window);
    }
    x.synchronize();
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
}

TEST_F(Crowd, fiveHundredApplicationsOnTheAccessibilityBus) {
    const auto address = stage.session().accessibilityBusAddress().toStdString();
    {
        std::vector<std::unique_ptr<sd_bus, CloseBus>> applications;
        for (int number = 0; number < 500; ++number) {
            sd_bus* opened = nullptr;
            ASSERT_GE(sd_bus_new(&opened), 0);
            applications.emplace_back(opened);
            ASSERT_GE(sd_bus_set_address(opened, address.c_str()), 0);
            ASSERT_GE(sd_bus_set_bus_client(opened, 1), 0);
            ASSERT_GE(sd_bus_start(opened), 0) << "application " << number;
            // Joins as toolkits do, and never answers anything.
            const char* unique = nullptr;
            ASSERT_GE(sd_bus_get_unique_name(opened, &unique), 0) << "application " << number;
            ASSERT_GE(sd_bus_call_method_async(opened, nullptr, "org.a11y.atspi.Registry",
                                               "/org/a11y/atspi/accessible/root", "org.a11y.atspi.Socket",
                                               "Embed", nullptr, nullptr, "(so)", unique,
                                               "/org/a11y/atspi/accessible/root"),
                      0);
            sd_bus_flush(opened);
        }
        EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
        stage.start(geany);
        EXPECT_THAT(stage.awaitCommandsOf(geany), ElementsAre());
    }
    stage.windows().activate(editor.handle);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre()) << "all of them have gone at once";
}

TEST_F(Crowd, applicationsThatLiveForAMoment) {
    for (int number = 0; number < 300; ++number) {
        const XConnection x(stage.session().display());
        makeWindow(x, number % 3 == 0);
        x.synchronize();
    }
    stage.windows().activate(editor.handle);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
    EXPECT_TRUE(stage.orvantile().isRunning());
}

} // namespace
} // namespace orvantile::test
