#include "platform/linux/desktop/launch/SingleInstance.h"

#include "support/QtPrinting.h"
#include "unit/launch/ScriptedBus.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;
using test::ScriptedBus;
using ::testing::ElementsAre;

constexpr std::uint32_t owner = 1;
constexpr std::uint32_t taken = 3;

class SingleInstanceTest : public ::testing::Test {
protected:
    /// Whether a running copy took the launch over.
    bool handOver(const LaunchToken& token = {}) {
        instance = std::make_unique<SingleInstance>(
            bus.takeClient(), "org.example.Program",
            [this](const LaunchToken& launch) { launches.push_back(launch); });
        QElapsedTimer clock;
        clock.start();
        const bool over = instance->handOver(token);
        milliseconds = clock.elapsed();
        return over;
    }

    ScriptedBus bus;
    std::vector<LaunchToken> launches;
    qint64 milliseconds = 0;
    std::unique_ptr<SingleInstance> instance;
};

TEST_F(SingleInstanceTest, isTheFirstWhereTheNameIsFree) {
    bus.answer("RequestName", ScriptedBus::withNumber(owner));
    EXPECT_FALSE(handOver());
    EXPECT_THAT(bus.calls(), ElementsAre(u"RequestName"_s));
}

TEST_F(SingleInstanceTest, neitherQueuesForTheNameNorLetsOthersTakeIt) {
    std::string name;
    std::uint32_t flags = 0;
    bus.answer("RequestName", [&](sd_bus_message& call) {
        const char* text = nullptr;
        EXPECT_GT(sd_bus_message_read(&call, "su", &text, &flags), 0);
        name = text;
        sd_bus_reply_method_return(&call, "u", owner);
    });
    EXPECT_FALSE(handOver());
    EXPECT_EQ(name, "org.example.Program");
    EXPECT_EQ(flags, 4U);
}

TEST_F(SingleInstanceTest, tellsTheRunningCopyWithWhatTheDesktopHasGiven) {
    const LaunchToken token{"panel-1_TIME5", "wayland-7"};
    LaunchToken received;
    bus.answer("RequestName", ScriptedBus::withNumber(taken));
    bus.answer("Activate", [&](sd_bus_message& call) {
        EXPECT_STREQ(sd_bus_message_get_path(&call), "/org/example/Program");
        EXPECT_STREQ(sd_bus_message_get_interface(&call), "org.freedesktop.Application");
        EXPECT_STREQ(sd_bus_message_get_destination(&call), "org.example.Program");
        received = LaunchToken::read(&call);
        sd_bus_reply_method_return(&call, "");
    });
    EXPECT_TRUE(handOver(token));
    EXPECT_EQ(received, token);
}

TEST_F(SingleInstanceTest, leavesTheMessageToACopyThatHangs) {
    bus.answer("RequestName", ScriptedBus::withNumber(taken));
    EXPECT_TRUE(handOver());
    EXPECT_GE(milliseconds, 900);
    EXPECT_LT(milliseconds, 1500);
}

TEST_F(SingleInstanceTest, succeedsACopyThatEndsAtThisMoment) {
    bus.answer("RequestName", ScriptedBus::withNumber(taken));
    bus.answer("Activate", ScriptedBus::withError(SD_BUS_ERROR_NAME_HAS_NO_OWNER));
    bus.answer("RequestName", ScriptedBus::withNumber(owner));
    EXPECT_FALSE(handOver());
    EXPECT_THAT(bus.calls(), ElementsAre(u"RequestName"_s, u"Activate"_s, u"RequestName"_s));
}

TEST_F(SingleInstanceTest, runsWhereTheOwnerOfTheNameIsOfNoUse) {
    for (int attempt = 0; attempt < 10; ++attempt) {
        bus.answer("RequestName", ScriptedBus::withNumber(taken));
        bus.answer("Activate", ScriptedBus::withError(SD_BUS_ERROR_UNKNOWN_METHOD));
    }
    EXPECT_FALSE(handOver());
    EXPECT_EQ(bus.calls().size(), 6);
}

TEST_F(SingleInstanceTest, runsWhereTheBusRefusesTheName) {
    bus.answer("RequestName", ScriptedBus::withError(SD_BUS_ERROR_ACCESS_DENIED));
    EXPECT_FALSE(handOver());
}

TEST_F(SingleInstanceTest, runsWhereTheBusAnswersNonsense) {
    bus.answer("RequestName", [](sd_bus_message& call) { sd_bus_reply_method_return(&call, "s", "yes"); });
    EXPECT_FALSE(handOver());
}

TEST_F(SingleInstanceTest, runsWhereTheBusHangs) {
    EXPECT_FALSE(handOver());
    EXPECT_LT(milliseconds, 1500);
}

TEST_F(SingleInstanceTest, runsWhereTheBusEnds) {
    bus.answer("RequestName", [this](sd_bus_message&) { bus.hangUp(); });
    EXPECT_FALSE(handOver());
    EXPECT_LT(milliseconds, 900);
}

TEST(SingleInstance, runsWithoutABus) {
    SingleInstance alone(nullptr, "org.example.Program", {});
    EXPECT_FALSE(alone.handOver({}));
}

TEST_F(SingleInstanceTest, isToldOfLaunchesFromThenOn) {
    bus.answer("RequestName", ScriptedBus::withNumber(owner));
    EXPECT_FALSE(handOver());
    auto call = bus.side().method("org.example.Program", "/org/example/Program",
                                  "org.freedesktop.Application", "Activate");
    const LaunchToken token{"panel-1_TIME5", {}};
    token.append(call.get());
    bool answered = false;
    const auto pending = bus.side().call(std::move(call), [&](sd_bus_message& reply) {
        answered = sd_bus_message_is_method_error(&reply, nullptr) == 0;
    });
    QDeadlineTimer deadline(10'000);
    while (!answered && !deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_TRUE(answered);
    EXPECT_THAT(launches, ElementsAre(token));
}

TEST(ApplicationObject, isAtThePathThatBelongsToTheName) {
    EXPECT_EQ(ApplicationObject::pathOf("org.example.Program"), "/org/example/Program");
    EXPECT_EQ(ApplicationObject::pathOf("org.ex-ample.Pro_gram"), "/org/ex_ample/Pro_gram");
}

} // namespace
} // namespace orvantile::platform::desktop
