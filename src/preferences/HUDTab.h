#pragma once

#include "platform/Platform.h"
#include "preferences/HUDPreview.h"
#include "preferences/controls/Form.h"
#include "preferences/controls/Picker.h"
#include "preferences/controls/PushButton.h"
#include "preferences/controls/SegmentedPicker.h"
#include "preferences/controls/SliderRow.h"
#include "preferences/controls/Switch.h"
#include "settings/Settings.h"

#include <QVBoxLayout>
#include <QWidget>
#include <optional>
#include <vector>

namespace orvantile {

/// Chooses where the HUD appears, how long it stays and how it looks, under a live preview.
class HUDTab final : public QWidget {
public:
    HUDTab(Settings& settings, platform::Platform& platform);

    /// Whether the preview is drawn as the dark-backed capsule, which stands out against a light desktop.
    [[nodiscard]] bool previewDark() const;

    /// How large the tab may be. Its preview gives way rather than its controls.
    void setRoom(const QSize& room);

private:
    void buildForm();
    void bindControls();
    void bindPreview();
    void showOpacityRow(bool shown);
    void test() const;

    /// Changes the HUD in the preview.
    template <typename Change>
    void redraw(Change change);

    Settings& settings;
    platform::Platform& platform;
    HUDAppearance shownAppearance; ///< ahead of the setting while an assignment is being announced
    HUDPreview preview;
    Form form;
    FormSection display;
    FormSection look;
    FormSection testing;
    FormRow positionRow;
    Picker position;
    SliderRow duration;
    SliderRow fontSize;
    FormRow modeRow;
    SegmentedPicker mode;
    Switch showShortcut;
    Switch translucent;
    std::optional<SliderRow> opacity; ///< only without glass
    Subscription opacityFollows;
    Switch popAnimation;
    FormRow testRow;
    PushButton testButton;
    QVBoxLayout layout;
    std::vector<Subscription> subscriptions;
    platform::Appearance::Token appearanceToken;
};

} // namespace orvantile
