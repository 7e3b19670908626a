#include "platform/linux/desktop/updates/UpdateFailure.h"

namespace orvantile::platform::desktop {

using Qt::StringLiterals::operator""_s;

QString describe(UpdateFailure failure) {
    switch (failure) {
    case UpdateFailure::misconfigured:
        return u"This copy of Orvantile does not say properly where its updates come from. Installing it "
               u"again "
               u"may help."_s;
    case UpdateFailure::unreachable:
        return u"The update server could not be reached. Check your internet connection and try again."_s;
    case UpdateFailure::connectionLost:
        return u"The connection was lost before everything had arrived. Please try again."_s;
    case UpdateFailure::timedOut:
        return u"The update server took too long to answer. Please try again later."_s;
    case UpdateFailure::notSecure:
        return u"No secure connection to the update server could be made, so nothing was downloaded."_s;
    case UpdateFailure::forbiddenAddress:
        return u"The update server pointed to an address that is not secure, so nothing was downloaded."_s;
    case UpdateFailure::refused:
        return u"The update server did not have what was asked for. Please try again later."_s;
    case UpdateFailure::tooLarge:
        return u"The update server sent more than an update can be, so it was stopped."_s;
    case UpdateFailure::unreadable:
        return u"The update server’s answer could not be understood. Please try again later."_s;
    case UpdateFailure::wrongLength:
        return u"The download was not as long as announced, so it was discarded. Please try again."_s;
    case UpdateFailure::wrongSignature:
        return u"The download does not carry the signature of Orvantile’s makers, so it was discarded. Do "
               u"not "
               u"install it from elsewhere."_s;
    case UpdateFailure::storageFull:
        return u"There is not enough free space in your Downloads folder."_s;
    case UpdateFailure::storageUnwritable:
        return u"The update could not be saved in your Downloads folder."_s;
    }
    return {};
}

} // namespace orvantile::platform::desktop
