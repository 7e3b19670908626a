#include "preferences/SoundTab.h"

#include "preferences/Localized.h"
#include "preferences/controls/Binding.h"

namespace orvantile {

SoundTab::SoundTab(Settings& settings_, platform::Platform& platform_)
    : settings(settings_),
      platform(platform_),
      heard(settings.sound()),
      soundEnabled(localized("Play sound on activation")),
      soundRow(localized("Sound")),
      sound(localized("Sound"), localizedOptions<HUDSound>()),
      layout(this) {
    layout.setContentsMargins(0, 0, 0, 0);
    layout.addWidget(&form);
    soundRow.addControl(sound);
    section.addRow(soundEnabled);
    section.addRow(soundRow);
    form.addSection(section);

    subscriptions.push_back(bind(soundEnabled, settings.soundEnabled));
    subscriptions.push_back(settings.soundEnabled.subscribe([this](bool on) { soundRow.setEnabled(on); }));
    subscriptions.push_back(bind(sound, settings.sound));
    subscriptions.push_back(settings.sound.subscribe([this](const HUDSound&) { soundWillChange(); }));
}

/// The sound follows in a later turn, when the setting has been stored.
void SoundTab::soundWillChange() {
    pendingPlay = platform.scheduler->runAfter(0, [this] { playIfChanged(); });
}

void SoundTab::playIfChanged() {
    if (const auto chosen = settings.sound(); chosen != heard) {
        heard = chosen;
        platform.sounds->play(chosen.rawValue());
    }
}

} // namespace orvantile
