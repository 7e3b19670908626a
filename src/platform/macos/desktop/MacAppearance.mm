#include "platform/macos/desktop/MacAppearance.h"

#include "platform/macos/application/SharedDelegate.h"

#include <utility>
#include <vector>

/// Hears of changes of the application's effective appearance.
@interface OrvantileAppearanceObserver : NSObject {
@public
    std::function<void()> changed;
}
@end

@implementation OrvantileAppearanceObserver

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id>*)change
                       context:(void*)context {
    changed();
}

@end

namespace orvantile::platform::macos {
namespace {

NSString* const observedKey = @"effectiveAppearance";

} // namespace

/// Observes the application object as long as it exists.
class MacAppearance::Observation {
public:
    Observation() : observer([[OrvantileAppearanceObserver alloc] init]) {
        observer->changed = [this] { tellAll(); };
        @autoreleasepool { // the platform is made before the main loop turns
            [existingApplication() addObserver:observer forKeyPath:observedKey options:0 context:nullptr];
        }
    }

    Observation(const Observation&) = delete;
    Observation& operator=(const Observation&) = delete;

    ~Observation() { [existingApplication() removeObserver:observer forKeyPath:observedKey context:nullptr]; }

    [[nodiscard]] Token add(std::function<void()> handler) {
        std::erase_if(handlers, [](const auto& old) { return old.expired(); });
        const auto shared = std::make_shared<const std::function<void()>>(std::move(handler));
        handlers.emplace_back(shared);
        return shared;
    }

private:
    void tellAll() {
        const auto current = handlers; // a handler may add another
        for (const auto& handler : current) {
            if (const auto existing = handler.lock()) {
                (*existing)();
            }
        }
    }

    OrvantileAppearanceObserver* observer;
    std::vector<std::weak_ptr<const std::function<void()>>> handlers;
};

MacAppearance::MacAppearance() : observation(std::make_unique<Observation>()) {}

MacAppearance::~MacAppearance() = default;

bool MacAppearance::isDark() const {
    NSAppearanceName match = [existingApplication().effectiveAppearance
        bestMatchFromAppearancesWithNames:@[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]];
    return match != nil && [match isEqualToString:NSAppearanceNameDarkAqua];
}

Appearance::Token MacAppearance::observeChanges(std::function<void()> handler) {
    return observation->add(std::move(handler));
}

} // namespace orvantile::platform::macos
