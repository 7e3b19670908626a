// The doubles themselves: what would be wrong on a Mac must not pass here.

#include "macos/axfake/AxFake.h"

#include <array>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class MisuseTest : public ::testing::Test {
protected:
    MisuseTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static CFStringRef text(QStringView characters) {
        return CFStringCreateWithCharacters(
            kCFAllocatorDefault, reinterpret_cast<const UniChar*>(characters.utf16()), characters.size());
    }

    static AXObserverRef observer() {
        AXObserverRef created = nullptr;
        AXObserverCreate(
            7, [](AXObserverRef, AXUIElementRef, CFStringRef, void*) {}, &created);
        return created;
    }

    AxFake fake;
};

using MisuseDeathTest = MisuseTest;

TEST_F(MisuseDeathTest, releasingTooOften) {
    const auto string = text(u"a");
    CFRelease(string);
    EXPECT_DEATH(CFRelease(string), "misuse: CFRelease: an object that has been released");
}

TEST_F(MisuseDeathTest, usingWhatHasBeenReleased) {
    const auto string = text(u"a");
    CFRelease(string);
    EXPECT_DEATH(CFRetain(string), "misuse: CFRetain: an object that has been released");
    EXPECT_DEATH(CFStringGetLength(string), "misuse: CFStringGetLength: an object that has been released");
    EXPECT_DEATH(CFGetTypeID(string), "misuse: CFGetTypeID: an object that has been released");
}

TEST_F(MisuseDeathTest, nullAndForeignReferences) {
    const int foreign = 0;
    EXPECT_DEATH(CFRelease(nullptr), "misuse: CFRelease: a null reference");
    EXPECT_DEATH(CFRetain(nullptr), "misuse: CFRetain: a null reference");
    EXPECT_DEATH(CFRetain(&foreign), "misuse: CFRetain: a reference to no object");
}

TEST_F(MisuseDeathTest, anObjectOfAnotherType) {
    const auto string = text(u"a");
    const auto element = AXUIElementCreateApplication(7);
    std::int64_t number = 0;
    CFTypeRef value = nullptr;
    EXPECT_DEATH(CFNumberGetValue(reinterpret_cast<CFNumberRef>(string), kCFNumberSInt64Type, &number),
                 "misuse: CFNumberGetValue: an object of another type");
    EXPECT_DEATH(AXUIElementCopyAttributeValue(reinterpret_cast<AXUIElementRef>(string), string, &value),
                 "another type");
    EXPECT_DEATH(AXUIElementCopyAttributeValue(element, reinterpret_cast<CFStringRef>(element), &value),
                 "another type");
}

TEST_F(MisuseDeathTest, releasingWhatIsBorrowed) {
    EXPECT_DEATH(CFRelease(AXObserverGetRunLoopSource(observer())), "belongs to its observer");
    EXPECT_DEATH(CFRelease(kCFBooleanTrue), "a constant that nobody has retained");
    EXPECT_DEATH(CFRelease(CFRunLoopGetMain()), "a constant that nobody has retained");
}

TEST_F(MisuseDeathTest, sourcesOnTheLoop) {
    const auto source = AXObserverGetRunLoopSource(observer());
    EXPECT_DEATH(CFRunLoopRemoveSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode),
                 "has not been added");
    CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode);
    EXPECT_DEATH(CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode),
                 "has been added already");
    EXPECT_DEATH(CFRunLoopRemoveSource(CFRunLoopGetMain(), source, kCFRunLoopCommonModes),
                 "has not been added");
    EXPECT_DEATH(CFRunLoopRemoveSource(CFRunLoopGetCurrent(), source, kCFRunLoopDefaultMode),
                 "has not been added");
}

