// The doubles of objects: reference counts, strings, numbers, dictionaries.

#include "macos/axfake/Objects.h"

#include <cstring>
#include <functional>
#include <limits>

using orvantile::test::AxFake;
namespace ax = orvantile::test::ax;

namespace {

/// Writes `value` as a `Target`, or 0 where it does not fit, and says whether nothing was lost.
template <typename Target>
Boolean write(const std::variant<std::int64_t, double>& value, void* target) {
    // Holds every value of either type.
    const auto whole = std::visit([](auto number) { return static_cast<long double>(number); }, value);
    const bool fits = whole >= static_cast<long double>(std::numeric_limits<Target>::lowest()) &&
                      whole <= static_cast<long double>(std::numeric_limits<Target>::max());
    const auto result = fits ? static_cast<Target>(whole) : Target{};
    std::memcpy(target, &result, sizeof result);
    return fits && std::equal_to<>()(static_cast<long double>(result), whole);
}

} // namespace

extern "C" {

CFTypeRef CFRetain(CFTypeRef cf) {
    ++ax::live(cf, "CFRetain").references;
    return cf;
}

void CFRelease(CFTypeRef cf) {
    auto& object = ax::live(cf, "CFRelease");
    if (object.kind == ax::Kind::source && object.references == 1) {
        ax::misuse("CFRelease", "a run loop source that belongs to its observer");
    }
    if (ax::findConstant(cf) != nullptr && object.references == 1) {
        ax::misuse("CFRelease", "a constant that nobody has retained");
    }
    if (--object.references == 0) {
        AxFake::current().destroyed(object);
    }
}

CFTypeID CFGetTypeID(CFTypeRef cf) {
    return static_cast<CFTypeID>(ax::live(cf, "CFGetTypeID").kind);
}

CFTypeID CFStringGetTypeID() {
    return static_cast<CFTypeID>(ax::Kind::string);
}

CFTypeID CFNumberGetTypeID() {
    return static_cast<CFTypeID>(ax::Kind::number);
}

CFStringRef CFStringCreateWithCharacters(CFAllocatorRef, const UniChar* chars, CFIndex numChars) {
    if (numChars < 0 || (chars == nullptr && numChars > 0)) {
        ax::misuse("CFStringCreateWithCharacters", "no characters");
    }
    if (AxFake::current().outOfMemory) {
        return nullptr;
    }
    const QString text(reinterpret_cast<const QChar*>(chars), numChars);
    return ax::toReference<CFStringRef>(AxFake::current().make<ax::String>(text));
}

CFIndex CFStringGetLength(CFStringRef theString) {
    return ax::as<ax::String>(theString, "CFStringGetLength").text.size();
}

void CFStringGetCharacters(CFStringRef theString, CFRange range, UniChar* buffer) {
    const auto& text = ax::as<ax::String>(theString, "CFStringGetCharacters").text;
    if (range.location < 0 || range.length < 0 || range.length > text.size() - range.location) {
        ax::misuse("CFStringGetCharacters", "a range outside the string");
    }
    std::memcpy(buffer, text.utf16() + range.location,
                static_cast<std::size_t>(range.length) * sizeof(UniChar));
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType theType, void* valuePtr) {
    const auto& value = ax::as<ax::Number>(number, "CFNumberGetValue").value;
    switch (theType) {
    case kCFNumberSInt8Type:
        return write<std::int8_t>(value, valuePtr);
    case kCFNumberSInt16Type:
        return write<std::int16_t>(value, valuePtr);
    case kCFNumberSInt32Type:
        return write<std::int32_t>(value, valuePtr);
    case kCFNumberSInt64Type:
    case kCFNumberLongLongType:
        return write<std::int64_t>(value, valuePtr);
    case kCFNumberFloat32Type:
        return write<float>(value, valuePtr);
    case kCFNumberFloat64Type:
    case kCFNumberDoubleType:
        return write<double>(value, valuePtr);
    }
    ax::misuse("CFNumberGetValue", "an unknown type of number");
}

CFDictionaryRef CFDictionaryCreate(CFAllocatorRef, const void** keys, const void** values, CFIndex numValues,
                                   const CFDictionaryKeyCallBacks* keyCallBacks,
                                   const CFDictionaryValueCallBacks* valueCallBacks) {
    if (keyCallBacks != &kCFTypeDictionaryKeyCallBacks ||
        valueCallBacks != &kCFTypeDictionaryValueCallBacks) {
        ax::misuse("CFDictionaryCreate", "a dictionary that does not hold its entries");
    }
    auto& dictionary = AxFake::current().make<ax::Dictionary>();
    for (CFIndex index = 0; index < numValues; ++index) {
        dictionary.entries.emplace_back(CFRetain(keys[index]), CFRetain(values[index]));
    }
    return ax::toReference<CFDictionaryRef>(dictionary);
}
}
