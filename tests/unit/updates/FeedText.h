#pragma once

#include <QByteArray>
#include <QString>

namespace orvantile::test {

/// One item of a feed, with the usual values.
struct FeedItem {
    QByteArray version = "2.0";
    QByteArray displayVersion{};
    QByteArray minimumSystem{};
    QByteArray channel{};
    QByteArray description = "<h2>New</h2><ul><li>One</li></ul>";
    QByteArray notesPage{};
    QByteArray url = "https://example.org/orvantile_2.0_amd64.deb";
    QByteArray length = "1000";
    QByteArray signature = QByteArray(64, 's').toBase64();
    QByteArray operatingSystem{};
    bool hasEnclosure = true;
};

[[nodiscard]] QByteArray itemText(const FeedItem& item);

/// A feed around `items`.
[[nodiscard]] QByteArray feedText(const QByteArray& items);

} // namespace orvantile::test
