#include "preferences/PermissionRow.h"

#include "preferences/Localized.h"

#include <QTextDocument>

namespace orvantile {
namespace {

constexpr double recheckSeconds = 0.5;

} // namespace

PermissionRow::PermissionRow(platform::Platform& platform_) : platform(platform_) {
    refresh();
    addLeading(symbol);
    addControl(button);
    button.installEventFilter(this);
    connect(&button, &QPushButton::clicked, this, [this] { act(); });
    lateAnswer = platform.accessibility->onceTrustIsKnown([this] { refresh(); });
}

void PermissionRow::refresh() {
    trusted = platform.accessibility->isProcessTrusted();
    symbol.setGood(trusted);
    setText(localized(trusted ? "Accessibility access granted" : "Accessibility access required"));
    button.setText(localized(trusted ? "Re-check" : "Open System Settings…"));
    explain();
    button.updateGeometry();
}

bool PermissionRow::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        explain();
    }
    return FormRow::event(event);
}

bool PermissionRow::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &button && event->type() == QEvent::FocusIn) {
        explain();
    }
    return FormRow::eventFilter(watched, event);
}

void PermissionRow::explain() {
    const auto details = platform.accessibility->permissionDetails();
    button.setAccessibleDescription(details);
    // Only formatted text has its lines broken.
    setToolTip(details.isEmpty() ? QString() : Qt::convertFromPlainText(details, Qt::WhiteSpaceNormal));
}

void PermissionRow::act() {
    if (!trusted) {
        platform.accessibility->promptForTrust();
        platform.workspace->openAccessibilitySettings();
    }
    checks.push_back(platform.scheduler->runOnMainQueueAfter(recheckSeconds, [this] { refresh(); }));
}

} // namespace orvantile
