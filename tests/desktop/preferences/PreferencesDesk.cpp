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

} // namespace orvantile::test
