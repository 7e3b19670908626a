#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"

using namespace orvantile::test;
using desktop::state;

@implementation NSSound

+ (NSSound*)soundNamed:(NSSoundName)name {
    return state().soundNames.contains(utf8(name)) ? [[NSSound alloc] init] : nil;
}

- (BOOL)play {
    return YES;
}

@end

void desktop::setSoundNames(const std::set<std::string>& names) {
    state().soundNames = names;
}
