#include "platform/linux/desktop/AssignmentWriter.h"

#include <algorithm>
#include <condition_variable>
#include <gmock/gmock.h>
#include <mutex>
#include <vector>

namespace orvantile::platform::desktop {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::SizeIs;

/// A store that records, and can hang or fail. Outlives the writer: a store that hangs is left behind.
class RecordingStore {
public:
    using Stored = std::vector<std::pair<QByteArray, QByteArray>>;

    bool operator()(const Changes& changes) {
        std::unique_lock lock(mutex);
        stores.emplace_back(changes.begin(), changes.end());
        changed.notify_all();
        changed.wait(lock, [this] { return !hangs; });
        return !fails;
    }

    void setHangs(bool value) {
        const std::scoped_lock lock(mutex);
        hangs = value;
        changed.notify_all();
    }

    void setFails(bool value) {
        const std::scoped_lock lock(mutex);
        fails = value;
    }

    /// The stores so far, once there are `count`.
    std::vector<Stored> await(std::size_t count) {
        std::unique_lock lock(mutex);
        changed.wait_for(lock, 10s, [&] { return stores.size() >= count; });
        return stores;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool hangs = false;
    bool fails = false;
    std::vector<Stored> stores;
};

class AssignmentWriterTest : public ::testing::Test {
protected:
    AssignmentWriter::Store storing() {
        return [store = store](const Changes& changes) { return (*store)(changes); };
    }

    std::shared_ptr<RecordingStore> store = std::make_shared<RecordingStore>();
};

TEST_F(AssignmentWriterTest, storesNothingWithoutAssignments) {
    { const AssignmentWriter writer(storing()); }
    EXPECT_THAT(store->await(0), IsEmpty());
}

TEST_F(AssignmentWriterTest, storesEachAssignment) {
    AssignmentWriter writer(storing());
    writer.write("a", "1");
    EXPECT_THAT(store->await(1), ElementsAre(ElementsAre(Pair("a", "1"))));
    writer.write("a", "2");
    EXPECT_THAT(store->await(2), ElementsAre(ElementsAre(Pair("a", "1")), ElementsAre(Pair("a", "2"))));
}

TEST_F(AssignmentWriterTest, holdsItsCallerForTheAllowanceOnlyWhenTheStoreHangs) {
    store->setHangs(true);
    AssignmentWriter writer(storing());
    // Whether the machine lets this thread run at all is not the writer's doing, hence the best of some.
    auto total = Clock::duration::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto start = Clock::now();
        for (int index = 0; index < 12; ++index) {
            writer.write("a", QByteArray::number(index));
        }
        total = std::min(total, Clock::now() - start);
    }
    EXPECT_LT(total, 5ms);
    store->setHangs(false);
}

TEST_F(AssignmentWriterTest, gathersAssignmentsWhileTheStoreIsBusyAndKeepsTheLatest) {
    store->setHangs(true);
    AssignmentWriter writer(storing());
    writer.write("a", "1");
    store->await(1);
    writer.write("a", "2");
    writer.write("b", "3");
    writer.write("a", "4");
    store->setHangs(false);
    EXPECT_THAT(store->await(2),
                ElementsAre(ElementsAre(Pair("a", "1")), ElementsAre(Pair("b", "3"), Pair("a", "4"))));
}

TEST_F(AssignmentWriterTest, triesAFailedStoreAgainByItself) {
    store->setFails(true);
    AssignmentWriter writer(storing(), 1ms);
    writer.write("a", "1");
    EXPECT_THAT(store->await(3), SizeIs(::testing::Ge(3U)));
    store->setFails(false);
}

TEST_F(AssignmentWriterTest, storesTheNextAssignmentAtOnceAfterAFailure) {
    store->setFails(true);
    AssignmentWriter writer(storing(), 1h);
    writer.write("a", "1");
    store->await(1);
    store->setFails(false);
    writer.write("b", "2");
    EXPECT_THAT(store->await(2), ElementsAre(ElementsAre(Pair("a", "1")), ElementsAre(Pair("b", "2"))));
}

TEST_F(AssignmentWriterTest, storesWhatIsWaitingWhenItEnds) {
    store->setHangs(true);
    std::thread release;
    {
        AssignmentWriter writer(storing());
        writer.write("a", "1");
        store->await(1);
        writer.write("a", "2");
        release = std::thread([this] { store->setHangs(false); });
    }
    release.join();
    EXPECT_THAT(store->await(2), SizeIs(2));
}

TEST_F(AssignmentWriterTest, leavesAStoreThatHangsBehind) {
    store->setHangs(true);
    const auto start = Clock::now();
    {
        AssignmentWriter writer(storing());
        writer.write("a", "1");
    }
    EXPECT_LT(Clock::now() - start, 5s);
    store->setHangs(false);
}

} // namespace
} // namespace orvantile::platform::desktop
