#include "platform/null/NullPlatform.h"

#include <utility>

namespace orvantile::platform {
namespace {

class NullScheduled final : public Scheduled {
    void invalidate() override {}
};

class NullScheduler final : public Scheduler {
    double now() const override { return 0; }

    void runLater(Work) override {}

    std::unique_ptr<Scheduled> runAfter(double, Work) override { return std::make_unique<NullScheduled>(); }

    std::unique_ptr<Scheduled> runEveryFrame(Work) override { return std::make_unique<NullScheduled>(); }
};

/// Answers the registered values and forgets every assignment.
class NullDefaults final : public UserDefaults {
    void registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) override {
        registered = values;
    }

    bool boolForKey(const QString& key) const override { return find<bool>(key).value_or(false); }

    double doubleForKey(const QString& key) const override { return find<double>(key).value_or(0.0); }

    std::optional<QString> stringForKey(const QString& key) const override { return find<QString>(key); }

    void set(const QString&, const DefaultsValue&) override {}

    template <typename Value>
    std::optional<Value> find(const QString& key) const {
        for (const auto& [name, value] : registered) {
            if (name == key && std::holds_alternative<Value>(value)) {
                return std::get<Value>(value);
            }
        }
        return std::nullopt;
    }

    std::vector<std::pair<QString, DefaultsValue>> registered;
};

class NullAppearance final : public Appearance {
    bool isDark() const override { return false; }

    Token observeChanges(std::function<void()>) override { return nullptr; }
};

class NullWorkspace final : public Workspace {
    std::optional<RunningApplication> frontmostApplication() const override { return std::nullopt; }

    RegistrationToken observeActivations(ActivationHandler) override { return nullptr; }

    void openAccessibilitySettings() override {}
};

class NullNode final : public AccessibilityNode {
    AttributeValue copyAttribute(QStringView) const override { return {}; }
};

class NullAccessibility final : public AccessibilityClient {
    bool isProcessTrusted() const override { return false; }

    void promptForTrust() override {}

    std::unique_ptr<AccessibilityObserver> createObserver(std::int32_t,
                                                          AccessibilityObserver::Callback) override {
        return nullptr;
    }

    AccessibilityElement applicationElement(std::int32_t) override {
        return AccessibilityElement(std::make_shared<NullNode>());
    }
};

class NullActivation final : public Activation {
    void bringToFront(std::uintptr_t) override {}
};

/// One screen, so that a HUD has a place to be.
class NullScreens final : public Screens {
    std::optional<Screen> mainScreen() const override { return screens().front(); }

    std::vector<Screen> screens() const override {
        const Rect whole{0, 0, 1280, 800};
        return {{whole, whole, 1}};
    }
};

class NullBackdrop final : public Backdrop {
    BackdropPicture behind(const Rect&) override { return NoBackdrop{}; }
};

class NullPanel final : public Panel {
    void setContent(std::shared_ptr<PanelContent>) override {}

    void setFrame(const Rect&, bool) override {}

    void setAlpha(double) override {}

    void orderFrontRegardless() override {}

    void animateAlpha(double, double, std::function<void()>) override {}

    void orderOut() override {}
};

class NullPanels final : public Panels {
    std::shared_ptr<Panel> create(const PanelAttributes&) override { return std::make_shared<NullPanel>(); }
};

class NullSounds final : public Sounds {
    void play(const QString&) override {}
};

class NullStatusItem final : public StatusItem {
    void setImage(const std::optional<SymbolImage>&) override {}

    void setMenu(std::shared_ptr<Menu>) override {}
};

class NullStatusBar final : public StatusBar {
    std::unique_ptr<StatusItem> createItem() override { return std::make_unique<NullStatusItem>(); }

    std::optional<SymbolImage> symbolImage(const QString&, const QString&) override { return std::nullopt; }
};

class NullUpdaterController final : public UpdaterController {
    void checkForUpdates() override {}
};

class NullUpdater final : public Updater {
    std::unique_ptr<UpdaterController> createController(bool) override {
        return std::make_unique<NullUpdaterController>();
    }
};

} // namespace

std::unique_ptr<Platform> makeNullPlatform() {
    auto platform = std::make_unique<Platform>();
    platform->scheduler = std::make_unique<NullScheduler>();
    platform->defaults = std::make_unique<NullDefaults>();
    platform->appearance = std::make_unique<NullAppearance>();
    platform->workspace = std::make_unique<NullWorkspace>();
    platform->accessibility = std::make_unique<NullAccessibility>();
    platform->activation = std::make_unique<NullActivation>();
    platform->screens = std::make_unique<NullScreens>();
    platform->backdrop = std::make_unique<NullBackdrop>();
    platform->panels = std::make_unique<NullPanels>();
    platform->sounds = std::make_unique<NullSounds>();
    platform->statusBar = std::make_unique<NullStatusBar>();
    platform->updater = std::make_unique<NullUpdater>();
    return platform;
}

} // namespace orvantile::platform
