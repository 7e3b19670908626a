#pragma once

#include "desktop/preferences/AccessibleClient.h"

#include <QString>
#include <optional>

namespace orvantile::test {

/// The controls of the preferences as a screen reader finds and operates them.
class PreferencesControls {
public:
    PreferencesControls() = default;
    PreferencesControls(const PreferencesControls&) = delete;
    PreferencesControls& operator=(const PreferencesControls&) = delete;
    virtual ~PreferencesControls() = default;

    [[nodiscard]] virtual const AccessibleClient& reader() const = 0;

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

    [[nodiscard]] bool await(const std::function<bool()>& condition) const {
        return reader().await(condition);
    }

    /// What a screen reader finds, one object a line.
    [[nodiscard]] QString outline() const;

    static const QString checkBox;
    static const QString radioButton;
    static const QString pushButton;
    static const QString sliderRole;
    static const QString comboBox;

private:
    [[nodiscard]] std::optional<Accessible> find(const QString& role, const QString& name) const;
};

} // namespace orvantile::test
