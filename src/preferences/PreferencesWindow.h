#pragma once

#include "app/PresentableWindow.h"
#include "platform/Platform.h"
#include "preferences/PreferencesView.h"
#include "settings/Settings.h"

#include <QVBoxLayout>
#include <QWidget>
#include <optional>

namespace orvantile {

/// The preferences window. Made once and kept: closing hides it, and it comes back as it was, where it was.
/// It is as large as its content and cannot be resized. Main thread only.
class PreferencesWindow final : public QWidget, public PresentableWindow {
public:
    PreferencesWindow(Settings& settings, platform::Platform& platform);

    void present() override;

    [[nodiscard]] PreferencesView& view() { return content; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void center();
    void followAppearance();

    platform::Platform& platform;
    PreferencesView content;
    QVBoxLayout layout;
    std::optional<QPoint> placeWhenClosed;
    platform::Appearance::Token appearanceToken;
};

} // namespace orvantile
