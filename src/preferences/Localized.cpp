#include "preferences/Localized.h"

#include <QCoreApplication>

namespace orvantile {

QString localized(const char* text) {
    return QCoreApplication::translate("Preferences", text);
}

QString localized(const QString& text) {
    return localized(text.toUtf8().constData());
}

} // namespace orvantile
