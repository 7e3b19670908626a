#pragma once

#include "platform/Platform.h"
#include "preferences/PermissionRow.h"
#include "preferences/controls/ConfirmationDialog.h"
#include "preferences/controls/Footnote.h"
#include "preferences/controls/Form.h"
#include "preferences/controls/Switch.h"
#include "settings/Settings.h"

#include <QVBoxLayout>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

namespace orvantile {

/// Turns the program and its menu-bar item on and off, shows and asks for the accessibility permission, and
/// resets every setting after a confirmation.
class GeneralTab final : public QWidget {
public:
    GeneralTab(Settings& settings, platform::Platform& platform);

protected:
    void showEvent(QShowEvent* event) override;

private:
    void showBackgroundNote(bool shown);
    void confirmReset();

    Settings& settings;
    Form form;
    FormSection presence;
    FormSection permissions;
    FormSection reset;
    Switch enabled;
    Switch showInMenuBar;
    std::optional<Footnote> backgroundNote; ///< only while the menu-bar item is hidden
    PermissionRow permission;
    Footnote permissionNote;
    FormRow resetRow;
    PushButton resetButton;
    QVBoxLayout layout;
    std::unique_ptr<ConfirmationDialog> confirmation;
    std::vector<Subscription> subscriptions;
};

} // namespace orvantile
