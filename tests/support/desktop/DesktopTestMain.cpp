// Runs the tests of one executable inside a private session, for tests that make windows of their own.
#include "support/desktop/CurrentSession.h"

#include <QApplication>
#include <cstdio>
#include <exception>
#include <gmock/gmock.h>
#include <string_view>

int main(int argc, char* argv[]) {
    ::testing::InitGoogleMock(&argc, argv);
    if (::testing::GTEST_FLAG(list_tests)) {
        return RUN_ALL_TESTS();
    }
    try {
        orvantile::test::PrivateSession session;
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
