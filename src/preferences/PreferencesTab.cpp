#include "preferences/PreferencesTab.h"

#include "settings/StringEnumeration.h"

namespace orvantile {
namespace {

constexpr auto cases = std::to_array<StringCase<PreferencesTab::Case>>({
    {PreferencesTab::general, u"general", u"General"},
    {PreferencesTab::hud, u"hud", u"HUD"},
    {PreferencesTab::sound, u"sound", u"Sound"},
});

const StringCase<PreferencesTab::Case>& described(PreferencesTab::Case value) {
    return cases.at(static_cast<std::size_t>(value));
}

} // namespace

const std::array<PreferencesTab, 3> PreferencesTab::allCases{general, hud, sound};

std::optional<PreferencesTab> PreferencesTab::fromRawValue(QStringView rawValue) {
    return caseFromRawValue(cases, rawValue);
}

QString PreferencesTab::rawValue() const {
    return described(value).rawValue.toString();
}

QString PreferencesTab::label() const {
    return described(value).label.toString();
}

} // namespace orvantile
