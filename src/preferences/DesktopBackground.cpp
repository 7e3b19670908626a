#include "preferences/DesktopBackground.h"

#include "resources/resource_bundle_accessor.h"

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

std::optional<QImage> load(const QString& path) {
    QImage image(path);
    return image.isNull() ? std::nullopt : std::optional(std::move(image));
}

} // namespace

QString DesktopBackground::name() const {
    return darkCapsule ? u"PreviewDark"_s : u"PreviewLight"_s;
}

std::optional<QImage> DesktopBackground::picture() const {
    if (auto own = load(u"images:"_s + name() + u".png"_s)) {
        return own;
    }
    return bundledImage(name());
}

std::optional<QImage> DesktopBackground::bundledImage(const QString& name) {
    const auto path = ResourceBundle::module().path(name, u"png"_s);
    return path ? load(*path) : std::nullopt;
}

} // namespace orvantile
