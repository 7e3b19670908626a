#pragma once

#include <QString>

namespace orvantile::platform::desktop {

/// Why a check or a download came to nothing.
enum class UpdateFailure {
    misconfigured,     ///< the installation's update settings cannot be used
    unreachable,       ///< no connection to the server
    connectionLost,    ///< the connection ended before everything had arrived
    timedOut,          ///< no answer, or one too slow
    notSecure,         ///< no valid encrypted connection
    forbiddenAddress,  ///< an address, or a redirection to one, that is not encrypted
    refused,           ///< the server answered with something other than the file
    tooLarge,          ///< more than the largest size accepted
    unreadable,        ///< not a list of updates, or an incomplete one
    wrongLength,       ///< a package of another length than announced
    wrongSignature,    ///< a package that its maker has not signed
    storageFull,       ///< no space for the package
    storageUnwritable, ///< the folder for downloads takes no file
};

/// What happened and what can be done, in one or two plain sentences for the user.
[[nodiscard]] QString describe(UpdateFailure failure);

} // namespace orvantile::platform::desktop
