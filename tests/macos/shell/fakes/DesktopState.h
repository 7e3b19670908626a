#pragma once

#import <AppKit/AppKit.h>

#include "macos/shell/fakes/Desktop.h"

#include <map>
#include <set>
#include <vector>

namespace orvantile::test::desktop {

/// A registration with the workspace's notification centre, which owns it.
struct Observer {
    id<NSObject> token;
    void (^block)(NSNotification*);
};

/// What the fakes share.
struct State {
    std::optional<int> frontmost;
    std::map<const void*, Observer> activationBlocks;

    std::optional<bool> dark = false;
    std::vector<std::pair<__unsafe_unretained NSObject*, void*>> appearanceObservers;

    std::vector<Screen> screens;
    bool hasMainScreen = true;

    std::set<std::string> soundNames;
    std::set<std::string> symbolNames;
    Sparkle sparkle = Sparkle::installed;
    bool acceptsAddresses = true;

    std::map<std::string, DefaultsObject> registered;
    std::map<std::string, DefaultsObject> stored;

    double now = 0;
    std::vector<NSTimer*> timers;
    std::vector<void (^)(void)> animationsEnding;

    __weak NSPanel* panel = nil;
    std::vector<NSStatusItem*> statusItems;
    bool statusItemsHaveButtons = true;
};

[[nodiscard]] State& state();

} // namespace orvantile::test::desktop
