#include "platform/linux/desktop/launch/TerminationSignals.h"

#include <QCoreApplication>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Handler = void (*)(int);

Handler handlerOf(int signal) {
    struct sigaction action {};

    sigaction(signal, nullptr, &action);
    return action.sa_handler;
}

class TerminationSignalsTest : public ::testing::TestWithParam<int> {
protected:
    void SetUp() override { std::signal(GetParam(), SIG_DFL); }

    void TearDown() override { std::signal(GetParam(), SIG_DFL); }
};

TEST_P(TerminationSignalsTest, isToldOnTheMainLoopAndNotInTheHandler) {
    int told = 0;
    const TerminationSignals signals([&] { ++told; });
    std::raise(GetParam());
    EXPECT_EQ(told, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
    QCoreApplication::processEvents();
    EXPECT_EQ(told, 1);
}

TEST_P(TerminationSignalsTest, aSecondOneEndsTheProcessAtOnce) {
    EXPECT_EXIT(
        {
            const TerminationSignals signals([] {});
            std::raise(GetParam());
            std::raise(GetParam());
        },
        ::testing::KilledBySignal(GetParam()), "");
}

TEST_P(TerminationSignalsTest, leavesAnIgnoredSignalAlone) {
    std::signal(GetParam(), SIG_IGN);
    {
        const TerminationSignals signals([] { ADD_FAILURE() << "it is ignored"; });
        std::raise(GetParam());
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(handlerOf(GetParam()), SIG_IGN);
}

TEST_P(TerminationSignalsTest, putsTheDefaultBack) {
    {
        const TerminationSignals signals([] {});
    }
    EXPECT_EQ(handlerOf(GetParam()), SIG_DFL);
}

INSTANTIATE_TEST_SUITE_P(Signals, TerminationSignalsTest, ::testing::Values(SIGTERM, SIGINT, SIGHUP),
                         [](const auto& parameter) {
                             return std::string("SIG") + sigabbrev_np(parameter.param);
                         });

} // namespace
} // namespace orvantile::platform::desktop
