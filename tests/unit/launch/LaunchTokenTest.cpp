#include "platform/linux/desktop/launch/LaunchToken.h"

#include "support/BusMessages.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

class LaunchTokenTest : public ::testing::Test {
protected:
    template <typename... Values>
    LaunchToken read(const char* types, Values... values) {
        auto message = messages.blank();
        EXPECT_GE(sd_bus_message_append(message.get(), types, values...), 0);
        return LaunchToken::read(test::BusMessages::sealed(std::move(message)).get());
    }

    test::BusMessages messages;
};

TEST_F(LaunchTokenTest, readsWhatItHasWritten) {
    for (const LaunchToken& token : {LaunchToken{}, LaunchToken{"a_TIME1", {}}, LaunchToken{{}, "b"},
                                     LaunchToken{"with \"quotes\" and ö", "b"}}) {
        auto message = messages.blank();
        token.append(message.get());
        EXPECT_EQ(LaunchToken::read(test::BusMessages::sealed(std::move(message)).get()), token);
    }
}

TEST_F(LaunchTokenTest, passesOverWhatItDoesNotKnow) {
    EXPECT_EQ(read("a{sv}", 3, "cwd", "ay", 2, 'a', 'b', "activation-token", "s", "b", "options", "a{sv}", 1,
                   "x", "i", 5),
              (LaunchToken{{}, "b"}));
}

TEST_F(LaunchTokenTest, passesOverTokensOfAnotherType) {
    EXPECT_EQ(read("a{sv}", 2, "desktop-startup-id", "i", 5, "activation-token", "s", "b"),
              (LaunchToken{{}, "b"}));
}

TEST_F(LaunchTokenTest, passesOverTokensThatAreTooLong) {
    const std::string longest(1024, 'x');
    const std::string tooLong(1025, 'x');
    EXPECT_EQ(read("a{sv}", 1, "activation-token", "s", longest.c_str()).activationToken.size(), 1024);
    EXPECT_EQ(read("a{sv}", 1, "activation-token", "s", tooLong.c_str()), LaunchToken{});
}

TEST_F(LaunchTokenTest, isEmptyWhenThereIsNoneOrSomethingElse) {
    EXPECT_EQ(read("a{sv}", 0), LaunchToken{});
    EXPECT_EQ(read("s", "text"), LaunchToken{});
    EXPECT_EQ(read("a{ss}", 1, "activation-token", "b"), LaunchToken{});
    EXPECT_EQ(read(""), LaunchToken{});
}

TEST_F(LaunchTokenTest, goesThroughTheEnvironment) {
    LaunchToken{"a_TIME1", "b"}.putIntoEnvironment();
    EXPECT_EQ(LaunchToken::fromEnvironment(), (LaunchToken{"a_TIME1", "b"}));
    LaunchToken{}.putIntoEnvironment();
    EXPECT_EQ(LaunchToken::fromEnvironment(), (LaunchToken{"a_TIME1", "b"})) << "nothing new is nothing lost";
    LaunchToken::clearEnvironment();
    EXPECT_EQ(LaunchToken::fromEnvironment(), LaunchToken{});
}

TEST_F(LaunchTokenTest, takesFromABarWhatCanBeAToken) {
    EXPECT_EQ(LaunchToken::ofBar("b"), (LaunchToken{"", "b"}));
    EXPECT_EQ(LaunchToken::ofBar(""), LaunchToken{});
    EXPECT_EQ(LaunchToken::ofBar(QByteArray(1024, 'x').constData()).activationToken.size(), 1024);
    EXPECT_EQ(LaunchToken::ofBar(QByteArray(1025, 'x').constData()), LaunchToken{});
}

} // namespace
} // namespace orvantile::platform::desktop
