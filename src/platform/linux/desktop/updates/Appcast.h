#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <optional>
#include <vector>

namespace orvantile::platform::desktop {

enum class NotesFormat { html, plain, markdown };

/// The package of an appcast item, as the feed states it; nothing here has been checked.
struct AppcastEnclosure {
    QUrl url;
    qint64 length = -1;      ///< bytes; -1 when missing or no number
    QByteArray signature;    ///< decoded; empty when missing or no base64
    QString operatingSystem; ///< empty: any
};

/// One release of an appcast.
struct AppcastItem {
    QString version;        ///< what is compared
    QString displayVersion; ///< what the user sees; the same as `version` when the feed has no other
    QString minimumSystem;  ///< empty: any
    QString channel;        ///< empty: for everyone
    QString notes;
    NotesFormat notesFormat = NotesFormat::html;
    QUrl notesPage; ///< further notes on the web; empty when there are none
    std::optional<AppcastEnclosure> enclosure;
};

/// The releases of an RSS 2.0 feed in the order of the feed, with the elements and attributes of the
/// namespace "http://www.andymatuschak.org/xml-namespaces/sparkle". Items without a version are left out.
/// Nothing when `feed` is not well-formed, is no RSS 2.0 or has a document type declaration (a
/// feed needs no entities of its own) or a tag with more than 64 attributes. Any thread.
[[nodiscard]] std::optional<std::vector<AppcastItem>> readAppcast(const QByteArray& feed);

} // namespace orvantile::platform::desktop
