#import <Sparkle/Sparkle.h>

#include "macos/shell/fakes/DesktopState.h"
#include "macos/shell/fakes/FakeString.h"

using namespace orvantile::test;
using desktop::state;

@implementation NSBundle

@dynamic privateFrameworksPath;
@dynamic resourcePath;

+ (NSBundle*)mainBundle {
    static NSBundle* const bundle = [[NSBundle alloc] init];
    return bundle;
}

+ (instancetype)bundleWithPath:(NSString*)path {
    return state().sparkle == desktop::Sparkle::missing ? nil : [[NSBundle alloc] init];
}

- (NSString*)privateFrameworksPath {
    return @"/Applications/Orvantile.app/Contents/Frameworks";
}

- (NSString*)resourcePath {
    return @"/Applications/Orvantile.app/Contents/Resources";
}

- (BOOL)load {
    return YES;
}

@end

@implementation SPUStandardUpdaterController

- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate {
    return self;
}

- (void)checkForUpdates:(id)sender {
}

@end

void desktop::setSparkle(Sparkle sparkle) {
    state().sparkle = sparkle;
}
