#include "settings/HUDAppearance.h"

#include "platform/Platform.h"
#include "settings/StringEnumeration.h"

namespace orvantile {
namespace {

constexpr auto cases = std::to_array<StringCase<HUDAppearance::Case>>({
    {HUDAppearance::auto_, u"auto", u"Auto"},
    {HUDAppearance::light, u"light", u"Light"},
    {HUDAppearance::dark, u"dark", u"Dark"},
});

const StringCase<HUDAppearance::Case>& described(HUDAppearance::Case value) {
    return cases.at(static_cast<std::size_t>(value));
}

} // namespace

const std::array<HUDAppearance, 3> HUDAppearance::allCases{auto_, light, dark};
const HUDAppearance HUDAppearance::fallback = auto_;

std::optional<HUDAppearance> HUDAppearance::fromRawValue(QStringView rawValue) {
    return caseFromRawValue(cases, rawValue);
}

QString HUDAppearance::rawValue() const {
    return described(value).rawValue.toString();
}

QString HUDAppearance::label() const {
    return described(value).label.toString();
}

bool HUDAppearance::systemIsDark() {
    return platform::Platform::current().appearance->isDark();
}

bool HUDAppearance::darkMode(bool schemeIsDark) const {
    switch (value) {
    case auto_:
        return !schemeIsDark;
    case light:
        return true;
    case dark:
        return false;
    }
    return true;
}

} // namespace orvantile
