#include "macos/axfake/AxFake.h"
#include "platform/macos/support/CfHandle.h"
#include "platform/macos/support/CfText.h"
#include "platform/macos/support/MainQueue.h"

#include <gmock/gmock.h>

namespace orvantile::platform::macos {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Text = CfHandle<CFStringRef>;

CFStringRef createText(QStringView text) {
    return CFStringCreateWithCharacters(kCFAllocatorDefault, reinterpret_cast<const UniChar*>(text.utf16()),
                                        text.size());
}

class CfHandleTest : public ::testing::Test {
protected:
    test::AxFake fake;
};

TEST_F(CfHandleTest, holdsNothingAtFirst) {
    const Text handle;
    EXPECT_FALSE(handle);
    EXPECT_EQ(handle.get(), nullptr);
}

TEST_F(CfHandleTest, adoptedObjectGoesWithTheHandle) {
    {
        const auto handle = Text::adopt(createText(u"a"));
        EXPECT_TRUE(handle);
        EXPECT_EQ(fake.liveObjects(), 1);
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(CfHandleTest, retainedObjectOutlivesItsLender) {
    auto lender = Text::adopt(createText(u"a"));
    {
        const auto handle = Text::retain(lender.get());
        lender = {};
        EXPECT_EQ(fake.liveObjects(), 1);
        EXPECT_EQ(toQString(handle.get()), u"a"_s);
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(CfHandleTest, retainingNothingHoldsNothing) {
    EXPECT_FALSE(Text::retain(nullptr));
}

TEST_F(CfHandleTest, movingHandsTheObjectOver) {
    auto first = Text::adopt(createText(u"a"));
    const auto second = std::move(first);
    EXPECT_FALSE(first);
    EXPECT_EQ(toQString(second.get()), u"a"_s);
    EXPECT_EQ(fake.liveObjects(), 1);
}

TEST_F(CfHandleTest, movingOverAnObjectReleasesIt) {
    auto first = Text::adopt(createText(u"a"));
    {
        auto second = Text::adopt(createText(u"b"));
        first = std::move(second);
    }
    EXPECT_EQ(fake.liveObjects(), 1);
    EXPECT_EQ(toQString(first.get()), u"b"_s);
    auto& itself = first;
    first = std::move(itself);
    EXPECT_EQ(toQString(first.get()), u"b"_s);
}

class CfTextTest : public CfHandleTest {};

TEST_F(CfTextTest, goesThereAndBackUnchanged) {
    for (const auto& text : {u""_s, u"Save"_s, u"Größe ändern…"_s, u"👩‍💻 𝄞"_s, u"ファイル"_s,
                             u"a\0b"_s, QString(QChar(0xD800))}) {
        EXPECT_EQ(toQString(toCfString(text).get()), text);
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(CfTextTest, lengthCountsCodeUnits) {
    EXPECT_EQ(CFStringGetLength(toCfString(u"𝄞").get()), 2);
    EXPECT_EQ(CFStringGetLength(toCfString(QStringView()).get()), 0);
}

TEST_F(CfTextTest, nothingIsANullString) {
    EXPECT_TRUE(toQString(nullptr).isNull());
}

class MainQueueTest : public CfHandleTest {
protected:
    std::vector<int> ran;
};

TEST_F(MainQueueTest, runsInALaterTurnAndInOrder) {
    for (const int number : {1, 2, 3}) {
        runOnMainQueue([this, number] { ran.push_back(number); });
    }
    EXPECT_THAT(ran, IsEmpty());
    EXPECT_THAT(fake.calls,
                ElementsAre("dispatch_async_f main", "dispatch_async_f main", "dispatch_async_f main"));
    EXPECT_EQ(fake.turnMainQueue(), 3);
    EXPECT_THAT(ran, ElementsAre(1, 2, 3));
}

TEST_F(MainQueueTest, workPutThereByWorkWaitsForTheNextTurn) {
    runOnMainQueue([this] {
        ran.push_back(1);
        runOnMainQueue([this] { ran.push_back(2); });
    });
    EXPECT_EQ(fake.turnMainQueue(), 1);
    EXPECT_THAT(ran, ElementsAre(1));
    EXPECT_EQ(fake.turnMainQueue(), 1);
    EXPECT_THAT(ran, ElementsAre(1, 2));
}

TEST_F(MainQueueTest, whatTheWorkHoldsGoesOnceItHasRun) {
    const auto held = std::make_shared<int>();
    runOnMainQueue([held] {});
    EXPECT_EQ(held.use_count(), 2);
    fake.turnMainQueue();
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace orvantile::platform::macos
