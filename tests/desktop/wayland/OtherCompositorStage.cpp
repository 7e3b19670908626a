#include "desktop/wayland/OtherCompositorStage.h"

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

/// A busy machine takes its time.
constexpr std::chrono::seconds startPatience{60};

} // namespace

OtherCompositorStage::OtherCompositorStage(OtherWaylandSession::Compositor compositor,
                                           const QByteArray& settings)
    : desktop(compositor),
      client(desktop.accessibilityBusAddress()) {
    desktop.writeFile(u".config/orvantile/orvantile.ini"_s, "[General]\nsoundEnabled=false\n" + settings);
}

void OtherCompositorStage::startOrvantile() {
    // What the toolkit leaves to its library when the compositor dies is known by the whole way to it.
    desktop.setVariable(u"ASAN_OPTIONS"_s, u"fast_unwind_on_malloc=0"_s);
    product = desktop.start(QStringLiteral(ORVANTILE_PROGRAM));
}

bool OtherCompositorStage::awaitPreferences() const {
    return client.await([this] { return isShown(radioButton, u"General"_s); }, QDeadlineTimer(startPatience));
}

bool OtherCompositorStage::awaitPreferencesClosed() const {
    return client.await([this] { return !isShown(radioButton, u"General"_s); });
}

bool OtherCompositorStage::pressTestButton() {
    return awaitPreferences() &&
           (showTab(u"HUD"_s), client.perform(button(u"Test in chosen position"_s), u"Press"_s));
}

} // namespace orvantile::test
