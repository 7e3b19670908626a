#import <Foundation/Foundation.h>

#include "macos/shell/fakes/FakeString.h"
#include "macos/shell/recording/ArgumentText.h"
#include "macos/shell/runtime/ClassTable.h"
#include "macos/shell/runtime/ObjectTable.h"

#include <set>

using namespace orvantile::test;

extern "C" Class objc_opt_class(id object);
extern "C" bool objc_opt_isKindOfClass(id object, Class kind);
extern "C" bool objc_opt_respondsToSelector(id object, SEL selector);

@implementation NSObject

+ (instancetype)alloc {
    return (__bridge_transfer id)(void*)objc::ObjectTable::shared().allocate(
        (objc::Class*)(__bridge void*)self);
}

+ (instancetype)new {
    return [[self alloc] init];
}

+ (Class)class {
    return self;
}

- (Class)class {
    return objc_opt_class(self);
}

- (instancetype)init {
    return self;
}

- (void)dealloc {
}

- (BOOL)isKindOfClass:(Class)kind {
    return objc_opt_isKindOfClass(self, kind);
}

- (BOOL)respondsToSelector:(SEL)selector {
    return objc_opt_respondsToSelector(self, selector);
}

- (void)addObserver:(NSObject*)observer
         forKeyPath:(NSString*)keyPath
            options:(NSKeyValueObservingOptions)options
            context:(void*)context {
    objc::misuse("the object has no key to observe");
}

- (void)removeObserver:(NSObject*)observer forKeyPath:(NSString*)keyPath context:(void*)context {
    objc::misuse("the object has no key to observe");
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
    objc::misuse("the observer does not handle the key " + utf8(keyPath));
}

@end

Class NSClassFromString(NSString* name) {
    return (__bridge Class)(void*)objc::classNamed(utf8(name));
}

NSString* NSStringFromSelector(SEL selector) {
    return nsString((const char*)(void*)selector);
}

SEL NSSelectorFromString(NSString* name) {
    // Selectors last as long as the program.
    static std::set<std::string> names;
    return (SEL)(void*)names.insert(utf8(name)).first->c_str();
}

std::string orvantile::test::objectText(const void* pointer) {
    const id object = (__bridge id)(void*)pointer;
    if (object == nil) {
        return "nil";
    }
    const std::string type = ((objc::Object*)pointer)->isa->data->name;
    if (objc_opt_isKindOfClass(object, [NSString class])) {
        return "\"" + utf8(object) + "\"";
    }
    if (objc_opt_respondsToSelector(object, @selector(fakeDescription))) {
        return "<" + type + " " + utf8([(id<FakeDescribed>)object fakeDescription]) + ">";
    }
    return "<" + type + ">";
}
