#include "platform/linux/helper/switch/HelperVariables.h"

namespace orvantile::platform::helper {
namespace {

constexpr QByteArrayView pluginName = "orvantile";

QList<QByteArray> split(const QByteArray& text, char separator) {
    return text.isEmpty() ? QList<QByteArray>() : text.split(separator);
}

QByteArray withEach(const QByteArray& text, char separator, const QList<QByteArray>& added) {
    auto parts = split(text, separator);
    for (const auto& part : added) {
        if (!parts.contains(part)) {
            parts.append(part);
        }
    }
    return parts.join(separator);
}

QByteArray withoutEach(const QByteArray& text, char separator, const QList<QByteArray>& removed) {
    auto parts = split(text, separator);
    parts.removeIf([&](const QByteArray& part) { return removed.contains(part); });
    return parts.join(separator);
}

} // namespace

HelperVariables HelperVariables::ofProcess() {
    return {qgetenv(pluginPathName), qgetenv(pluginsName)};
}

bool HelperVariables::haveHelper() const {
    return split(plugins, ',').contains(pluginName);
}

HelperVariables HelperVariables::with(const QList<QByteArray>& folders) const {
    return {withEach(pluginPath, ':', folders), withEach(plugins, ',', {pluginName.toByteArray()})};
}

HelperVariables HelperVariables::without(const QList<QByteArray>& folders) const {
    return {withoutEach(pluginPath, ':', folders), withoutEach(plugins, ',', {pluginName.toByteArray()})};
}

} // namespace orvantile::platform::helper
