#include "platform/linux/a11y/ReplyDecoder.h"

#include "support/BusMessages.h"

#include <gmock/gmock.h>

namespace orvantile::platform::a11y {
namespace {

using ::testing::Eq;
using ::testing::Optional;
using ::testing::SizeIs;

class Decoder : public ::testing::Test {
protected:
    /// A message with these values.
    template <typename... Values>
    MessageHandle with(const char* types, Values... values) {
        auto message = messages.blank();
        EXPECT_GE(sd_bus_message_append(message.get(), types, values...), 0);
        return test::BusMessages::sealed(std::move(message));
    }

    test::BusMessages messages;
};

TEST_F(Decoder, readsWhatIsOfTheRightType) {
    EXPECT_THAT(readText(*with("s", "Öffnen…")), Optional(Eq(u"Öffnen…")));
    EXPECT_THAT(readInteger(*with("i", -7)), Optional(-7));
    EXPECT_THAT(readNumber(*with("u", 7U)), Optional(7U));
    EXPECT_THAT(readVariantText(*with("v", "s", "Save")), Optional(Eq(u"Save")));
    EXPECT_THAT(readVariantBoolean(*with("v", "b", 1)), Optional(true));
    EXPECT_THAT(readReference(*with("(so)", ":1.5", "/a")), Optional(Eq(ObjectReference{":1.5", "/a"})));
    EXPECT_THAT(readVariantReference(*with("v", "(so)", ":1.5", "/a")),
                Optional(Eq(ObjectReference{":1.5", "/a"})));
}

TEST_F(Decoder, takesOtherTypesForAbsent) {
    EXPECT_EQ(readText(*with("i", 7)), std::nullopt);
    EXPECT_EQ(readText(*with("")), std::nullopt);
    EXPECT_EQ(readInteger(*with("u", 7U)), std::nullopt);
    EXPECT_EQ(readNumber(*with("s", "7")), std::nullopt);
    EXPECT_EQ(readVariantText(*with("s", "Save")), std::nullopt);
    EXPECT_EQ(readVariantText(*with("v", "i", 7)), std::nullopt);
    EXPECT_EQ(readVariantBoolean(*with("v", "s", "true")), std::nullopt);
    EXPECT_EQ(readVariantReference(*with("v", "s", "/a")), std::nullopt);
    EXPECT_EQ(readReference(*with("so", ":1.5", "/a")), std::nullopt);
    EXPECT_FALSE(readStates(*with("ai", 2, 1, 2)));
    EXPECT_FALSE(readStates(*with("u", 1U)));
}

TEST_F(Decoder, readsStatesOfOneWordOrTwo) {
    const auto states = readStates(*with("au", 2, 1U << 24U | 1U << 1U, 1U));
    ASSERT_TRUE(states);
    EXPECT_TRUE(states->has(AccessibleState::sensitive));
    EXPECT_TRUE(states->has(AccessibleState::active));
    EXPECT_FALSE(states->has(AccessibleState::modal));
    EXPECT_TRUE(readStates(*with("au", 1, 1U << 16U)).value().has(AccessibleState::modal));
    EXPECT_FALSE(readStates(*with("au", 0)));
}

TEST_F(Decoder, readsNoTextThatIsEndless) {
    const std::string megabyte(1'000'000, 'x');
    EXPECT_EQ(readText(*with("s", megabyte.c_str())), std::nullopt);
    EXPECT_EQ(readVariantText(*with("v", "s", megabyte.c_str())), std::nullopt);
    EXPECT_EQ(readBytes(*with("s", std::string(longestText + 1, 'x').c_str())), std::nullopt);
    EXPECT_THAT(readBytes(*with("s", std::string(longestText, 'x').c_str())), Optional(SizeIs(longestText)));
}

TEST_F(Decoder, readsNoTextThatIsNotUtf8) {
    // length 2, bytes C3 28, terminator
    const auto message = messages.answer("s", std::to_array<std::uint8_t>({2, 0, 0, 0, 0xC3, 0x28, 0}));
    ASSERT_TRUE(message);
    EXPECT_EQ(readText(*message), std::nullopt);
}

TEST_F(Decoder, readsNoTextThatIsLongerThanItsMessage) {
    const auto message =
        messages.answer("s", std::to_array<std::uint8_t>({0xFF, 0xFF, 0xFF, 0xFF, 'a', 'b', 'c', 0}));
    ASSERT_TRUE(message);
    EXPECT_EQ(readText(*message), std::nullopt);
}

TEST_F(Decoder, readsNoArrayThatIsLongerThanItsMessage) {
    const auto message =
        messages.answer("au", std::to_array<std::uint8_t>({0xF0, 0xFF, 0xFF, 0xFF, 1, 0, 0, 0}));
    ASSERT_TRUE(message);
    EXPECT_FALSE(readStates(*message));
}

TEST_F(Decoder, readsListsPieceByPiece) {
    const auto message = with("a(so)", 3, ":1.5", "/1", ":1.5", "/2", ":1.5", "/3");
    ReferenceList list(*message);
    EXPECT_THAT(list.next(2), SizeIs(2));
    EXPECT_FALSE(list.atEnd());
    EXPECT_THAT(list.next(2), SizeIs(1));
    EXPECT_TRUE(list.atEnd());
    EXPECT_THAT(list.next(2), SizeIs(0));
}

TEST_F(Decoder, takesListsOfOtherTypesForEmpty) {
    for (const auto& message :
         {with("as", 2, "/1", "/2"), with("a(ss)", 1, "a", "b"), with("s", "no list")}) {
        ReferenceList list(*message);
        EXPECT_TRUE(list.atEnd());
    }
}

TEST_F(Decoder, endsListsAtPathsOfNoSensibleLength) {
    const std::string path = "/" + std::string(1'000, 'x');
    const auto message = with("a(so)", 2, ":1.5", path.c_str(), ":1.5", "/2");
    ReferenceList list(*message);
    EXPECT_THAT(list.next(10), SizeIs(0));
    EXPECT_TRUE(list.atEnd());
}

} // namespace
} // namespace orvantile::platform::a11y
