#pragma once

#include <QByteArrayView>

namespace orvantile::platform::desktop {

/// Whether every tag of `xml` has at most `mostAttributes` attributes and no byte is zero. The toolkit's
/// reader compares each attribute of a tag with all the others, so a tag with a hundred thousand of them
/// would keep it busy for half a minute. Takes linear time and says nothing else about the text. Any thread.
[[nodiscard]] bool hasOrdinaryTags(QByteArrayView xml, int mostAttributes);

} // namespace orvantile::platform::desktop
