// A program that is made of Qt Quick alone: it has no menus that the helper knows.

#include "desktop/helper/HelperStage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

constexpr auto description = R"(
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    property int saved: 0
    visible: true
    width: 300
    height: 200
    title: "saved " + saved
    Shortcut { sequence: "Ctrl+S"; onActivated: saved += 1 }
    Shortcut { sequence: "Ctrl+Q"; onActivated: Qt.exit(0) }
}
)";

const Application quick{u"qmlscene"_s, {u"window.qml"_s}, u"QtQmlViewer"_s, {}, {}};

TEST(QuickProgramTest, worksWithTheHelperAndIsNotNamed) {
    Stage stage;
    loadHelper(stage.session());
    stage.session().setVariable(u"QT_QUICK_BACKEND"_s, u"software"_s);
    stage.session().writeFile(u"window.qml"_s, description);
    stage.start(quick);
    stage.startOrvantile();
    for (int time = 1; time <= 3; ++time) {
        EXPECT_EQ(stage.fire(u"Ctrl+S"_s), u"nothing"_s);
        stage.windows().awaitActive(titled(u"saved %1"_s.arg(time)));
    }
    stage.keys().press(u"Ctrl+Q"_s);
    EXPECT_EQ(stage.process(quick).awaitExit(), 0);
}

} // namespace
} // namespace orvantile::test
