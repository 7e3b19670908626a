#include "macos/axfake/AxFake.h"
#include "platform/macos/accessibility/AxElementNode.h"
#include "platform/macos/accessibility/MacAccessibilityClient.h"

#include <gmock/gmock.h>
#include <limits>

namespace orvantile::platform::macos {
namespace {

using Qt::StringLiterals::operator""_s;
using test::FakeElement;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
constexpr auto highest = std::numeric_limits<std::int64_t>::max();

class ElementTest : public ::testing::Test {
protected:
    /// A handle to an element with these attributes, as a notification brings it.
    AccessibilityElement element(FakeElement content) {
        std::optional<AccessibilityElement> received;
        auto observer =
            client.createObserver(process, [](AccessibilityObserver&, const AccessibilityElement& sent,
                                              const QString&, void* reference) {
                static_cast<std::optional<AccessibilityElement>*>(reference)->emplace(sent);
            });
        observer->addNotification(client.applicationElement(process), u"AXMenuItemSelected"_s, &received);
        observer->addToMainLoop();
        fake.post(process, u"AXMenuItemSelected"_s, std::make_shared<FakeElement>(std::move(content)));
        fake.turnRunLoop();
        observer.reset();
        fake.calls.clear();
        return received.value();
    }

    AttributeValue copied(FakeElement::Value value) {
        const auto result = element({{{u"AXTitle"_s, std::move(value)}}}).copyAttribute(u"AXTitle");
        EXPECT_EQ(fake.liveObjects(), 0) << "a copy must leave nothing behind";
        return result;
    }

    static constexpr pid_t process = 7;
    test::AxFake fake;
    MacAccessibilityClient client;
};

const AttributeValue absent;

TEST_F(ElementTest, copiesStrings) {
    EXPECT_EQ(copied(u"Save"_s), AttributeValue(u"Save"_s));
    EXPECT_EQ(copied(u""_s), AttributeValue(u""_s));
    EXPECT_EQ(copied(u"Größe 𝄞 保存"_s), AttributeValue(u"Größe 𝄞 保存"_s));
}

TEST_F(ElementTest, copiesWholeNumbersOfAnySize) {
    for (const std::int64_t number :
         {std::int64_t{0}, std::int64_t{-1}, std::int64_t{122}, lowest, highest}) {
        EXPECT_EQ(copied(number), AttributeValue(number));
    }
    EXPECT_EQ(copied(3.0), AttributeValue(std::int64_t{3}));
}

TEST_F(ElementTest, numbersThatAreNotWholeAreAbsent) {
    EXPECT_EQ(copied(3.5), absent);
    EXPECT_EQ(copied(1e300), absent);
    EXPECT_EQ(copied(std::numeric_limits<double>::quiet_NaN()), absent);
}

TEST_F(ElementTest, valuesOfOtherTypesAreAbsent) {
    EXPECT_EQ(copied(true), absent);
    EXPECT_EQ(copied(FakeElement::NoValue{}), absent);
}

TEST_F(ElementTest, asksForTheAttributeByItsName) {
    const auto item = element({{{u"AXMenuItemCmdChar"_s, u"s"_s}}});
    EXPECT_EQ(item.copyAttribute(u"AXMenuItemCmdChar"), AttributeValue(u"s"_s));
    EXPECT_EQ(item.copyAttribute(u"AXMenuItemCmdGlyph"), absent);
    EXPECT_THAT(fake.calls, ElementsAre("AXUIElementCopyAttributeValue AXMenuItemCmdChar",
                                        "AXUIElementCopyAttributeValue AXMenuItemCmdGlyph"));
}

TEST_F(ElementTest, everyErrorIsAbsent) {
    for (const auto error :
         {kAXErrorFailure, kAXErrorIllegalArgument, kAXErrorInvalidUIElement, kAXErrorCannotComplete,
          kAXErrorAttributeUnsupported, kAXErrorNotImplemented, kAXErrorAPIDisabled, kAXErrorNoValue}) {
        EXPECT_EQ(element({{{u"AXTitle"_s, u"Save"_s}}, error}).copyAttribute(u"AXTitle"), absent);
    }
}

TEST_F(ElementTest, outlivesTheNotificationThatBroughtIt) {
    {
        const auto item = element({{{u"AXTitle"_s, u"Save"_s}}});
        EXPECT_EQ(fake.liveObjects(), 1) << "the element alone";
        EXPECT_EQ(item.copyAttribute(u"AXTitle"), AttributeValue(u"Save"_s));
        EXPECT_EQ(item.copyAttribute(u"AXTitle"), AttributeValue(u"Save"_s));
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(ElementTest, isUnreadableOnceItsApplicationHasEnded) {
    const auto item = element({{{u"AXTitle"_s, u"Save"_s}}});
    fake.gone.insert(process);
    EXPECT_EQ(item.copyAttribute(u"AXTitle"), absent);
}

TEST_F(ElementTest, copiesShareTheElement) {
    const auto item = element({});
    const auto copy = item; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(fake.liveObjects(), 1);
    EXPECT_EQ(copy, item);
    EXPECT_NE(element({}), item);
}

TEST_F(ElementTest, applicationElementIsOwned) {
    {
        const auto application = client.applicationElement(process);
        EXPECT_THAT(fake.calls, ElementsAre("AXUIElementCreateApplication 7"));
        EXPECT_EQ(fake.liveObjects(), 1);
        EXPECT_EQ(application.copyAttribute(u"AXTitle"), absent);
    }
    EXPECT_EQ(fake.liveObjects(), 0);
}

TEST_F(ElementTest, anAttributeWhoseNameCannotBeMadeIsNotAskedFor) {
    const auto item = element({{{u"AXTitle"_s, u"Save"_s}}});
    fake.outOfMemory = true;
    EXPECT_EQ(item.copyAttribute(u"AXTitle"), absent);
    EXPECT_THAT(fake.calls, IsEmpty());
}

TEST_F(ElementTest, anElementThatWasNotGivenIsNotAsked) {
    fake.withoutElement.insert(process);
    const auto application = client.applicationElement(process);
    fake.calls.clear();
    EXPECT_EQ(application.copyAttribute(u"AXTitle"), absent);
    EXPECT_THAT(fake.calls, IsEmpty());
}

} // namespace
} // namespace orvantile::platform::macos
