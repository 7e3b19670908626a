#include "desktop/preferences/PreferencesControls.h"

#include <stdexcept>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

const QString PreferencesControls::checkBox = u"check box"_s;
const QString PreferencesControls::radioButton = u"radio button"_s;
const QString PreferencesControls::pushButton = u"push button"_s;
const QString PreferencesControls::sliderRole = u"slider"_s;
const QString PreferencesControls::comboBox = u"combo box"_s;

std::optional<Accessible> PreferencesControls::find(const QString& role, const QString& name) const {
    for (const auto& each : reader().children(AccessibleClient::desktop())) {
        if (auto found = reader().find(each, role, name)) {
            return found;
        }
    }
    return std::nullopt;
}

Accessible PreferencesControls::control(const QString& role, const QString& name) const {
    std::optional<Accessible> found;
    if (!reader().await([&] { return (found = find(role, name)).has_value(); })) {
        throw std::runtime_error(
            QString(u"no "_s % role % u' ' % name % u" among\n"_s % outline()).toStdString());
    }
    return *found;
}

bool PreferencesControls::isShown(const QString& role, const QString& name) const {
    return find(role, name).has_value();
}

bool PreferencesControls::isChecked(const Accessible& object) const {
    return reader().has(object, AccessibleState::checked);
}

void PreferencesControls::showTab(const QString& label) const {
    const auto tab = segment(label);
    if (!reader().perform(tab, u"Toggle"_s) || !reader().await([&] { return isChecked(tab); })) {
        throw std::runtime_error("the tab " + label.toStdString() + " does not open");
    }
}

std::optional<Accessible> PreferencesControls::focusedObject() const {
    for (const auto& each : reader().children(AccessibleClient::desktop())) {
        for (const auto& object : reader().shownBelow(each)) {
            if (reader().has(object, AccessibleState::focused)) {
                return object;
            }
        }
    }
    return std::nullopt;
}

QString PreferencesControls::focused() const {
    const auto object = focusedObject();
    return object ? reader().name(*object) : QString();
}

QString PreferencesControls::outline() const {
    QString lines;
    for (const auto& program : reader().children(AccessibleClient::desktop())) {
        for (const auto& object : reader().shownBelow(program)) {
            lines += reader().role(object) % u" \""_s % reader().name(object) % u'"';
            if (const auto words = reader().description(object); !words.isEmpty()) {
                lines += u" ("_s % words % u')';
            }
            if (const auto value = reader().value(object)) {
                lines += u' ' % QString::number(value->current);
            }
            if (const auto actions = reader().actions(object); !actions.isEmpty()) {
                lines += u" ["_s % actions.join(u',') % u']';
            }
            lines += u'\n';
        }
    }
    return lines;
}

} // namespace orvantile::test
