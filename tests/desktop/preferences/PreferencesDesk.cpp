#include "desktop/preferences/PreferencesDesk.h"

#include "support/desktop/Screenshot.h"

#include <QFile>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString title = u"Orvantile Preferences"_s;

/// The program takes its time to start on a busy machine.
constexpr std::chrono::seconds startPatience{60};

} // namespace

const QString PreferencesDesk::checkBox = u"check box"_s;
const QString PreferencesDesk::radioButton = u"radio button"_s;
const QString PreferencesDesk::pushButton = u"push button"_s;
const QString PreferencesDesk::sliderRole = u"slider"_s;
const QString PreferencesDesk::comboBox = u"combo box"_s;

PreferencesDesk::PreferencesDesk(const QByteArray& settings, SessionOptions options)
    : desktop(std::move(options)),
      injector(desktop.display()),
      watcher(desktop.display()),
      client(std::make_unique<AccessibleClient>(desktop.accessibilityBusAddress())) {
    desktop.writeFile(u".config/orvantile/orvantile.ini"_s, "[General]\n" + settings);
    start();
}

void PreferencesDesk::start() {
    process = desktop.start(QStringLiteral(ORVANTILE_EXECUTABLE));
    watcher.awaitActive(titled(title), QDeadlineTimer(startPatience));
    if (!client->await([this] { return isShown(radioButton, u"General"_s); },
                       QDeadlineTimer(startPatience))) {
        throw std::runtime_error("the preferences are not on the accessibility bus");
    }
}

Window PreferencesDesk::window() const {
    return watcher.awaitWindow(titled(title));
}

std::optional<Accessible> PreferencesDesk::find(const QString& role, const QString& name) const {
    for (const auto& each : client->children(AccessibleClient::desktop())) {
        if (auto found = client->find(each, role, name)) {
            return found;
        }
    }
    return std::nullopt;
}

Accessible PreferencesDesk::control(const QString& role, const QString& name) const {
    std::optional<Accessible> found;
    if (!client->await([&] { return (found = find(role, name)).has_value(); })) {
        throw std::runtime_error(
            QString(u"no "_s % role % u' ' % name % u" among\n"_s % outline()).toStdString());
    }
    return *found;
}

bool PreferencesDesk::isShown(const QString& role, const QString& name) const {
    return find(role, name).has_value();
}

bool PreferencesDesk::isChecked(const Accessible& object) const {
    return client->has(object, AccessibleState::checked);
}

void PreferencesDesk::showTab(const QString& label) const {
    const auto tab = segment(label);
    if (!client->perform(tab, u"Toggle"_s) || !client->await([&] { return isChecked(tab); })) {
        throw std::runtime_error("the tab " + label.toStdString() + " does not open");
    }
}

std::optional<Accessible> PreferencesDesk::focusedObject() const {
    for (const auto& each : client->children(AccessibleClient::desktop())) {
        for (const auto& object : client->shownBelow(each)) {
            if (client->has(object, AccessibleState::focused)) {
                return object;
            }
        }
    }
    return std::nullopt;
}

QString PreferencesDesk::focused() const {
    const auto object = focusedObject();
    return object ? client->name(*object) : QString();
}

QString PreferencesDesk::stored(const QString& key) const {
    QFile file(desktop.configuration() % u"/orvantile/orvantile.ini");
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    for (const auto& line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        if (line.startsWith(key + u'=')) {
            return line.sliced(key.size() + 1);
        }
    }
    return {};
}

bool PreferencesDesk::awaitStored(const QString& key, const QString& value) const {
    return client->await([&] { return stored(key) == value; });
}

QImage PreferencesDesk::picture(const QRect& part) const {
    return takeScreenshot(desktop.display(), part.isNull() ? window().frame : part);
}

QString PreferencesDesk::outline() const {
    QString lines;
    for (const auto& program : client->children(AccessibleClient::desktop())) {
        for (const auto& object : client->shownBelow(program)) {
            lines += client->role(object) % u" \""_s % client->name(object) % u'"';
            if (const auto words = client->description(object); !words.isEmpty()) {
                lines += u" ("_s % words % u')';
            }
            if (const auto value = client->value(object)) {
                lines += u' ' % QString::number(value->current);
            }
            if (const auto actions = client->actions(object); !actions.isEmpty()) {
                lines += u" ["_s % actions.join(u',') % u']';
            }
            lines += u'\n';
        }
    }
    return lines;
}

} // namespace orvantile::test
