#include "settings/HUDSound.h"

#include "settings/StringEnumeration.h"

namespace orvantile {
namespace {

constexpr auto cases = std::to_array<StringCase<HUDSound::Case>>({
    {HUDSound::pop, u"Pop", u"Pop"},
    {HUDSound::tink, u"Tink", u"Tink"},
    {HUDSound::glass, u"Glass", u"Glass"},
    {HUDSound::ping, u"Ping", u"Ping"},
    {HUDSound::morse, u"Morse", u"Morse"},
    {HUDSound::purr, u"Purr", u"Purr"},
});

const StringCase<HUDSound::Case>& described(HUDSound::Case value) {
    return cases.at(static_cast<std::size_t>(value));
}

} // namespace

const std::array<HUDSound, 6> HUDSound::allCases{pop, tink, glass, ping, morse, purr};
const HUDSound HUDSound::fallback = pop;

std::optional<HUDSound> HUDSound::fromRawValue(QStringView rawValue) {
    return caseFromRawValue(cases, rawValue);
}

QString HUDSound::rawValue() const {
    return described(value).rawValue.toString();
}

QString HUDSound::label() const {
    return described(value).label.toString();
}

} // namespace orvantile
