#pragma once

#include "platform/AccessibilityClient.h"
#include "platform/Activation.h"
#include "platform/Appearance.h"
#include "platform/Backdrop.h"
#include "platform/Panel.h"
#include "platform/Scheduler.h"
#include "platform/Screens.h"
#include "platform/Sounds.h"
#include "platform/StatusBar.h"
#include "platform/Updater.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

#include <memory>

namespace orvantile::platform {

/// Everything the program asks of the desktop, chosen once at start-up. No member is ever null: what a
/// desktop does not have is a peer that does nothing. Members are destroyed in reverse order.
struct Platform {
    std::shared_ptr<const void> foundation; ///< what the peers of a desktop share; may be null
    std::unique_ptr<Scheduler> scheduler;
    std::unique_ptr<UserDefaults> defaults;
    std::unique_ptr<Appearance> appearance;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<AccessibilityClient> accessibility;
    std::unique_ptr<Activation> activation;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<Backdrop> backdrop;
    std::unique_ptr<Panels> panels;
    std::unique_ptr<Sounds> sounds;
    std::unique_ptr<StatusBar> statusBar;
    std::unique_ptr<Updater> updater;

    /// The platform in force. Using it before `install` is a programming error and stops the program.
    [[nodiscard]] static Platform& current();

    /// Puts `platform` in force and returns the one it replaces, if any.
    static std::unique_ptr<Platform> install(std::unique_ptr<Platform> platform);
};

} // namespace orvantile::platform
