#include "platform/macos/updates/MacUpdater.h"

#import <Foundation/Foundation.h>

/// What the program asks of the framework's `SPUStandardUpdaterController`, whose headers it does not need.
@protocol OrvantileUpdaterController
- (instancetype)initWithStartingUpdater:(BOOL)startUpdater
                        updaterDelegate:(id)updaterDelegate
                     userDriverDelegate:(id)userDriverDelegate;
- (void)checkForUpdates:(id)sender;
@end

namespace orvantile::platform::macos {
namespace {

using Controller = NSObject<OrvantileUpdaterController>;

/// Nil when the framework is not there or has no such class.
Class controllerClass() {
    NSString* path =
        [NSBundle.mainBundle.privateFrameworksPath stringByAppendingPathComponent:@"Sparkle.framework"];
    if (path == nil || ![[NSBundle bundleWithPath:path] load]) {
        return Nil;
    }
    return NSClassFromString(@"SPUStandardUpdaterController");
}

class SparkleController final : public UpdaterController {
public:
    explicit SparkleController(bool startingUpdater) {
        Controller* allocated = [controllerClass() alloc];
        controller = [allocated initWithStartingUpdater:startingUpdater
                                        updaterDelegate:nil
                                     userDriverDelegate:nil];
    }

    void checkForUpdates() override { [controller checkForUpdates:nil]; }

private:
    Controller* controller;
};

} // namespace

std::unique_ptr<UpdaterController> MacUpdater::createController(bool startingUpdater) {
    return std::make_unique<SparkleController>(startingUpdater);
}

} // namespace orvantile::platform::macos
