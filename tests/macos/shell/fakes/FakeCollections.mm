#include "macos/shell/fakes/FakeCollections.h"

#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/runtime/ClassTable.h"

using orvantile::test::utf8;

@implementation NSArray

@dynamic count;

+ (instancetype)arrayWithObjects:(const id*)objects count:(NSUInteger)count {
    NSArray* made = [[NSArray alloc] init];
    made->objects.assign(objects, objects + count);
    return made;
}

- (NSUInteger)count {
    return objects.size();
}

- (id)objectAtIndexedSubscript:(NSUInteger)index {
    if (index >= objects.size()) {
        orvantile::test::objc::misuse("an index beyond the end of an array");
    }
    return objects[index];
}

@end

@implementation NSDictionary

- (id)objectForKey:(id)key {
    const auto found = values.find(utf8(key));
    return found != values.end() ? found->second : nil;
}

- (id)objectForKeyedSubscript:(id)key {
    return [self objectForKey:key];
}

@end

@implementation NSMutableDictionary

+ (instancetype)dictionary {
    return [[NSMutableDictionary alloc] init];
}

- (void)setObject:(id)object forKeyedSubscript:(id)key {
    values[utf8(key)] = object;
}

@end

@implementation NSValue
@end

@implementation NSNumber

+ (NSNumber*)numberWithBool:(BOOL)boolean {
    NSNumber* made = [[NSNumber alloc] init];
    made->value = boolean;
    return made;
}

+ (NSNumber*)numberWithDouble:(double)number {
    NSNumber* made = [[NSNumber alloc] init];
    made->value = number;
    return made;
}

@end

orvantile::test::desktop::DefaultsObject orvantile::test::defaultsObject(id object) {
    if ([object isKindOfClass:[NSString class]]) {
        return utf8(object);
    }
    NSNumber* number = object;
    if (const auto* boolean = std::get_if<bool>(&number->value)) {
        return *boolean;
    }
    return std::get<double>(number->value);
}
