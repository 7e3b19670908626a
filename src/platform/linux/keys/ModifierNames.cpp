#include "platform/linux/keys/ModifierNames.h"

#include <algorithm>
#include <array>

namespace orvantile::platform::keys {
namespace {

constexpr Modifiers control{.control = true};
constexpr Modifiers alt{.alt = true};
constexpr Modifiers shift{.shift = true};
constexpr Modifiers super{.super = true};

struct Name {
    QStringView text;
    Modifiers modifier;
};

/// The names that programs use as such, then the translations of GTK's "keyboard label" messages and those
/// of Qt and LibreOffice where they differ.
constexpr auto names = std::to_array<Name>({
    {u"Primary", control},
    {u"Control", control},
    {u"Ctrl", control},
    {u"Ctl", control},
    {u"Shift", shift},
    {u"Shft", shift},
    {u"Alt", alt},
    {u"Mod1", alt},
    {u"Option", alt},
    {u"Super", super},
    {u"Mod4", super},
    {u"Meta", super},
    {u"Win", super},
    {u"Mod2", {}}, // Num Lock never decides about a shortcut

    {u"Strg", control},
    {u"Vald", control},
    {u"Stirklavo", control},
    {u"Контрол", control},
    {u"مهار", control},
    {u"ਕੰਟਰੋਲ", control},
    {u"បញ្ជា (Ctrl)", control},
    {u"lundu", control},
    {u"𐑒𐑑𐑮𐑤", control},

    {u"Umschalt", shift},
    {u"Umsch", shift},
    {u"Maj", shift},
    {u"Mayus", shift},
    {u"Mayús", shift},
    {u"Mayúsculas", shift},
    {u"Maiusc", shift},
    {u"Maius", shift},
    {u"Maiús", shift},
    {u"Majús", shift},
    {u"Skift", shift},
    {u"Pennlz", shift},
    {u"Lyg2", shift},
    {u"Majuskliga klavo", shift},
    {u"Vaihto", shift},
    {u"تبدیل", shift},
    {u"شفټ", shift},
    {u"शिफ्ट", shift},
    {u"ਸਿਫਟ", shift},
    {u"ប្ដូរ (Shift)", shift},
    {u"za kimbangu", shift},
    {u"𐑖𐑦𐑓𐑑", shift},

    {u"Alt-klavo", alt},
    {u"دگرساز", alt},
    {u"الټ", alt},
    {u"ਆਲਟ", alt},
    {u"ជំនួស (Alt)", alt},
    {u"Soba", alt},
    {u"𐑷𐑤𐑑", alt},

    {u"Súper", super},
    {u"Super (WIN)", super},
    {u"Super-klavo", super},
    {u"سوپر", super},
    {u"सुपर", super},
    {u"ਸੁਪਰ", super},
    {u"ಸೂಪರ್", super},
    {u"சூப்பர்", super},
    {u"ထိပ်တန်း", super},
    {u"Олӣ", super},
    {u"nsisi", super},
    {u"𐑕𐑵𐑐𐑼", super},
    {u"Méta", super},
    {u"Mèta", super},
    {u"Meta-klavo", super},
    {u"Мета", super},
    {u"מטה", super},
    {u"მეტა", super},
    {u"មេតា", super},
    {u"ಮೆಟಾ", super},
    {u"ਮੇਟਾ", super},
    {u"மெட்டா", super},
    {u"nziunga", super},
    {u"𐑥𐑰𐑑𐑩", super},
});

} // namespace

std::optional<Modifiers> modifierNamed(QStringView name) {
    const auto* found = std::ranges::find_if(names, [name](const Name& candidate) {
        return candidate.text.compare(name, Qt::CaseInsensitive) == 0;
    });
    return found == names.end() ? std::nullopt : std::optional(found->modifier);
}

} // namespace orvantile::platform::keys