TEST_F(MisuseDeathTest, aSourceThatIsUsedAfterItsObserver) {
    const auto watching = observer();
    const auto source = AXObserverGetRunLoopSource(watching);
    CFRelease(watching);
    EXPECT_DEATH(CFRunLoopAddSource(CFRunLoopGetMain(), source, kCFRunLoopDefaultMode),
                 "misuse: CFRunLoopAddSource: an object that has been released");
    EXPECT_DEATH(AXObserverGetRunLoopSource(watching), "an object that has been released");
}

TEST_F(MisuseDeathTest, anElementOfAnotherProcess) {
    EXPECT_DEATH(AXObserverAddNotification(observer(), AXUIElementCreateApplication(8), text(u"a"), nullptr),
                 "an element of another process");
}

TEST_F(MisuseDeathTest, observersWithoutCallback) {
    AXObserverRef created = nullptr;
    EXPECT_DEATH(AXObserverCreate(7, nullptr, &created), "no callback");
}

TEST_F(MisuseDeathTest, dictionariesThatHoldNothing) {
    const void* key = kAXTrustedCheckOptionPrompt;
    const void* value = kCFBooleanTrue;
    EXPECT_DEATH(CFDictionaryCreate(kCFAllocatorDefault, &key, &value, 1, nullptr, nullptr),
                 "does not hold its entries");
}

TEST_F(MisuseDeathTest, charactersOutsideTheString) {
    std::array<UniChar, 4> buffer{};
    EXPECT_DEATH(CFStringGetCharacters(text(u"ab"), CFRange{0, 3}, buffer.data()),
                 "a range outside the string");
    EXPECT_DEATH(CFStringGetCharacters(text(u"ab"), CFRange{-1, 1}, buffer.data()),
                 "a range outside the string");
}

TEST_F(MisuseDeathTest, callsOffTheMainThread) {
    EXPECT_DEATH(std::thread([] { AXIsProcessTrusted(); }).join(),
                 "misuse: AXIsProcessTrusted: called off the main thread");
}

TEST_F(MisuseDeathTest, turningTheLoopInsideACallback) {
    AXObserverRef watching = nullptr;
    AXObserverCreate(
        7, [](AXObserverRef, AXUIElementRef, CFStringRef, void*) { AxFake::current().turnRunLoop(); },
        &watching);
    AXObserverAddNotification(watching, AXUIElementCreateApplication(7), text(u"AXMenuOpened"), nullptr);
    CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(watching), kCFRunLoopDefaultMode);
    fake.post(7, u"AXMenuOpened"_s, nullptr);
    EXPECT_DEATH(fake.turnRunLoop(), "turned from inside a callback");
}

TEST_F(MisuseTest, numbersAreWrittenAtTheirSize) {
    fake.trusted = true;

    struct {
        std::int32_t number = -1;
        std::int32_t guard = 99;
    } written;

    AXObserverRef watching = nullptr;
    CFTypeRef value = nullptr;
    static CFTypeRef copied = nullptr;
    AXObserverCreate(
        7,
        [](AXObserverRef, AXUIElementRef element, CFStringRef name, void*) {
            AXUIElementCopyAttributeValue(element, name, &copied);
        },
        &watching);
    AXObserverAddNotification(watching, AXUIElementCreateApplication(7), text(u"AXSize"), nullptr);
    CFRunLoopAddSource(CFRunLoopGetMain(), AXObserverGetRunLoopSource(watching), kCFRunLoopDefaultMode);
    fake.post(7, u"AXSize"_s,
              std::make_shared<FakeElement>(FakeElement{{{u"AXSize"_s, std::int64_t{0x1'0000'0005}}}}));
    fake.turnRunLoop();
    value = copied;
    EXPECT_FALSE(CFNumberGetValue(static_cast<CFNumberRef>(value), kCFNumberSInt32Type, &written.number));
    EXPECT_EQ(written.guard, 99);
}

TEST(MisuseWithoutFakeDeathTest, anyCallDies) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(AXIsProcessTrusted(), "misuse: AxFake: there is none");
}

} // namespace
} // namespace orvantile::test
