#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <map>
#include <optional>

namespace orvantile::platform::desktop {

/// The text of an INI file of which one section is ours. Whatever it does not understand, other sections,
/// unknown keys, comments, blank lines, line ends and byte sequences that are no text, stays as it is, byte
/// for byte; only lines with a zero byte, which no editor writes, are left out.
class IniDocument {
public:
    IniDocument(const QByteArray& bytes, QByteArray section);

    /// What follows `key=` in our section, for every key. The last of several lines with the same key counts.
    [[nodiscard]] std::map<QByteArray, QByteArray> values() const;

    /// Changes the line of `key`, or adds one to our section, or our section to the end.
    void set(const QByteArray& key, const QByteArray& text);

    [[nodiscard]] QByteArray bytes() const;

    /// Lines were left out.
    [[nodiscard]] bool isDamaged() const { return damaged; }

private:
    /// A line of the form `key=text`.
    struct Assignment {
        QByteArray key;
        qsizetype start = 0; ///< of the text in its line
        qsizetype end = 0;
    };

    [[nodiscard]] static std::optional<Assignment> assignment(const QByteArray& line);
    [[nodiscard]] QByteArray lineEnd() const;
    void append(const QByteArray& key, const QByteArray& text);

    template <typename Visitor>
    void forEachOwnLine(Visitor visit) const;

    QByteArray section;
    QByteArrayList lines; ///< each with its line end
    bool damaged = false;
};

} // namespace orvantile::platform::desktop
