#pragma once

#include "platform/linux/desktop/updates/ReleaseNotes.h"

#include <QWidget>
#include <functional>
#include <optional>
#include <vector>

class QHBoxLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QTextEdit;

namespace orvantile::platform::desktop {

/// What an update window offers to do.
struct UpdateButton {
    QString title;
    std::function<void()> action;
};

/// What an update window says. The last button is the default one.
struct UpdateMessage {
    QString title;
    QString text;
    std::vector<UpdateButton> buttons;
};

/// The one window of the updater: an icon, a title, a sentence, below it progress or notes, and buttons.
class UpdateWindow final : public QWidget {
public:
    /// `closed_`: the user has closed the window, by its frame or by Escape.
    explicit UpdateWindow(std::function<void()> closed_);

    void showMessage(const UpdateMessage& message);

    /// Adds notes under the message; empty ones are as good as none.
    void showMessage(const UpdateMessage& message, const ReleaseNotes& notes);

    /// Nothing for `percent`: it is not known how long it will take.
    void showProgress(const UpdateMessage& message, std::optional<int> percent);

    /// Moves the bar and changes the sentence of the progress shown.
    void updateProgress(const QString& text, int percent);

    /// Shows the window, or brings it to the front.
    void present();

private:
    void setMessage(const UpdateMessage& message);
    void setButtons(const std::vector<UpdateButton>& wanted);
    void settleSize();
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    std::function<void()> closed;
    QLabel* title;
    QLabel* text;
    QProgressBar* progress;
    QTextEdit* notesView;
    QHBoxLayout* buttonRow;
    std::vector<QPushButton*> buttons;
};

} // namespace orvantile::platform::desktop
