// Runs the tests of one executable inside a private session, for tests that make windows of their own.
#include "support/desktop/CurrentSession.h"

#include <QApplication>
#include <cstdio>
#include <exception>
#include <gmock/gmock.h>
#include <string_view>

namespace {

/// Under which window manager the tests run: what ORVANTILE_TEST_WINDOW_MANAGER names, or openbox.
orvantile::test::WindowManager windowManager() {
    using enum orvantile::test::WindowManager;
    const auto name = qgetenv("ORVANTILE_TEST_WINDOW_MANAGER");
    return name == "xfwm4"               ? xfwm4
           : name == "xfwm4-compositing" ? xfwm4Compositing
           : name == "kwin"              ? kwin
                                         : openbox;
}

} // namespace

int main(int argc, char* argv[]) {
    ::testing::InitGoogleMock(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    try {
        orvantile::test::PrivateSession session({.windowManager = windowManager()});
        const orvantile::test::CurrentSession current(session);
        session.enter();
        qputenv("QT_QPA_PLATFORM", "xcb");
        const QApplication app(argc, argv);
        return RUN_ALL_TESTS();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "no private session: %s\n", error.what());
        return 1;
    }
}
