#include "desktop/helper/HelperStage.h"

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

QString helperFolder(int version) {
    return u"%1/qt%2"_s.arg(QStringLiteral(ORVANTILE_HELPERS)).arg(version);
}

Application menuApplication(int version) {
    return {u"%1%2"_s.arg(QStringLiteral(ORVANTILE_MENU_APPLICATION)).arg(version),
            {},
            u"qtmenuapp%1"_s.arg(version),
            u"Ctrl+Shift+F12"_s,
            u"⌃⇧F12  Fence"_s};
}

QString helperSocket(const PrivateSession& session) {
    return session.runtimeDirectory() + u"/org.orvantile.Orvantile/helper"_s;
}

void loadHelper(PrivateSession& session, const QStringList& folders) {
    session.setVariable(u"QT_PLUGIN_PATH"_s, folders.join(u':'));
    session.setVariable(u"QT_QPA_GENERIC_PLUGINS"_s, u"orvantile"_s);
}

} // namespace orvantile::test
