#include "macos/shell/recording/CallRecorder.h"

#include "macos/shell/recording/ArgumentText.h"
#include "macos/shell/runtime/MessageSend.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace orvantile::test {
namespace {

constexpr std::array plainValues{"NSString", "NSArray", "NSDictionary", "NSMutableDictionary", "NSNumber"};

/// The program's own classes have other prefixes.
bool isOfSystem(std::string_view name) {
    return name.starts_with("NS") || name.starts_with("CA") || name.starts_with("SPU");
}

} // namespace

CallRecorder& CallRecorder::shared() {
    static CallRecorder recorder;
    return recorder;
}

std::vector<std::string> CallRecorder::callsTo(const std::string& receiver) const {
    std::vector<std::string> result;
    std::ranges::copy_if(recorded, std::back_inserter(result),
                         [&](const auto& call) { return call.starts_with("[" + receiver + " "); });
    return result;
}

void objc::messageSent(const Object* receiver, const Class* implementedBy, const Method& method,
                       const Arguments& arguments) {
    const std::string_view implementer = implementedBy->data->name;
    if (isOfSystem(implementer) && std::ranges::find(plainValues, implementer) == plainValues.end()) {
        CallRecorder::shared().add(std::string("[") + receiver->isa->data->name + " " +
                                   messageText(method.selector, method.types, arguments) + "]");
    }
}

} // namespace orvantile::test
