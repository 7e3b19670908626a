#include "support/FakePlatform.h"

#include "platform/null/NullPlatform.h"

#include <algorithm>
#include <utility>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

QString number(double value) {
    return QString::number(value, 'g', 12);
}

QString described(const platform::DefaultsValue& value) {
    if (const auto* flag = std::get_if<bool>(&value)) {
        return *flag ? u"true"_s : u"false"_s;
    }
    if (const auto* amount = std::get_if<double>(&value)) {
        return number(*amount);
    }
    return std::get<QString>(value);
}

class FakeNode final : public platform::AccessibilityNode {
public:
    FakeNode(std::map<QString, platform::AttributeValue> attributes_, CallLog log_)
        : attributes(std::move(attributes_)),
          log(std::move(log_)) {}

    [[nodiscard]] platform::AttributeValue copyAttribute(QStringView name) const override {
        if (log) {
            log->append(u"element.copy "_s + name);
        }
        const auto found = attributes.find(name.toString());
        return found == attributes.end() ? platform::AttributeValue() : found->second;
    }

private:
    std::map<QString, platform::AttributeValue> attributes;
    CallLog log;
};

class FakePanel final : public platform::Panel {
public:
    FakePanel(CallLog log_, VirtualScheduler& scheduler_, std::shared_ptr<FakePanels::State> state_)
        : log(std::move(log_)),
          scheduler(scheduler_),
          state(std::move(state_)) {}

    void setContent(std::shared_ptr<platform::PanelContent> content) override {
        log->append(u"panel.setContent "_s + content->title());
        state->content = std::move(content);
    }

    void setFrame(const platform::Rect& frame, bool display) override {
        log->append(u"panel.setFrame display "_s + (display ? u"yes"_s : u"no"_s));
        state->frame = frame;
    }

    void setAlpha(double alpha) override {
        log->append(u"panel.setAlpha "_s + number(alpha));
        state->alpha = alpha;
    }

    void orderFrontRegardless() override {
        log->append(u"panel.orderFrontRegardless"_s);
        state->visible = true;
    }

    void animateAlpha(double alpha, double duration, std::function<void()> completion) override {
        log->append(u"panel.animateAlpha "_s + number(alpha) + u" in "_s + number(duration) +
                    (completion ? u" then"_s : u""_s));
        animations.push_back(scheduler.runAfter(duration, [this, alpha, completion = std::move(completion)] {
            state->alpha = alpha;
            if (completion) {
                completion();
            }
        }));
    }

    void orderOut() override {
        log->append(u"panel.orderOut"_s);
        state->visible = false;
    }

private:
    CallLog log;
    VirtualScheduler& scheduler;
    std::shared_ptr<FakePanels::State> state;
    std::vector<std::unique_ptr<platform::Scheduled>> animations;
};

} // namespace

platform::AccessibilityElement makeElement(std::map<QString, platform::AttributeValue> attributes,
                                           CallLog log) {
    return platform::AccessibilityElement(std::make_shared<FakeNode>(std::move(attributes), std::move(log)));
}

class FakeAccessibility::Observer final : public platform::AccessibilityObserver {
public:
    Observer(std::int32_t process_, Callback callback_, CallLog log_, bool refuses_,
             std::shared_ptr<std::vector<Observer*>> observers_)
        : process(process_),
          callback(callback_),
          log(std::move(log_)),
          refuses(refuses_),
          observers(std::move(observers_)) {
        this->observers->push_back(this);
    }

    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    ~Observer() override {
        log->append(u"observer.release "_s + QString::number(process));
        std::erase(*observers, this);
    }

    bool addNotification(const platform::AccessibilityElement&, const QString& notification,
                         void* reference) override {
        log->append(u"observer.addNotification "_s + notification);
        if (!refuses) {
            references[notification] = reference;
        }
        return !refuses;
    }

    void addToMainLoop() override {
        log->append(u"observer.addToMainLoop"_s);
        running = true;
    }

    void removeFromMainLoop() override {
        log->append(u"observer.removeFromMainLoop"_s);
        running = false;
    }

    void deliver(const QString& notification, const platform::AccessibilityElement& element) {
        if (running && references.contains(notification)) {
            callback(*this, element, notification, references[notification]);
        }
    }

    [[nodiscard]] std::int32_t processIdentifier() const { return process; }

private:
    std::int32_t process;
    Callback callback;
    CallLog log;
    bool refuses;
    bool running = false;
    std::map<QString, void*> references;
    std::shared_ptr<std::vector<Observer*>> observers;
};

