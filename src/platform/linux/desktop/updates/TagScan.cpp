#include "platform/linux/desktop/updates/TagScan.h"

namespace orvantile::platform::desktop {
namespace {

/// Behind the next `end` from `position` on, or at the end of the text.
qsizetype behind(QByteArrayView xml, QByteArrayView end, qsizetype position) {
    const auto found = xml.indexOf(end, position);
    return found < 0 ? xml.size() : found + end.size();
}

} // namespace

bool hasOrdinaryTags(QByteArrayView xml, int mostAttributes) {
    if (xml.contains('\0')) {
        return false; // of an encoding in which tags cannot be found like this
    }
    for (auto position = xml.indexOf('<'); position >= 0; position = xml.indexOf('<', position)) {
        const auto rest = xml.sliced(position);
        if (rest.startsWith("<!--")) {
            position = behind(xml, "-->", position + 4);
            continue;
        }
        if (rest.startsWith("<![CDATA[")) {
            position = behind(xml, "]]>", position + 9);
            continue;
        }
        int attributes = 0;
        while (position < xml.size() && xml[position] != '>') {
            const auto character = xml[position];
            const auto isQuote = character == '"' || character == '\'';
            if (isQuote && ++attributes > mostAttributes) {
                return false;
            }
            position = isQuote ? behind(xml, QByteArrayView(&character, 1), position + 1) : position + 1;
        }
    }
    return true;
}

} // namespace orvantile::platform::desktop
