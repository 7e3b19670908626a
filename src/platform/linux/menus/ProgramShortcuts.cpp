#include "platform/linux/menus/ProgramShortcuts.h"

#include "platform/linux/menus/ResourceBundle.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <libintl.h>
#include <string_view>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr std::size_t mostFiles = 1'000;
constexpr qint64 largestMap = 4LL << 20U;

bool mayCarryResources(std::string_view file) {
    return file.ends_with(".gresource") || file.ends_with(".so") ||
           file.find(".so.") != std::string_view::npos;
}

bool describesShortcuts(std::string_view path) {
    return path.ends_with(".ui") && (path.find("help-overlay") != std::string_view::npos ||
                                     path.find("shortcuts") != std::string_view::npos);
}

/// The program's own catalogue bears its name where the description names none.
QString translated(const QByteArray& domain, const QByteArray& context, const QByteArray& text) {
    if (text.isEmpty() || domain.isEmpty()) {
        return QString::fromUtf8(text);
    }
    if (!context.isEmpty()) {
        const QByteArray key = context + '\4' + text;
        const QByteArray shown = dgettext(domain.constData(), key.constData());
        if (shown != key) {
            return QString::fromUtf8(shown);
        }
    }
    return QString::fromUtf8(dgettext(domain.constData(), text.constData()));
}

} // namespace

std::vector<std::string> mappedFiles(std::string_view map, const std::string& program) {
    std::vector<std::string> files;
    if (!program.empty()) {
        files.push_back(program);
    }
    while (!map.empty() && files.size() < mostFiles) {
        const auto line = map.substr(0, map.find('\n'));
        map.remove_prefix(std::min(line.size() + 1, map.size()));
        const auto start = line.find('/');
        const auto file = start == std::string_view::npos ? std::string_view() : line.substr(start);
        // The parts of a file are mapped one behind the other.
        if (mayCarryResources(file) && (files.empty() || files.back() != file)) {
            files.emplace_back(file);
        }
    }
    return files;
}

std::vector<DescribedShortcut> shortcutsOfProcess(std::int32_t processIdentifier) {
    const QString process = u"/proc/"_s + QString::number(processIdentifier);
    const auto program = QFileInfo(process + u"/exe"_s).symLinkTarget();
    QFile map(process + u"/maps"_s);
    std::vector<DescribedShortcut> found;
    if (program.isEmpty() || !map.open(QIODevice::ReadOnly)) {
        return found;
    }
    const auto text = map.read(largestMap).toStdString();
    const auto ownDomain = QFileInfo(program).fileName().toUtf8();
    const Translate translate = [&](const QByteArray& domain, const QByteArray& context,
                                    const QByteArray& each) {
        return translated(domain.isEmpty() ? ownDomain : domain, context, each);
    };
    for (const auto& file : mappedFiles(text, program.toStdString())) {
        for (const auto& bundle : bundlesOf(file)) {
            for (const auto& description : bundle.files(describesShortcuts)) {
                const auto lines = describedShortcuts(description, translate);
                found.insert(found.end(), lines.begin(), lines.end());
            }
        }
    }
    return found;
}

} // namespace orvantile::platform::menus
