#include "platform/linux/desktop/updates/AvailableUpdate.h"

#include "platform/linux/desktop/updates/Appcast.h"
#include "platform/linux/desktop/updates/PackageSignature.h"

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

namespace {

struct Candidate {
    const AppcastItem* item;
    Version version;
};

bool isForLinux(const AppcastItem& item) {
    return !item.enclosure || item.enclosure->operatingSystem.isEmpty() ||
           item.enclosure->operatingSystem.compare(u"linux", Qt::CaseInsensitive) == 0;
}

/// A minimum that is no version, or a system without a release number, cannot be compared and excludes
/// nothing.
bool systemSuffices(const AppcastItem& item, const std::optional<Version>& system) {
    const auto minimum = Version::parse(item.minimumSystem);
    return !minimum || !system || *system >= *minimum;
}

void keepNewest(std::optional<Candidate>& newest, Candidate candidate) {
    if (!newest || candidate.version > newest->version) {
        newest = std::move(candidate);
    }
}

CheckResult offer(const AppcastItem& item, const UpdatePolicy& policy) {
    const auto& enclosure = item.enclosure;
    if (!enclosure || enclosure->length <= 0 || enclosure->signature.size() != PublicKey::signatureLength) {
        return UpdateFailure::unreadable;
    }
    if (!policy.permits(enclosure->url)) {
        return UpdateFailure::forbiddenAddress;
    }
    if (enclosure->length > policy.package.bytes) {
        return UpdateFailure::tooLarge;
    }
    const auto hasPage = item.notesPage.isValid() && item.notesPage.scheme() == u"https"_s;
    return AvailableUpdate{item.displayVersion.left(64),
                           readReleaseNotes(item.notes, item.notesFormat),
                           hasPage ? item.notesPage : QUrl(),
                           enclosure->url,
                           enclosure->length,
                           enclosure->signature};
}

} // namespace

CheckResult chooseUpdate(const QByteArray& feed, const InstalledCopy& copy, const UpdatePolicy& policy) {
    const auto items = readAppcast(feed);
    if (!items) {
        return UpdateFailure::unreadable;
    }
    std::optional<Candidate> newest;
    std::optional<Candidate> newestForOthers;
    for (const auto& item : *items) {
        auto version = Version::parse(item.version);
        if (!version || *version <= copy.version || !item.channel.isEmpty() || !isForLinux(item) ||
            (version->isPreRelease() && !copy.version.isPreRelease())) {
            continue;
        }
        keepNewest(systemSuffices(item, copy.system) ? newest : newestForOthers,
                   {&item, *std::move(version)});
    }
    if (newest) {
        return offer(*newest->item, policy);
    }
    if (newestForOthers) {
        return SystemTooOld{newestForOthers->item->displayVersion.left(64),
                            newestForOthers->item->minimumSystem.left(64)};
    }
    return UpToDate{};
}

} // namespace orvantile::platform::desktop
