#include "preferences/controls/ConfirmationDialog.h"

#include "preferences/controls/AccessibleRole.h"
#include "preferences/controls/Typography.h"

namespace orvantile {
namespace {

constexpr int dialogWidth = 360;
constexpr int margin = 22;

} // namespace

ConfirmationDialog::ConfirmationDialog(const Words& words, QWidget& parent, std::function<void()> confirmed)
    : QDialog(parent.window(),
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      title(words.title),
      message(words.message),
      confirm(words.confirm, PushButton::Role::destructive),
      cancel(words.cancel),
      column(this) {
    setAttribute(Qt::WA_WindowPropagation); // the colours of the window it belongs to
    setPalette(parent.palette());
    setWindowModality(Qt::WindowModal);
    setWindowTitle(parent.window()->windowTitle());
    setAccessibleRole(*this, QAccessible::Dialog);
    setAccessibleName(words.title);
    setAccessibleDescription(words.message);
    title.setFont(headerFont());
    title.setWordWrap(true);
    message.setFont(bodyFont());
    message.setWordWrap(true);
    message.setForegroundRole(QPalette::PlaceholderText);
    column.setContentsMargins(margin, margin, margin, margin - 3);
    column.setSpacing(8);
    column.addWidget(&title);
    column.addWidget(&message);
    column.addSpacing(8);
    column.addLayout(&buttons);
    buttons.setSpacing(6);
    buttons.addStretch(1);
    buttons.addWidget(&confirm);
    buttons.addWidget(&cancel);
    setFixedSize(dialogWidth, column.totalHeightForWidth(dialogWidth));
    cancel.setFocus();
    connect(&confirm, &QPushButton::clicked, this, [this, confirmed = std::move(confirmed)] {
        accept();
        confirmed();
    });
    connect(&cancel, &QPushButton::clicked, this, &QDialog::reject);
}

} // namespace orvantile
