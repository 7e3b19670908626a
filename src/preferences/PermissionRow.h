#pragma once

#include "platform/Platform.h"
#include "preferences/controls/FormRow.h"
#include "preferences/controls/PushButton.h"
#include "preferences/controls/StatusSymbol.h"

#include <QEvent>
#include <memory>
#include <vector>

namespace orvantile {

/// Says whether the program may observe other applications and helps to allow it. The state is read when
/// `refresh` is called, when the desktop first answers, and half a second after each press of the button;
/// nothing polls.
class PermissionRow final : public FormRow {
public:
    explicit PermissionRow(platform::Platform& platform);

    void refresh();

protected:
    /// What is said on hovering is as fresh as the hovering, and what a screen reader says of the button as
    /// fresh as the button's focus.
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void act();
    void explain();

    platform::Platform& platform;
    bool trusted = false;
    StatusSymbol symbol;
    PushButton button{QString()};
    platform::AccessibilityClient::TrustToken lateAnswer;
    std::vector<std::unique_ptr<platform::Scheduled>>
        checks; ///< one for each press, as long as the row lives
};

} // namespace orvantile
