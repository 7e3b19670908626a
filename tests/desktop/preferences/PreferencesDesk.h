#pragma once

#include "desktop/preferences/AccessibleClient.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/WindowWatcher.h"

#include <QImage>
#include <QString>
#include <memory>
#include <optional>

namespace orvantile::test {

/// A private desktop on which the program shows its preferences, operated by hand and as by a screen reader.
class PreferencesDesk {
public:
    /// `settings` is what the settings file holds when the program starts.
    explicit PreferencesDesk(const QByteArray& settings = {}, SessionOptions options = {});

    [[nodiscard]] PrivateSession& session() { return desktop; }

    [[nodiscard]] KeyInjector& hands() { return injector; }

    [[nodiscard]] WindowWatcher& windows() { return watcher; }

    [[nodiscard]] const AccessibleClient& reader() const { return *client; }

    [[nodiscard]] ChildProcess& program() { return *process; }

    /// Starts the program and waits for its window, on the screen and on the accessibility bus.
    void start();

    /// The window of the preferences as it is now.
    [[nodiscard]] Window window() const;

    /// Waits for a control on the screen. Throws std::runtime_error, with what there is instead.
    [[nodiscard]] Accessible control(const QString& role, const QString& name) const;

    [[nodiscard]] Accessible switchNamed(const QString& name) const { return control(checkBox, name); }

    [[nodiscard]] Accessible slider(const QString& name) const { return control(sliderRole, name); }

    [[nodiscard]] Accessible segment(const QString& name) const { return control(radioButton, name); }

    [[nodiscard]] Accessible button(const QString& name) const { return control(pushButton, name); }

    [[nodiscard]] bool isShown(const QString& role, const QString& name) const;
    [[nodiscard]] bool isChecked(const Accessible& object) const;

    /// Shows a tab, as a screen reader would, and waits for it.
    void showTab(const QString& label) const;

    /// The control that the keyboard speaks to, and its name.
    [[nodiscard]] std::optional<Accessible> focusedObject() const;
    [[nodiscard]] QString focused() const;

    /// What the settings file says of a key; empty when nothing.
    [[nodiscard]] QString stored(const QString& key) const;

    [[nodiscard]] bool awaitStored(const QString& key, const QString& value) const;

    [[nodiscard]] bool await(const std::function<bool()>& condition) const {
        return client->await(condition);
    }

    /// The window's pixels, or those of a part of the screen.
    [[nodiscard]] QImage picture(const QRect& part = {}) const;

    /// What a screen reader finds in the window, one object a line.
    [[nodiscard]] QString outline() const;

    static const QString checkBox;
    static const QString radioButton;
    static const QString pushButton;
    static const QString sliderRole;
    static const QString comboBox;

private:
    [[nodiscard]] std::optional<Accessible> find(const QString& role, const QString& name) const;

    PrivateSession desktop;
    KeyInjector injector;
    WindowWatcher watcher;
    std::unique_ptr<AccessibleClient> client;
    std::unique_ptr<ChildProcess> process;
};

} // namespace orvantile::test
