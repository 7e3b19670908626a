#include "settings/HUDPosition.h"

#include "settings/StringEnumeration.h"

namespace orvantile {
namespace {

constexpr auto cases = std::to_array<StringCase<HUDPosition::Case>>({
    {HUDPosition::center, u"center", u"Center"},
    {HUDPosition::topCenter, u"topCenter", u"Top center"},
    {HUDPosition::bottomCenter, u"bottomCenter", u"Bottom center"},
    {HUDPosition::topLeft, u"topLeft", u"Top left"},
    {HUDPosition::topRight, u"topRight", u"Top right"},
    {HUDPosition::bottomLeft, u"bottomLeft", u"Bottom left"},
    {HUDPosition::bottomRight, u"bottomRight", u"Bottom right"},
});

const StringCase<HUDPosition::Case>& described(HUDPosition::Case value) {
    return cases.at(static_cast<std::size_t>(value));
}

} // namespace

const std::array<HUDPosition, 7> HUDPosition::allCases{center,   topCenter,  bottomCenter, topLeft,
                                                       topRight, bottomLeft, bottomRight};
const HUDPosition HUDPosition::fallback = bottomCenter;

std::optional<HUDPosition> HUDPosition::fromRawValue(QStringView rawValue) {
    return caseFromRawValue(cases, rawValue);
}

QString HUDPosition::rawValue() const {
    return described(value).rawValue.toString();
}

QString HUDPosition::label() const {
    return described(value).label.toString();
}

} // namespace orvantile
