#pragma once

#include <QString>
#include <QVersionNumber>
#include <compare>
#include <optional>

namespace orvantile::platform::desktop {

/// A release's number, such as "1.4", "1.4.0-beta.2", "1.4~rc1" or "1.4.2+debian". What follows "+" names a
/// build and does not count; any other ending makes a pre-release, which comes before its release.
class Version {
public:
    /// Nothing when `text` is longer than 64 characters, does not begin with a number or has an ending made
    /// of other than ASCII letters, digits, ".", "-" and "~".
    [[nodiscard]] static std::optional<Version> parse(QStringView text);

    [[nodiscard]] bool isPreRelease() const { return !ending.isEmpty(); }

    /// "1.4" equals "1.4.0". Endings are compared run by run, digits by their value.
    friend std::weak_ordering operator<=>(const Version& left, const Version& right);

    friend bool operator==(const Version& left, const Version& right) { return (left <=> right) == 0; }

private:
    Version(QVersionNumber number_, QString ending_);

    QVersionNumber number;
    QString ending;
};

} // namespace orvantile::platform::desktop