bool FakeAccessibility::isProcessTrusted() const {
    log->append(u"accessibility.isProcessTrusted"_s);
    return trusted;
}

platform::AccessibilityClient::TrustToken FakeAccessibility::onceTrustIsKnown(std::function<void()> handler) {
    auto kept = std::make_shared<const std::function<void()>>(std::move(handler));
    trustHandlers.push_back(kept);
    return kept;
}

void FakeAccessibility::becomeKnown(bool isTrusted) {
    trusted = isTrusted;
    for (const auto& each : std::exchange(trustHandlers, {})) {
        if (const auto handler = each.lock()) {
            (*handler)();
        }
    }
}

void FakeAccessibility::promptForTrust() {
    log->append(u"accessibility.promptForTrust"_s);
}

std::unique_ptr<platform::AccessibilityObserver>
FakeAccessibility::createObserver(std::int32_t processIdentifier,
                                  platform::AccessibilityObserver::Callback callback) {
    log->append(u"accessibility.createObserver "_s + QString::number(processIdentifier));
    if (unobservable.contains(processIdentifier)) {
        return nullptr;
    }
    return std::make_unique<Observer>(processIdentifier, callback, log, refusesNotifications, observers);
}

platform::AccessibilityElement FakeAccessibility::applicationElement(std::int32_t processIdentifier) {
    log->append(u"accessibility.applicationElement "_s + QString::number(processIdentifier));
    return makeElement({});
}

void FakeAccessibility::post(std::int32_t processIdentifier, const QString& notification,
                             const platform::AccessibilityElement& element) {
    const auto current = *observers;
    for (auto* observer : current) {
        if (observer->processIdentifier() == processIdentifier) {
            observer->deliver(notification, element);
        }
    }
}

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

std::shared_ptr<platform::Panel> FakePanels::create(const platform::PanelAttributes& newAttributes) {
    log->append(u"panels.create"_s);
    attributes = newAttributes;
    state = std::make_shared<State>();
    return std::make_shared<FakePanel>(log, scheduler, state);
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

void FakeDefaults::registerDefaults(const std::vector<std::pair<QString, platform::DefaultsValue>>& values) {
    for (const auto& [key, value] : values) {
        log->append(u"defaults.register "_s + key + u" "_s + described(value));
        registered[key] = value;
    }
}

template <typename Value>
std::optional<Value> FakeDefaults::find(const QString& key) const {
    for (const auto* domain : {&stored, &registered}) {
        if (const auto found = domain->find(key); found != domain->end()) {
            const auto* value = std::get_if<Value>(&found->second);
            return value != nullptr ? std::optional(*value) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool FakeDefaults::boolForKey(const QString& key) const {
    log->append(u"defaults.bool "_s + key);
    return find<bool>(key).value_or(false);
}

double FakeDefaults::doubleForKey(const QString& key) const {
    log->append(u"defaults.double "_s + key);
    return find<double>(key).value_or(0.0);
}

std::optional<QString> FakeDefaults::stringForKey(const QString& key) const {
    log->append(u"defaults.string "_s + key);
    return find<QString>(key);
}

void FakeDefaults::set(const QString& key, const platform::DefaultsValue& value) {
    log->append(u"defaults.set "_s + key + u" "_s + described(value));
    stored[key] = value;
}

std::unique_ptr<platform::StatusItem> FakeStatusBar::createItem() {
    class Item final : public platform::StatusItem {
    public:
        Item(CallLog log_, std::shared_ptr<State> state_) : log(std::move(log_)), state(std::move(state_)) {}

        Item(const Item&) = delete;
        Item& operator=(const Item&) = delete;

        ~Item() override { log->append(u"statusItem.remove"_s); }

        void setImage(const std::optional<platform::SymbolImage>& image) override {
            log->append(u"statusItem.setImage "_s + (image ? image->name : u"none"_s));
            state->image = image;
        }

        void setMenu(std::shared_ptr<platform::Menu> menu) override {
            log->append(u"statusItem.setMenu"_s);
            state->menu = std::move(menu);
        }

    private:
        CallLog log;
        std::shared_ptr<State> state;
    };

    log->append(u"statusBar.createItem"_s);
    auto state = std::make_shared<State>();
    item = state;
    return std::make_unique<Item>(log, std::move(state));
}

std::optional<platform::SymbolImage> FakeStatusBar::symbolImage(const QString& name,
                                                                const QString& accessibilityDescription) {
    if (!knowsSymbols) {
        return std::nullopt;
    }
    return platform::SymbolImage{name, accessibilityDescription, false};
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
