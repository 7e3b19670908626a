#include "preferences/GeneralTab.h"

#include "preferences/Localized.h"
#include "preferences/controls/Binding.h"

namespace orvantile {

GeneralTab::GeneralTab(Settings& settings_, platform::Platform& platform)
    : settings(settings_),
      permissions(localized("Permissions")),
      enabled(localized("Enable Orvantile")),
      showInMenuBar(localized("Show in menu bar")),
      permission(platform),
      permissionNote(
          localized("Orvantile reads menu titles from the frontmost app to identify the action you "
                    "triggered. Grant access in System Settings → Privacy & Security → "
                    "Accessibility.")),
      resetButton(localized("Reset to Defaults…")),
      layout(this) {
    layout.setContentsMargins(0, 0, 0, 0);
    layout.addWidget(&form);
    presence.addRow(enabled);
    presence.addRow(showInMenuBar);
    permissions.addRow(permission);
    permissions.addRow(permissionNote);
    resetRow.addSpacer();
    resetRow.addControl(resetButton);
    resetRow.addSpacer();
    reset.addRow(resetRow);
    form.addSection(presence);
    form.addSection(permissions);
    form.addSection(reset);

    connect(&resetButton, &QPushButton::clicked, this, [this] { confirmReset(); });
    subscriptions.push_back(bind(enabled, settings.enabled));
    subscriptions.push_back(bind(showInMenuBar, settings.showInMenuBar));
    subscriptions.push_back(
        settings.showInMenuBar.subscribe([this](bool inMenuBar) { showBackgroundNote(!inMenuBar); }));
}

void GeneralTab::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!event->spontaneous()) {
        permission.refresh();
    }
}

void GeneralTab::showBackgroundNote(bool shown) {
    if (!shown) {
        backgroundNote.reset();
    } else if (!backgroundNote) {
        backgroundNote.emplace(
            localized("Orvantile will keep running in the background. To reopen this window, "
                      "relaunch Orvantile from Finder (or Spotlight)."));
        presence.addRow(*backgroundNote);
    }
}

void GeneralTab::confirmReset() {
    confirmation = std::make_unique<ConfirmationDialog>(
        ConfirmationDialog::Words{
            .title = localized("Reset all Orvantile preferences to their defaults?"),
            .message =
                localized("Position, font size, sound, glass settings, and the menu-bar option will be "
                          "restored. Accessibility permission is unaffected."),
            .confirm = localized("Reset"),
            .cancel = localized("Cancel")},
        *this, [this] { settings.resetToDefaults(); });
    confirmation->open();
}

} // namespace orvantile
