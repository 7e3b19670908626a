#pragma once

#include <QByteArray>
#include <QList>

namespace orvantile::platform::helper {

/// The two variables by which Qt programs find the helper.
struct HelperVariables {
    static constexpr auto pluginPathName = "QT_PLUGIN_PATH";
    static constexpr auto pluginsName = "QT_QPA_GENERIC_PLUGINS";

    QByteArray pluginPath;
    QByteArray plugins;

    /// Those of this very process.
    [[nodiscard]] static HelperVariables ofProcess();

    /// Whether programs with these variables load the helper.
    [[nodiscard]] bool haveHelper() const;

    /// The same with the helper, whose plugins are in `folders`, behind what is there already.
    [[nodiscard]] HelperVariables with(const QList<QByteArray>& folders) const;

    /// The same without the helper.
    [[nodiscard]] HelperVariables without(const QList<QByteArray>& folders) const;

    friend bool operator==(const HelperVariables&, const HelperVariables&) = default;
};

} // namespace orvantile::platform::helper
