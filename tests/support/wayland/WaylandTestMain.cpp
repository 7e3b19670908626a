// Runs the tests of one executable inside a private Wayland session, for tests that make windows of their
// own.
#include "support/wayland/PrivateWaylandSession.h"

#include <QApplication>
#include <cstdio>
#include <exception>
#include <gmock/gmock.h>

int main(int argc, char* argv[]) {
    ::testing::InitGoogleMock(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    try {
        orvantile::test::PrivateWaylandSession session;
        const orvantile::test::CurrentWaylandSession current(session);
        session.enter();
        qputenv("QT_QPA_PLATFORM", "wayland");
        const QApplication app(argc, argv);
        return RUN_ALL_TESTS();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "no private Wayland session: %s\n", error.what());
        return 1;
    }
}
