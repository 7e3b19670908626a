#pragma once

#include "desktop/preferences/PreferencesControls.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <QImage>
#include <QString>
#include <memory>

namespace orvantile::test {

/// A private desktop on which the program shows its preferences, operated by hand and as by a screen reader.
class PreferencesDesk final : public PreferencesControls {
public:
    /// `settings` is what the settings file holds when the program starts.
    explicit PreferencesDesk(const QByteArray& settings = {}, SessionOptions options = {});

    [[nodiscard]] PrivateSession& session() { return desktop; }

    [[nodiscard]] KeyInjector& hands() { return injector; }

    [[nodiscard]] WindowWatcher& windows() { return watcher; }

    [[nodiscard]] const AccessibleClient& reader() const override { return *client; }

    [[nodiscard]] ChildProcess& program() { return *process; }

    /// Starts the program and waits for its window, on the screen and on the accessibility bus.
    void start();

    /// The window of the preferences as it is now.
    [[nodiscard]] Window window() const;

    /// What the settings file says of a key; empty when nothing.
    [[nodiscard]] QString stored(const QString& key) const;

    [[nodiscard]] bool awaitStored(const QString& key, const QString& value) const;

    /// The window's pixels, or those of a part of the screen.
    [[nodiscard]] QImage picture(const QRect& part = {}) const;

private:
    PrivateSession desktop;
    KeyInjector injector;
    WindowWatcher watcher;
    std::unique_ptr<AccessibleClient> client;
    std::unique_ptr<ChildProcess> process;
};

} // namespace orvantile::test
