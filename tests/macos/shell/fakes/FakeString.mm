#include "macos/shell/fakes/FakeString.h"

#include "macos/shell/runtime/ClassTable.h"

#include <QString>
#include <algorithm>

using orvantile::test::nsString;
using orvantile::test::utf8;

@interface FakeString : NSString {
@public
    std::u16string text;
}
@end

@implementation NSString

@dynamic length;

+ (instancetype)stringWithCharacters:(const unichar*)characters length:(NSUInteger)length {
    FakeString* made = [[FakeString alloc] init];
    std::transform(characters, characters + length, std::back_inserter(made->text),
                   [](unichar c) { return static_cast<char16_t>(c); });
    return made;
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
    orvantile::test::objc::misuse("a string of no kind");
}

- (BOOL)isEqualToString:(NSString*)other {
    return utf8(self) == utf8(other);
}

- (NSString*)stringByAppendingPathComponent:(NSString*)component {
    return nsString(utf8(self) + "/" + utf8(component));
}

@end

@implementation FakeString

- (NSUInteger)length {
    return text.size();
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
    if (range.location + range.length > text.size()) {
        orvantile::test::objc::misuse("characters beyond the end of a string");
    }
    std::copy_n(text.begin() + static_cast<long>(range.location), range.length, buffer);
}

@end

/// What the compiler makes of a string constant.
@interface FakeConstantString : NSString {
    int flags;
    const char* bytes;
    long byteCount;
}
@end

__asm__(".globl __CFConstantStringClassReference\n"
        ".set __CFConstantStringClassReference, OBJC_CLASS_$_FakeConstantString");

@implementation FakeConstantString

- (NSUInteger)length {
    return static_cast<NSUInteger>(byteCount);
}

- (void)getCharacters:(unichar*)buffer range:(NSRange)range {
    std::copy_n(bytes + range.location, range.length, buffer);
}

@end

std::string orvantile::test::utf8(NSString* text) {
    if (text == nil) {
        return {};
    }
    std::u16string characters(text.length, u'\0');
    [text getCharacters:reinterpret_cast<unichar*>(characters.data()) range:NSMakeRange(0, text.length)];
    return QString::fromStdU16String(characters).toStdString();
}

NSString* orvantile::test::nsString(const std::string& text) {
    const auto wide = QString::fromStdString(text);
    return [NSString stringWithCharacters:wide.utf16() length:static_cast<NSUInteger>(wide.size())];
}
