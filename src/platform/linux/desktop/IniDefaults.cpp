#include "platform/linux/desktop/IniDefaults.h"

#include "platform/linux/desktop/AtomicFile.h"
#include "platform/linux/desktop/DefaultsText.h"
#include "platform/linux/desktop/IniFile.h"
#include "platform/linux/desktop/WorkerThread.h"

#include <QDir>
#include <QFile>
#include <QUrl>
#include <chrono>
#include <memory>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

/// How long assignments pause before the file is forced to the medium.
constexpr std::chrono::milliseconds quiet{500};

/// Keys as they stand in the file: what a line could not hold is percent-encoded.
QByteArray encoded(const QString& key) {
    return QUrl::toPercentEncoding(key);
}

/// Fills `stored` from the file and returns what writes to it.
AssignmentWriter::Store openFile(const std::filesystem::path& path,
                                 std::map<QString, DefaultsValue>& stored) {
    const auto file = std::make_shared<IniFile>(path);
    for (const auto& [key, text] : file->load()) {
        stored[QUrl::fromPercentEncoding(key)] = valueOf(text);
    }
    return [path, file, syncing = std::make_shared<WorkerThread>()](const Changes& changes) {
        auto replacement = file->store(changes);
        if (!replacement) {
            return false;
        }
        syncing->schedule([path, latest = std::make_shared<FileDescriptor>(
                                     std::move(*replacement))] { AtomicFile(path).sync(*latest); },
                          quiet);
        return true;
    };
}

} // namespace

IniDefaults::IniDefaults(const std::filesystem::path& file) : writer(openFile(file, stored)) {}

std::filesystem::path IniDefaults::configurationFolder() {
    auto folder = qEnvironmentVariable("XDG_CONFIG_HOME");
    if (!QDir::isAbsolutePath(folder)) {
        folder = QDir::homePath() + QStringLiteral("/.config");
    }
    return QFile::encodeName(folder).toStdString();
}

std::filesystem::path IniDefaults::userFile() {
    return configurationFolder() / "orvantile" / "orvantile.ini";
}

void IniDefaults::registerDefaults(const std::vector<std::pair<QString, DefaultsValue>>& values) {
    for (const auto& [key, value] : values) {
        registered[key] = value;
    }
}

template <typename Value>
std::optional<Value> IniDefaults::find(const QString& key) const {
    for (const auto* domain : {&stored, &registered}) {
        if (const auto found = domain->find(key); found != domain->end()) {
            const auto* value = std::get_if<Value>(&found->second);
            return value != nullptr ? std::optional(*value) : std::nullopt;
        }
    }
    return std::nullopt;
}

bool IniDefaults::boolForKey(const QString& key) const {
    return find<bool>(key).value_or(false);
}

double IniDefaults::doubleForKey(const QString& key) const {
    return find<double>(key).value_or(0.0);
}

std::optional<QString> IniDefaults::stringForKey(const QString& key) const {
    return find<QString>(key);
}

void IniDefaults::set(const QString& key, const DefaultsValue& value) {
    stored[key] = value;
    writer.write(encoded(key), textOf(value));
}

} // namespace orvantile::platform::desktop
