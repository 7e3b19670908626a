#include "platform/macos/support/CfText.h"

namespace orvantile::platform::macos {

CfHandle<CFStringRef> toCfString(QStringView text) {
    return CfHandle<CFStringRef>::adopt(CFStringCreateWithCharacters(
        kCFAllocatorDefault, reinterpret_cast<const UniChar*>(text.utf16()), text.size()));
}

QString toQString(CFStringRef text) {
    if (text == nullptr) {
        return {};
    }
    const CFIndex length = CFStringGetLength(text);
    QString result(length, Qt::Uninitialized);
    CFStringGetCharacters(text, CFRange{0, length}, reinterpret_cast<UniChar*>(result.data()));
    return result;
}

} // namespace orvantile::platform::macos
