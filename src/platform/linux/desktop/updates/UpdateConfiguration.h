#pragma once

#include "platform/linux/desktop/updates/PackageSignature.h"

#include <QUrl>
#include <optional>
#include <variant>

namespace orvantile::platform::desktop {

struct UpdatePolicy;

/// Where an installation's updates come from. Who packages the program decides; a package of a distribution
/// has no such file, since its updates come with the system's.
///
///     [Updates]
///     Feed=https://example.org/appcast.xml
///     PublicKey=<base64 of the 32 bytes of an Ed25519 public key>
struct UpdateConfiguration {
    QUrl feed;
    PublicKey key;

    struct Absent {};

    struct Broken {};

    using Result = std::variant<UpdateConfiguration, Absent, Broken>;

    /// Reads `path`. Broken: unreadable, a feed that `policy` does not permit, or no proper key.
    [[nodiscard]] static Result read(const QString& path, const UpdatePolicy& policy);
};

} // namespace orvantile::platform::desktop
