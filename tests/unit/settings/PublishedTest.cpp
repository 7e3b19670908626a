#include "settings/Published.h"

#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

namespace orvantile {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PublishedTest : public ::testing::Test {
protected:
    void note(const std::string& what, int value) { log.push_back(what + " " + std::to_string(value)); }

    [[nodiscard]] Subscription record(const std::string& name) {
        return property.subscribe([this, name](int value) { note(name, value); });
    }

    std::vector<std::string> log;
    Publisher<> objectWillChange;
    Published<int> property{1, objectWillChange, [this](int value) { note("persist", value); }};
};

TEST_F(PublishedTest, startsWithItsValueSilently) {
    EXPECT_EQ(property(), 1);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(PublishedTest, announcesObjectWideThenToItsSubscribersThenStoresThenPersists) {
    const auto whole = objectWillChange.subscribe([this] { note("will change from", property()); });
    const auto own = property.subscribe([this](int value) {
        note("announced", value);
        note("while stored", property());
    });
    log.clear();
    property = 2;
    EXPECT_THAT(log, ElementsAre("will change from 1", "announced 2", "while stored 1", "persist 2"));
    EXPECT_EQ(property(), 2);
}

TEST_F(PublishedTest, hasStoredTheValueWhenItIsPersisted) {
    std::vector<int> read;
    Publisher<> whole;
    Published<int>* self = nullptr;
    Published<int> other(1, whole, [&](int) { read.push_back((*self)()); });
    self = &other;
    other = 5;
    EXPECT_THAT(read, ElementsAre(5));
}

TEST_F(PublishedTest, publishesAndPersistsAnEqualValueToo) {
    const auto whole = objectWillChange.subscribe([this] { note("will change from", property()); });
    const auto own = record("a");
    log.clear();
    property = 1;
    EXPECT_THAT(log, ElementsAre("will change from 1", "a 1", "persist 1"));
}

TEST_F(PublishedTest, deliversTheCurrentValueOnSubscription) {
    property = 4;
    log.clear();
    const auto own = record("a");
    EXPECT_THAT(log, ElementsAre("a 4"));
}

TEST_F(PublishedTest, deliversNoMoreOnceTheTokenHasGone) {
    { const auto own = record("a"); }
    log.clear();
    property = 2;
    EXPECT_THAT(log, ElementsAre("persist 2"));
}

TEST_F(PublishedTest, tellsASubscriberAddedDuringAnAnnouncementTheAnnouncedValueOnce) {
    std::optional<Subscription> added;
    const auto own = property.subscribe([&](int value) {
        if (value == 2) {
            added = record("added");
        }
    });
    property = 2;
    EXPECT_THAT(log, ElementsAre("added 2", "persist 2"));
    property = 3;
    EXPECT_THAT(log, ElementsAre("added 2", "persist 2", "added 3", "persist 3"));
}

TEST_F(PublishedTest, completesTheOuterAssignmentAfterOneMadeByASubscriber) {
    const auto own = property.subscribe([&](int value) {
        note("a", value);
        if (value == 2) {
            property = 3;
        }
    });
    const auto after = record("b");
    log.clear();
    property = 2;
    EXPECT_THAT(log, ElementsAre("a 2", "a 3", "b 3", "persist 3", "b 2", "persist 2"));
    EXPECT_EQ(property(), 2);
}

TEST_F(PublishedTest, tellsALateSubscriberWhatWillStayAfterANestedAssignment) {
    std::optional<Subscription> added;
    const auto assigns = property.subscribe([&](int value) {
        if (value == 2) {
            property = 3;
        }
    });
    const auto adds = property.subscribe([&](int value) {
        if (value == 2) {
            added = record("added");
        }
    });
    log.clear();
    property = 2;
    EXPECT_THAT(log, ElementsAre("persist 3", "added 2", "persist 2"));
    const auto last = record("last");
    EXPECT_EQ(log.back(), "last 2");
}

TEST_F(PublishedTest, letsAnObjectWideSubscriberAssignTheProperty) {
    bool once = true;
    const auto whole = objectWillChange.subscribe([&] {
        if (std::exchange(once, false)) {
            property = 8;
        }
    });
    const auto own = record("a");
    log.clear();
    property = 2;
    EXPECT_THAT(log, ElementsAre("a 8", "persist 8", "a 2", "persist 2"));
    EXPECT_EQ(property(), 2);
}

TEST_F(PublishedTest, letsASubscriberAssignOnReceivingTheCurrentValue) {
    const auto own = property.subscribe([&](int value) {
        note("a", value);
        if (value == 1) {
            property = 2;
        }
    });
    EXPECT_THAT(log, ElementsAre("a 1", "a 2", "persist 2"));
}

TEST_F(PublishedTest, survivesASubscriberThatEndsItself) {
    std::optional<Subscription> own;
    own = property.subscribe([&](int value) {
        note("a", value);
        if (value == 2) {
            own.reset();
        }
    });
    log.clear();
    property = 2;
    property = 3;
    EXPECT_THAT(log, ElementsAre("a 2", "persist 2", "persist 3"));
}

} // namespace
} // namespace orvantile
