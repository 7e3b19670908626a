#include "support/FakePlatform.h"

#include "platform/null/NullPlatform.h"

#include <utility>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

std::optional<platform::RunningApplication> FakeWorkspace::frontmostApplication() const {
    return frontmost;
}

platform::Workspace::RegistrationToken FakeWorkspace::observeActivations(ActivationHandler handler) {
    log->append(u"workspace.observeActivations"_s);
    handlers.push_back(std::move(handler));
    RegistrationToken token = std::make_shared<int>();
    latestToken = token;
    return token;
}

void FakeWorkspace::openAccessibilitySettings() {
    log->append(u"workspace.openAccessibilitySettings"_s);
}

void FakeWorkspace::activate(std::optional<std::int32_t> processIdentifier) {
    std::optional<platform::RunningApplication> application;
    if (processIdentifier) {
        application = platform::RunningApplication{*processIdentifier};
    }
    const auto current = handlers;
    for (const auto& handler : current) {
        handler(application);
    }
}

void FakeActivation::bringToFront(std::uintptr_t) {
    log->append(u"activation.bringToFront"_s);
}

void FakeSounds::play(const QString& name) {
    log->append(u"sounds.play "_s + name);
}

platform::Appearance::Token FakeAppearance::observeChanges(std::function<void()> handler) {
    auto token = std::make_shared<const std::function<void()>>(std::move(handler));
    handlers.push_back(token);
    return token;
}

void FakeAppearance::change(bool toDark) {
    dark = toDark;
    const auto current = handlers;
    for (const auto& weak : current) {
        if (const auto handler = weak.lock()) {
            (*handler)();
        }
    }
}

std::unique_ptr<platform::UpdaterController> FakeUpdater::createController(bool startingUpdater) {
    class Controller final : public platform::UpdaterController {
    public:
        explicit Controller(CallLog log_) : log(std::move(log_)) {}

        void checkForUpdates() override { log->append(u"updater.checkForUpdates"_s); }

    private:
        CallLog log;
    };

    log->append(u"updater.createController starting "_s + (startingUpdater ? u"yes"_s : u"no"_s));
    return std::make_unique<Controller>(log);
}

FakePlatform::FakePlatform() {
    auto fakes = platform::makeNullPlatform();
    const auto put = [](auto& slot, auto fake) {
        auto* raw = fake.get();
        slot = std::move(fake);
        return raw;
    };
    scheduler = put(fakes->scheduler, std::make_unique<VirtualScheduler>());
    accessibility = put(fakes->accessibility, std::make_unique<FakeAccessibility>(log));
    workspace = put(fakes->workspace, std::make_unique<FakeWorkspace>(log));
    put(fakes->activation, std::make_unique<FakeActivation>(log));
    screens = put(fakes->screens, std::make_unique<FakeScreens>());
    panels = put(fakes->panels, std::make_unique<FakePanels>(log, *scheduler));
    sounds = put(fakes->sounds, std::make_unique<FakeSounds>(log));
    appearance = put(fakes->appearance, std::make_unique<FakeAppearance>());
    defaults = put(fakes->defaults, std::make_unique<FakeDefaults>(log));
    statusBar = put(fakes->statusBar, std::make_unique<FakeStatusBar>(log));
    put(fakes->updater, std::make_unique<FakeUpdater>(log));
    replaced = platform::Platform::install(std::move(fakes));
}

FakePlatform::~FakePlatform() {
    platform::Platform::install(std::move(replaced));
}

} // namespace orvantile::test
