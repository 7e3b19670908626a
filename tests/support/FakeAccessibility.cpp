#include "support/FakeAccessibility.h"

#include <utility>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

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

} // namespace orvantile::test
