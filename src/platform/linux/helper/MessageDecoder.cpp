#include "platform/linux/helper/MessageDecoder.h"

#include "helper/qt/HelperMessage.h"
#include "platform/linux/helper/ActionText.h"
#include "platform/linux/helper/QtKeys.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace orvantile::platform::helper {
namespace {

using orvantile::helper::longestText;
using orvantile::helper::MessageHeader;

/// The keys of the shortcut, or none when there is one among them that cannot be shown.
std::vector<keys::Accelerator> decodeKeys(const MessageHeader& header) {
    std::vector<keys::Accelerator> decoded;
    for (std::size_t index = 0; index < header.keyCount; ++index) {
        const auto key = acceleratorOf(header.keys[index]);
        if (!key) {
            return {};
        }
        decoded.push_back(*key);
    }
    return decoded;
}

} // namespace

std::optional<HelperReport> decodeMessage(QByteArrayView bytes) {
    MessageHeader header;
    if (bytes.size() < qsizetype{sizeof(header)} || bytes.size() > qsizetype{sizeof(header) + longestText}) {
        return std::nullopt;
    }
    std::memcpy(&header, bytes.data(), sizeof(header));
    const auto text = bytes.sliced(sizeof(header));
    if (header.mark != MessageHeader::expectedMark || header.keyCount > header.keys.size() ||
        header.enabled > 1) {
        return std::nullopt;
    }
    if (header.kind == MessageHeader::menusChanged) {
        if (!text.isEmpty() || header.keyCount != 0) {
            return std::nullopt;
        }
        return HelperReport{.openMenus = header.openMenus};
    }
    if (header.kind != MessageHeader::actionFired) {
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString decoded = decoder(text);
    if (decoder.hasError()) {
        return std::nullopt;
    }
    return HelperReport{.openMenus = header.openMenus,
                        .command = FiredCommand{titleOf(decoded), decodeKeys(header), header.enabled == 1}};
}

} // namespace orvantile::platform::helper
