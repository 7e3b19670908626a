#include "platform/linux/desktop/accessibilitysettings/DesktopEntry.h"

#include <map>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// Resolves the escapes that every value of a desktop entry may have.
QString unescaped(const QString& value) {
    static const std::map<QChar, QChar> escapes{
        {u's', u' '}, {u'n', u'\n'}, {u't', u'\t'}, {u'r', u'\r'}, {u'\\', u'\\'}};
    QString result;
    for (qsizetype i = 0; i < value.size(); ++i) {
        const auto escape =
            value[i] == u'\\' && i + 1 < value.size() ? escapes.find(value[i + 1]) : escapes.end();
        result += escape == escapes.end() ? value[i] : escape->second;
        i += escape == escapes.end() ? 0 : 1;
    }
    return result;
}

/// A word of the command before its placeholders are replaced. In quotes there are none.
struct Word {
    QString text;
    bool quoted = false;
};

std::optional<std::vector<Word>> words(const QString& exec) {
    std::vector<Word> found;
    std::optional<Word> word;
    bool inQuotes = false;
    for (qsizetype i = 0; i < exec.size(); ++i) {
        const auto character = exec[i];
        if (!inQuotes && (character == u' ' || character == u'\t')) {
            if (word) {
                found.push_back(*word);
                word.reset();
            }
            continue;
        }
        if (!word) {
            word.emplace();
        }
        if (character == u'"') {
            inQuotes = !inQuotes;
            word->quoted = true;
        } else if (inQuotes && character == u'\\' && i + 1 < exec.size()) {
            word->text += exec[++i];
        } else {
            word->text += character;
        }
    }
    if (word) {
        found.push_back(*word);
    }
    return inQuotes ? std::nullopt : std::optional(std::move(found));
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::parse(const QByteArray& text) {
    std::map<QString, QString> values;
    bool inGroup = false;
    for (const auto& raw : QString::fromUtf8(text).split(u'\n')) {
        const auto line = raw.trimmed();
        if (line.startsWith(u'[')) {
            inGroup = line == u"[Desktop Entry]";
        } else if (const auto equals = line.indexOf(u'='); inGroup && !line.startsWith(u'#') && equals > 0) {
            values.try_emplace(line.left(equals).trimmed(), unescaped(line.mid(equals + 1).trimmed()));
        }
    }
    if (values[u"Type"_s] != u"Application") {
        return std::nullopt;
    }
    return DesktopEntry{.name = values[u"Name"_s],
                        .icon = values[u"Icon"_s],
                        .exec = values[u"Exec"_s],
                        .tryExec = values[u"TryExec"_s],
                        .directory = values[u"Path"_s],
                        .hidden = values[u"Hidden"_s] == u"true",
                        .terminal = values[u"Terminal"_s] == u"true"};
}

QStringList DesktopEntry::command(const QString& path) const {
    QStringList result;
    const auto parts = words(exec);
    if (!parts) {
        return result;
    }
    for (const auto& word : *parts) {
        if (word.quoted) {
            result += word.text;
            continue;
        }
        if (word.text == u"%i") {
            result += icon.isEmpty() ? QStringList() : QStringList{u"--icon"_s, icon};
            continue;
        }
        QString expanded;
        for (qsizetype i = 0; i < word.text.size(); ++i) {
            if (word.text[i] != u'%') {
                expanded += word.text[i];
                continue;
            }
            const auto code = ++i < word.text.size() ? word.text[i] : QChar();
            expanded += code == u'%' ? u"%"_s : code == u'c' ? name : code == u'k' ? path : QString();
        }
        if (!expanded.isEmpty()) {
            result += expanded;
        }
    }
    return result;
}

} // namespace orvantile::platform::desktop
