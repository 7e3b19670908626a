// The whole program on compositors that differ from each other in what they offer.

#include "desktop/preferences/PreferencesControls.h"
#include "support/QtPrinting.h"
#include "support/desktop/HudListener.h"
#include "support/desktop/HudWatcher.h"
#include "support/wayland/OtherWaylandSession.h"

#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString program = QStringLiteral(ORVANTILE_PROGRAM);

/// A busy machine takes its time.
constexpr std::chrono::seconds startPatience{60};

class OtherCompositorsTest : public ::testing::TestWithParam<OtherWaylandSession::Compositor>,
                             public PreferencesControls {
protected:
    OtherCompositorsTest() : session(GetParam()), client(session.accessibilityBusAddress()) {
        session.writeFile(u".config/orvantile/orvantile.ini"_s,
                          "[General]\ndisplaySeconds=0.3\nsoundEnabled=false\n");
        // What the toolkit leaves to its library when the compositor dies is known by the whole way to it.
        session.setVariable(u"ASAN_OPTIONS"_s, u"fast_unwind_on_malloc=0"_s);
        product = session.start(program);
    }

    [[nodiscard]] const AccessibleClient& reader() const override { return client; }

    /// Has the preferences show the HUD, as a screen reader does.
    [[nodiscard]] bool pressTestButton() {
        return client.await([this] { return isShown(radioButton, u"General"_s); },
                            QDeadlineTimer(startPatience)) &&
               (showTab(u"HUD"_s), client.perform(button(u"Test in chosen position"_s), u"Press"_s));
    }

    [[nodiscard]] bool hasLoaded(const QByteArray& library) const {
        QFile maps(u"/proc/"_s % QString::number(product->processIdentifier()) % u"/maps"_s);
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(library);
    }

    OtherWaylandSession session;
    AccessibleClient client;
    std::unique_ptr<ChildProcess> product;
};

TEST_P(OtherCompositorsTest, showsTheHudAndEndsCleanlyWithTheCompositor) {
    const bool layers = GetParam() == OtherWaylandSession::Compositor::kwin;
    HudListener heard(session.accessibilityBusAddress());
    heard.attendTo(product->processIdentifier());
    HudWatcher seen(session.environment().value(u"DISPLAY"_s));
    ASSERT_TRUE(pressTestButton()) << product->standardError().toStdString();
    EXPECT_TRUE(heard.awaitNext()) << product->standardError().toStdString();
    EXPECT_EQ(hasLoaded("platforms/libqxcb.so"), !layers);
    if (layers) {
        EXPECT_TRUE(seen.takeAll().empty()) << "it is no window of the X server";
    } else {
        EXPECT_TRUE(seen.awaitNext());
    }
    session.stopCompositor();
    EXPECT_EQ(product->awaitExit(), 0) << product->standardError().toStdString();
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
