#include "platform/linux/desktop/IniDocument.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::desktop {
namespace {

constexpr auto byteOrderMark = "\xEF\xBB\xBF";

/// The name in `[name]`, or absent.
std::optional<QByteArray> sectionName(const QByteArray& line) {
    auto trimmed = line.trimmed();
    if (trimmed.startsWith(byteOrderMark)) {
        trimmed.remove(0, 3);
    }
    if (!trimmed.startsWith('[') || !trimmed.endsWith(']')) {
        return std::nullopt;
    }
    return trimmed.sliced(1, trimmed.size() - 2).trimmed();
}

} // namespace

IniDocument::IniDocument(const QByteArray& bytes, QByteArray section_) : section(std::move(section_)) {
    for (qsizetype start = 0; start < bytes.size();) {
        const auto newline = bytes.indexOf('\n', start);
        const auto end = newline < 0 ? bytes.size() : newline + 1;
        auto line = bytes.sliced(start, end - start);
        if (line.contains('\0')) {
            damaged = true;
        } else {
            lines.append(std::move(line));
        }
        start = end;
    }
}

std::optional<IniDocument::Assignment> IniDocument::assignment(const QByteArray& line) {
    const auto equals = line.indexOf('=');
    const auto key = line.first(std::max<qsizetype>(equals, 0)).trimmed();
    if (key.isEmpty() || key.startsWith('#') || key.startsWith(';') || key.startsWith('[')) {
        return std::nullopt;
    }
    const auto isBlank = [&](qsizetype index) {
        const char character = line[index];
        return character == ' ' || character == '\t' || character == '\r' || character == '\n';
    };
    auto start = equals + 1;
    while (start < line.size() && (line[start] == ' ' || line[start] == '\t')) {
        ++start;
    }
    auto end = line.size();
    while (end > start && isBlank(end - 1)) {
        --end;
    }
    return Assignment{key, start, end};
}

template <typename Visitor>
void IniDocument::forEachOwnLine(Visitor visit) const {
    bool own = false;
    for (qsizetype index = 0; index < lines.size(); ++index) {
        if (const auto name = sectionName(lines[index])) {
            own = *name == section;
        }
        if (own) {
            visit(index);
        }
    }
}

std::map<QByteArray, QByteArray> IniDocument::values() const {
    std::map<QByteArray, QByteArray> result;
    forEachOwnLine([&](qsizetype index) {
        if (const auto found = assignment(lines[index])) {
            result[found->key] = lines[index].sliced(found->start, found->end - found->start);
        }
    });
    return result;
}

void IniDocument::set(const QByteArray& key, const QByteArray& text) {
    std::optional<qsizetype> last;
    forEachOwnLine([&](qsizetype index) {
        const auto found = assignment(lines[index]);
        if (found && found->key == key) {
            last = index;
        }
    });
    if (!last) {
        append(key, text);
        return;
    }
    auto& line = lines[*last];
    const auto found = assignment(line);
    line.replace(found->start, found->end - found->start, text);
}

void IniDocument::append(const QByteArray& key, const QByteArray& text) {
    const auto newline = lineEnd();
    if (!lines.isEmpty() && !lines.last().endsWith('\n')) {
        lines.last().append(newline);
    }
    std::optional<qsizetype> last; // of our section, blank lines aside
    forEachOwnLine([&](qsizetype index) {
        if (!lines[index].trimmed().isEmpty()) {
            last = index;
        }
    });
    if (!last) {
        if (!lines.isEmpty() && !lines.last().trimmed().isEmpty()) {
            lines.append(newline);
        }
        lines.append('[' + section + ']' + newline);
        last = lines.size() - 1;
    }
    lines.insert(*last + 1, key + '=' + text + newline);
}

QByteArray IniDocument::lineEnd() const {
    return !lines.isEmpty() && lines.first().endsWith("\r\n") ? QByteArray("\r\n") : QByteArray("\n");
}

QByteArray IniDocument::bytes() const {
    return lines.join();
}

} // namespace orvantile::platform::desktop
