#pragma once

#include "preferences/controls/LeadingLabel.h"
#include "preferences/controls/PushButton.h"

#include <QDialog>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <functional>

namespace orvantile {

/// Asks before something that cannot be undone. Escape and closing mean cancel.
class ConfirmationDialog final : public QDialog {
public:
    struct Words {
        QString title;
        QString message;
        QString confirm; ///< on the destructive button
        QString cancel;
    };

    /// Calls `confirmed` when the user agrees. Belongs to the caller; centred over the window of `parent`.
    ConfirmationDialog(const Words& words, QWidget& parent, std::function<void()> confirmed);

private:
    LeadingLabel title;
    LeadingLabel message;
    PushButton confirm;
    PushButton cancel;
    QVBoxLayout column;
    QHBoxLayout buttons;
};

} // namespace orvantile
