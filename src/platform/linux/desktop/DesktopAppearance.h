#pragma once

#include "platform/Appearance.h"
#include "platform/linux/desktop/LiveTheme.h"
#include "platform/linux/desktop/SettingsPortal.h"
#include "platform/linux/desktop/ThemeFiles.h"

#include <QObject>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace orvantile::platform::desktop {

/// Whether the desktop is dark: as its settings portal says, else as the running desktop announces, else as
/// GTK's or KDE's settings files say, else as the toolkit's palette looks. All of them are followed, none is
/// polled or waited for.
class DesktopAppearance final : public Appearance {
public:
    /// Where to look.
    struct Sources {
        std::string sessionBus;              ///< address
        std::filesystem::path configuration; ///< the user's configuration folder
        bool kde = false;                    ///< on KDE's desktop

        [[nodiscard]] static Sources ofSession();
    };

    /// `theme`, when there is one, lives as long as this.
    explicit DesktopAppearance(const Sources& sources = Sources::ofSession(), LiveTheme* theme = nullptr);
    DesktopAppearance(const DesktopAppearance&) = delete;
    DesktopAppearance& operator=(const DesktopAppearance&) = delete;
    ~DesktopAppearance() override;

    [[nodiscard]] bool isDark() const override { return dark; }

    [[nodiscard]] Token observeChanges(std::function<void()> handler) override;

private:
    using Handler = std::function<void()>;

    [[nodiscard]] bool look() const;
    void update();

    bool kde;
    LiveTheme* theme;
    SettingsPortal portal;
    ThemeFiles files;
    std::unique_ptr<QObject> palette; ///< watches it
    bool dark;
    std::vector<std::weak_ptr<const Handler>> handlers;
};

} // namespace orvantile::platform::desktop
