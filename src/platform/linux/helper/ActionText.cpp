#include "platform/linux/helper/ActionText.h"

namespace orvantile::platform::helper {
namespace {

/// "(&X)", as scripts without room for a mark in the text append it.
bool startsWithAppendedMnemonic(QStringView text) {
    return text.size() >= 4 && text[0] == u'(' && text[1] == u'&' && text[2] != u'&' && text[3] == u')';
}

} // namespace

QString titleOf(QStringView actionText) {
    const auto shown = actionText.first(std::max<qsizetype>(
        actionText.indexOf(u'\t') < 0 ? actionText.size() : actionText.indexOf(u'\t'), 0));
    QString title;
    title.reserve(shown.size());
    for (qsizetype index = 0; index < shown.size(); ++index) {
        if (startsWithAppendedMnemonic(shown.sliced(index))) {
            index += 3;
        } else if (shown[index] != u'&') {
            title.append(shown[index]);
        } else if (index + 1 < shown.size()) {
            title.append(shown[++index]); // what is marked, or the second of two
        }
    }
    return title.simplified();
}

} // namespace orvantile::platform::helper
