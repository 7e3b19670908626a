#pragma once

#include "platform/Platform.h"
#include "preferences/controls/Form.h"
#include "preferences/controls/FormRow.h"
#include "preferences/controls/Picker.h"
#include "preferences/controls/Switch.h"
#include "settings/Settings.h"

#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <vector>

namespace orvantile {

/// Switches the sound on and off and chooses it; a new choice is heard at once.
class SoundTab final : public QWidget {
public:
    SoundTab(Settings& settings, platform::Platform& platform);

private:
    void soundWillChange();
    void playIfChanged();

    Settings& settings;
    platform::Platform& platform;
    HUDSound heard; ///< the choice as of the last look; what was chosen before the tab appeared is not played
    Form form;
    FormSection section;
    Switch soundEnabled;
    FormRow soundRow;
    Picker sound;
    QVBoxLayout layout;
    std::unique_ptr<platform::Scheduled> pendingPlay;
    std::vector<Subscription> subscriptions;
};

} // namespace orvantile
