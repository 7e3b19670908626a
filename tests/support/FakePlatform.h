#pragma once

#include "platform/Platform.h"
#include "support/QtPrinting.h"
#include "support/VirtualScheduler.h"

#include <QStringList>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace orvantile::test {

/// What happened behind the seams, in order, as short lines such as "panel.setAlpha 0".
using CallLog = std::shared_ptr<QStringList>;

/// A menu item with the given attributes.
[[nodiscard]] platform::AccessibilityElement
makeElement(std::map<QString, platform::AttributeValue> attributes, CallLog log = nullptr);

class FakeAccessibility final : public platform::AccessibilityClient {
public:
    explicit FakeAccessibility(CallLog log_) : log(std::move(log_)) {}

    [[nodiscard]] bool isProcessTrusted() const override;

    [[nodiscard]] QString permissionDetails() const override { return details; }

    void promptForTrust() override;
    [[nodiscard]] std::unique_ptr<platform::AccessibilityObserver>
    createObserver(std::int32_t processIdentifier,
                   platform::AccessibilityObserver::Callback callback) override;
    [[nodiscard]] platform::AccessibilityElement applicationElement(std::int32_t processIdentifier) override;

    /// Delivers a notification of the process to its observer, if one listens for it.
    void post(std::int32_t processIdentifier, const QString& notification,
              const platform::AccessibilityElement& element);

    [[nodiscard]] TrustToken onceTrustIsKnown(std::function<void()> handler) override;

    /// The desktop answers now, for the first time.
    void becomeKnown(bool isTrusted);

    bool trusted = true;
    QString details;
    std::set<std::int32_t> unobservable;
    bool refusesNotifications = false;

private:
    class Observer;
    CallLog log;
    std::vector<std::weak_ptr<const std::function<void()>>> trustHandlers;
    std::shared_ptr<std::vector<Observer*>> observers = std::make_shared<std::vector<Observer*>>();
};

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

class FakePanels final : public platform::Panels {
public:
    FakePanels(CallLog log_, VirtualScheduler& scheduler_) : log(std::move(log_)), scheduler(scheduler_) {}

    [[nodiscard]] std::shared_ptr<platform::Panel>
    create(const platform::PanelAttributes& attributes) override;

    struct State {
        std::shared_ptr<platform::PanelContent> content;
        platform::Rect frame;
        double alpha = 1;
        bool visible = false;
    };

    platform::PanelAttributes attributes; ///< of the latest panel
    std::shared_ptr<State> state;         ///< of the latest panel

private:
    CallLog log;
    VirtualScheduler& scheduler;
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

class FakeDefaults final : public platform::UserDefaults {
public:
    explicit FakeDefaults(CallLog log_) : log(std::move(log_)) {}

    void registerDefaults(const std::vector<std::pair<QString, platform::DefaultsValue>>& values) override;
    [[nodiscard]] bool boolForKey(const QString& key) const override;
    [[nodiscard]] double doubleForKey(const QString& key) const override;
    [[nodiscard]] std::optional<QString> stringForKey(const QString& key) const override;
    void set(const QString& key, const platform::DefaultsValue& value) override;

    std::map<QString, platform::DefaultsValue> registered;
    std::map<QString, platform::DefaultsValue> stored;

private:
    template <typename Value>
    [[nodiscard]] std::optional<Value> find(const QString& key) const;

    CallLog log;
};

class FakeStatusBar final : public platform::StatusBar {
public:
    explicit FakeStatusBar(CallLog log_) : log(std::move(log_)) {}

    [[nodiscard]] std::unique_ptr<platform::StatusItem> createItem() override;
    [[nodiscard]] std::optional<platform::SymbolImage>
    symbolImage(const QString& name, const QString& accessibilityDescription) override;

    struct State {
        std::optional<platform::SymbolImage> image;
        std::shared_ptr<platform::Menu> menu;
    };

    std::weak_ptr<State> item; ///< the latest, while it is in the bar
    bool knowsSymbols = true;

private:
    CallLog log;
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
