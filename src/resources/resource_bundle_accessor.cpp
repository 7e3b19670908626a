#include "resources/resource_bundle_accessor.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <dlfcn.h>
#include <utility>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

const QString bundleName = u"Orvantile_Orvantile.bundle"_s;

/// The directory of the executable or library that holds this very code.
QString codeDirectory() {
    static const int marker = 0;
    Dl_info info{};
    if (dladdr(&marker, &info) == 0 || info.dli_fname == nullptr) {
        return {};
    }
    return QFileInfo(QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath()).absolutePath();
}

/// An installation has its programs and its resources in two directories of which one leads to the other.
QString resourcesFrom(const QString& programs) {
    return QDir::cleanPath(programs + u'/' + QStringLiteral(ORVANTILE_RESOURCES_FROM_PROGRAMS));
}

} // namespace

ResourceBundle::ResourceBundle(QString directory_) : directory(std::move(directory_)) {}

const ResourceBundle& ResourceBundle::module() {
    static const auto bundle = require(candidates());
    return bundle;
}

QStringList ResourceBundle::candidates() {
    const auto programs = QCoreApplication::applicationDirPath();
    QStringList places{resourcesFrom(programs)};
    if (const auto code = codeDirectory(); !code.isEmpty()) {
        places.append(resourcesFrom(code));
    }
    places.append(QDir::cleanPath(programs + u'/' + QStringLiteral(ORVANTILE_BESIDE_FROM_PROGRAMS)));
    for (auto& place : places) {
        place += u'/' + bundleName;
    }
    return places;
}

ResourceBundle ResourceBundle::require(const QStringList& directories) {
    for (const auto& directory : directories) {
        if (auto bundle = open(directory)) {
            return *bundle;
        }
    }
    qFatal("unable to find bundle named Orvantile_Orvantile");
}

std::optional<ResourceBundle> ResourceBundle::open(const QString& directory) {
    const QFileInfo info(directory);
    if (!info.isDir() || !info.isReadable()) {
        return std::nullopt;
    }
    return ResourceBundle(info.absoluteFilePath());
}

std::optional<QString> ResourceBundle::path(const QString& name, const QString& extension) const {
    const QFileInfo file(directory + u'/' + name + u'.' + extension);
    return file.isFile() ? std::optional(file.absoluteFilePath()) : std::nullopt;
}

} // namespace orvantile
