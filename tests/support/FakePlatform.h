#pragma once

#include "platform/Platform.h"
#include "support/CallLog.h"
#include "support/FakeAccessibility.h"
#include "support/FakeDefaults.h"
#include "support/FakePanels.h"
#include "support/FakeStatusBar.h"
#include "support/QtPrinting.h"
#include "support/VirtualScheduler.h"

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

namespace orvantile::test {

class FakeWorkspace final : public platform::Workspace {
public:
    explicit FakeWorkspace(CallLog log_) : log(std::move(log_)) {}

    [[nodiscard]] std::optional<platform::RunningApplication> frontmostApplication() const override;
    [[nodiscard]] RegistrationToken observeActivations(ActivationHandler handler) override;
    void openAccessibilitySettings() override;

    void activate(std::optional<std::int32_t> processIdentifier);

    std::optional<platform::RunningApplication> frontmost;
    std::vector<ActivationHandler> handlers;
    std::weak_ptr<const void> latestToken;

private:
    CallLog log;
};

class FakeActivation final : public platform::Activation {
public:
    explicit FakeActivation(CallLog log_) : log(std::move(log_)) {}

    void bringToFront(std::uintptr_t window) override;

private:
    CallLog log;
};

class FakeScreens final : public platform::Screens {
public:
    [[nodiscard]] std::optional<platform::Screen> mainScreen() const override { return main; }

    [[nodiscard]] std::vector<platform::Screen> screens() const override { return all; }

    std::optional<platform::Screen> main = platform::Screen{{0, 0, 1000, 800}, {0, 40, 1000, 730}, 1};
    std::vector<platform::Screen> all{*main};
};

class FakeSounds final : public platform::Sounds {
public:
    explicit FakeSounds(CallLog log_) : log(std::move(log_)) {}

    void play(const QString& name) override;

private:
    CallLog log;
};

class FakeAppearance final : public platform::Appearance {
public:
    [[nodiscard]] bool isDark() const override { return dark; }

    [[nodiscard]] Token observeChanges(std::function<void()> handler) override;

    void change(bool toDark);

    bool dark = false;

private:
    std::vector<std::weak_ptr<const std::function<void()>>> handlers;
};

class FakeUpdater final : public platform::Updater {
public:
    explicit FakeUpdater(CallLog log_) : log(std::move(log_)) {}

    [[nodiscard]] std::unique_ptr<platform::UpdaterController>
    createController(bool startingUpdater) override;

private:
    CallLog log;
};

/// A whole platform of fakes in force for the life of this object.
class FakePlatform {
public:
    FakePlatform();
    FakePlatform(const FakePlatform&) = delete;
    FakePlatform& operator=(const FakePlatform&) = delete;
    ~FakePlatform();

    [[nodiscard]] platform::Platform& platform() const { return platform::Platform::current(); }

    CallLog log = std::make_shared<QStringList>();

    // Owned by the platform.
    VirtualScheduler* scheduler = nullptr;
    FakeAccessibility* accessibility = nullptr;
    FakeWorkspace* workspace = nullptr;
    FakeScreens* screens = nullptr;
    FakePanels* panels = nullptr;
    FakeSounds* sounds = nullptr;
    FakeAppearance* appearance = nullptr;
    FakeDefaults* defaults = nullptr;
    FakeStatusBar* statusBar = nullptr;

private:
    std::unique_ptr<platform::Platform> replaced;
};

} // namespace orvantile::test
