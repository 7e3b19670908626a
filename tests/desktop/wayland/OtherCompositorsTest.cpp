// The whole program on compositors that differ from each other in what they offer.

#include "desktop/wayland/OtherCompositorStage.h"
#include "support/QtPrinting.h"
#include "support/desktop/HudListener.h"
#include "support/desktop/HudWatcher.h"

#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class OtherCompositorsTest : public ::testing::TestWithParam<OtherWaylandSession::Compositor> {
protected:
    OtherCompositorsTest() { stage.startOrvantile(); }

    [[nodiscard]] bool hasLoaded(const QByteArray& library) {
        QFile maps(u"/proc/"_s % QString::number(stage.orvantile().processIdentifier()) % u"/maps"_s);
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
    }

    OtherCompositorStage stage{GetParam(), "displaySeconds=0.3\n"};
};

TEST_P(OtherCompositorsTest, showsTheHudAndEndsCleanlyWithTheCompositor) {
    const bool layers = GetParam() == OtherWaylandSession::Compositor::kwin;
    HudListener heard(stage.session().accessibilityBusAddress());
    heard.attendTo(stage.orvantile().processIdentifier());
    HudWatcher seen(stage.session().environment().value(u"DISPLAY"_s));
    ASSERT_TRUE(stage.pressTestButton()) << stage.complaints();
    EXPECT_TRUE(heard.awaitNext()) << stage.complaints();
    EXPECT_EQ(hasLoaded("platforms/libqxcb.so"), !layers);
    if (layers) {
        EXPECT_TRUE(seen.takeAll().empty()) << "it is no window of the X server";
    } else {
        EXPECT_TRUE(seen.awaitNext());
    }
    stage.session().stopCompositor();
    EXPECT_EQ(stage.orvantile().awaitExit(), 0) << stage.complaints();
}

TEST_P(OtherCompositorsTest, thePermissionSaysWhereKeysComeFrom) {
    ASSERT_TRUE(stage.awaitPreferences()) << stage.complaints();
    QString words;
    const auto& reader = stage.reader();
    EXPECT_TRUE(reader.await([&] {
        const auto button = stage.button(u"Re-check"_s);
        if (!reader.focus(stage.segment(u"General"_s)) || !reader.focus(button)) {
            return false;
        }
        words = reader.description(button);
        return words.contains(u"Key presses come from the programs themselves, over the accessibility bus"_s);
    })) << words.toStdString();
    EXPECT_TRUE(words.contains(u"programs made with GTK 4 and Chromium are not heard"_s));
}

INSTANTIATE_TEST_SUITE_P(Compositors, OtherCompositorsTest,
                         ::testing::Values(OtherWaylandSession::Compositor::weston,
                                           OtherWaylandSession::Compositor::kwin),
                         [](const auto& compositor) {
                             return compositor.param == OtherWaylandSession::Compositor::weston
                                        ? std::string("weston")
                                        : std::string("kwin");
                         });

} // namespace
} // namespace orvantile::test
