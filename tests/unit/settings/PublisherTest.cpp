#include "settings/Publisher.h"

#include <gmock/gmock.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvantile {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PublisherTest : public ::testing::Test {
protected:
    [[nodiscard]] Subscription record(const std::string& name) {
        return publisher.subscribe(
            [this, name](int value) { heard.push_back(name + std::to_string(value)); });
    }

    Publisher<int> publisher;
    std::vector<std::string> heard;
};

TEST_F(PublisherTest, deliversInTheOrderOfSubscription) {
    const auto first = record("a");
    const auto second = record("b");
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("a1", "b1"));
}

TEST_F(PublisherTest, deliversNothingOnSubscription) {
    const auto subscription = record("a");
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(PublisherTest, endsASubscriptionWithItsToken) {
    {
        const auto subscription = record("a");
        publisher.send(1);
    }
    publisher.send(2);
    EXPECT_THAT(heard, ElementsAre("a1"));
}

TEST_F(PublisherTest, endsASubscriptionThatIsCancelledAndOnlyThatOne) {
    auto first = record("a");
    const auto second = record("b");
    first.cancel();
    first.cancel();
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("b1"));
}

TEST_F(PublisherTest, keepsASubscriptionWhoseTokenMoves) {
    auto first = record("a");
    const auto moved = std::move(first);
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("a1"));
}

TEST_F(PublisherTest, endsTheSubscriptionOfATokenThatTakesAnother) {
    auto token = record("a");
    token = record("b");
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("b1"));
}

TEST_F(PublisherTest, keepsASubscriptionWhoseTokenIsAssignedToItself) {
    auto token = record("a");
    auto& same = token;
    token = std::move(same);
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("a1"));
}

TEST_F(PublisherTest, endsTokensAfterThePublisherHasGone) {
    auto shortLived = std::make_unique<Publisher<int>>();
    auto subscription = shortLived->subscribe([this](int) { heard.push_back("a"); });
    shortLived.reset();
    subscription.cancel();
    EXPECT_THAT(heard, IsEmpty());
}

TEST_F(PublisherTest, skipsInTheDeliveryUnderWayWhoeverHasLeft) {
    std::optional<Subscription> second;
    const auto first = publisher.subscribe([&](int) { second.reset(); });
    second = record("b");
    const auto third = record("c");
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("c1"));
}

TEST_F(PublisherTest, deliversToWhoeverIsAddedFromTheNextTimeOn) {
    std::vector<Subscription> added;
    const auto first = publisher.subscribe([&](int) { added.push_back(record("n")); });
    publisher.send(1);
    EXPECT_THAT(heard, IsEmpty());
    publisher.send(2);
    EXPECT_THAT(heard, ElementsAre("n2"));
}

TEST_F(PublisherTest, letsASubscriberEndItself) {
    const auto guard = std::make_shared<int>(7);
    std::optional<Subscription> subscription;
    subscription = publisher.subscribe([&, guard](int) {
        subscription.reset();
        heard.push_back(std::to_string(*guard)); // what it captured outlives its end
    });
    const auto after = record("b");
    publisher.send(1);
    publisher.send(2);
    EXPECT_THAT(heard, ElementsAre("7", "b1", "b2"));
    EXPECT_EQ(guard.use_count(), 1);
}

TEST_F(PublisherTest, letsASubscriberSendAgain) {
    const auto first = publisher.subscribe([&](int value) {
        if (value < 3) {
            publisher.send(value + 1);
        }
    });
    const auto second = record("b");
    publisher.send(1);
    EXPECT_THAT(heard, ElementsAre("b3", "b2", "b1"));
}

} // namespace
} // namespace orvantile
