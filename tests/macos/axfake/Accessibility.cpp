// The doubles of the accessibility client interface.

#include "macos/axfake/Objects.h"

using orvantile::test::AxFake;
using orvantile::test::FakeElement;
namespace ax = orvantile::test::ax;

namespace {

AxFake& called(const char* function, const std::string& arguments = {}) {
    auto& fake = AxFake::current();
    fake.requireMainThread(function);
    fake.log(arguments.empty() ? function : function + (" " + arguments));
    return fake;
}

CFTypeRef makeValue(AxFake& fake, const FakeElement::Value& value) {
    if (const auto* text = std::get_if<QString>(&value)) {
        return ax::toReference<CFTypeRef>(fake.make<ax::String>(*text));
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return ax::toReference<CFTypeRef>(fake.make<ax::Number>(*number));
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return ax::toReference<CFTypeRef>(fake.make<ax::Number>(*number));
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return CFRetain(*truth ? kCFBooleanTrue : kCFBooleanFalse);
    }
    return nullptr;
}

/// What a copy fails with, or success.
AXError copyError(const AxFake& fake, const ax::Element& element, const QString& attribute) {
    if (!fake.trusted) {
        return kAXErrorAPIDisabled;
    }
    if (fake.gone.contains(element.process)) {
        return kAXErrorInvalidUIElement;
    }
    if (const auto found = fake.unservedAttribute.find(attribute); found != fake.unservedAttribute.end()) {
        return found->second;
    }
    if (element.content == nullptr || !element.content->attributes.contains(attribute)) {
        return element.content != nullptr && element.content->error != kAXErrorSuccess
                   ? element.content->error
                   : kAXErrorAttributeUnsupported;
    }
    return element.content->error;
}

} // namespace

extern "C" {

Boolean AXIsProcessTrusted() {
    return called("AXIsProcessTrusted").trusted;
}

Boolean AXIsProcessTrustedWithOptions(CFDictionaryRef options) {
    std::string text;
    if (options != nullptr) {
        for (const auto& [key, value] :
             ax::as<ax::Dictionary>(options, "AXIsProcessTrustedWithOptions").entries) {
            text += ax::as<ax::String>(key, "AXIsProcessTrustedWithOptions").text.toStdString() + "=" +
                    (ax::as<ax::Truth>(value, "AXIsProcessTrustedWithOptions").value ? "true" : "false");
        }
    }
    return called("AXIsProcessTrustedWithOptions", "{" + text + "}").trusted;
}

AXUIElementRef AXUIElementCreateApplication(pid_t pid) {
    auto& fake = called("AXUIElementCreateApplication", std::to_string(pid));
    return fake.withoutElement.contains(pid)
               ? nullptr
               : ax::toReference<AXUIElementRef>(fake.make<ax::Element>(pid, nullptr));
}

AXError AXUIElementCopyAttributeValue(AXUIElementRef element, CFStringRef attribute, CFTypeRef* value) {
    const auto& copied = ax::as<ax::Element>(element, "AXUIElementCopyAttributeValue");
    const auto& name = ax::as<ax::String>(attribute, "AXUIElementCopyAttributeValue").text;
    auto& fake = called("AXUIElementCopyAttributeValue", name.toStdString());
    if (value == nullptr) {
        ax::misuse("AXUIElementCopyAttributeValue", "nowhere to put the value");
    }
    if (const auto error = copyError(fake, copied, name); error != kAXErrorSuccess) {
        *value = fake.garbage();
        return error;
    }
    *value = makeValue(fake, copied.content->attributes.at(name));
    return kAXErrorSuccess;
}

AXError AXObserverCreate(pid_t application, AXObserverCallback callback, AXObserverRef* outObserver) {
    auto& fake = called("AXObserverCreate", std::to_string(application));
    if (callback == nullptr || outObserver == nullptr) {
        ax::misuse("AXObserverCreate", "no callback or nowhere to put the observer");
    }
    if (const auto found = fake.unobservable.find(application); found != fake.unobservable.end()) {
        *outObserver = static_cast<AXObserverRef>(const_cast<void*>(fake.garbage()));
        return found->second;
    }
    if (fake.withoutObserver.contains(application)) {
        return kAXErrorSuccess;
    }
    auto& observer = fake.make<ax::Observer>(application, callback);
    observer.source = &fake.make<ax::Source>(application);
    fake.observers.push_back(&observer);
    *outObserver = ax::toReference<AXObserverRef>(observer);
    return kAXErrorSuccess;
}

AXError AXObserverAddNotification(AXObserverRef observer, AXUIElementRef element, CFStringRef notification,
                                  void* refcon) {
    auto& watching = ax::as<ax::Observer>(observer, "AXObserverAddNotification");
    const auto& watched = ax::as<ax::Element>(element, "AXObserverAddNotification");
    const auto& name = ax::as<ax::String>(notification, "AXObserverAddNotification").text;
    auto& fake =
        called("AXObserverAddNotification", std::to_string(watched.process) + " " + name.toStdString());
    if (watched.process != watching.process) {
        ax::misuse("AXObserverAddNotification", "an element of another process");
    }
    if (!fake.trusted) {
        return kAXErrorAPIDisabled;
    }
    if (fake.unservedNotifications.contains(name)) {
        return kAXErrorNotificationUnsupported;
    }
    return watching.subscriptions.emplace(name, refcon).second ? kAXErrorSuccess
                                                               : kAXErrorNotificationAlreadyRegistered;
}

CFRunLoopSourceRef AXObserverGetRunLoopSource(AXObserverRef observer) {
    return ax::toReference<CFRunLoopSourceRef>(
        *ax::as<ax::Observer>(observer, "AXObserverGetRunLoopSource").source);
}
}
