#pragma once

#include "platform/AccessibilityClient.h"
#include "support/CallLog.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <vector>

namespace orvantile::test {

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

} // namespace orvantile::test
