#include "support/wayland/Bystander.h"
#include "support/wayland/PrivateWaylandSession.h"
#include "support/wayland/VirtualKeyboard.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

const QString program = QStringLiteral(ORVANTILE_PROGRAM);

bool hasWindow(const QJsonObject& node, const QString& title) {
    if (node[u"name"_s].toString() == title) {
        return true;
    }
    for (const auto& children : {u"nodes"_s, u"floating_nodes"_s}) {
        for (const auto& child : node[children].toArray()) {
            if (hasWindow(child.toObject(), title)) {
                return true;
            }
        }
    }
    return false;
}

bool awaitPreferences(PrivateWaylandSession& session) {
    const QDeadlineTimer deadline(patience);
    while (!deadline.hasExpired()) {
        if (hasWindow(session.sway().tree().object(), u"Orvantile Preferences"_s)) {
            return true;
        }
    }
    return false;
}

TEST(WaylandProgram, startsOnTheCompositorAndEndsCleanlyWithIt) {
    for (int round = 0; round < 3; ++round) {
        PrivateWaylandSession session;
        const auto orvantile = session.start(program);
        ASSERT_TRUE(awaitPreferences(session)) << orvantile->standardError().toStdString();
        EXPECT_TRUE(orvantile->isRunning());
        session.stopCompositor();
        EXPECT_EQ(orvantile->awaitExit(), 0) << orvantile->standardError().toStdString();
    }
}

TEST(WaylandProgram, aSecondLaunchBringsThePreferencesToTheFront) {
    PrivateWaylandSession session;
    // What the toolkit leaves to its library is known by the whole way to it.
    session.setVariable(u"ASAN_OPTIONS"_s, u"fast_unwind_on_malloc=0"_s);
    session.sway().run(u"focus_on_window_activation smart"_s);
    const auto orvantile = session.start(program);
    ASSERT_TRUE(awaitPreferences(session)) << orvantile->standardError().toStdString();
    const QString socket = session.runtimeDirectory() % u'/' % session.display();
    const VirtualKeyboard keyboard(u"us"_s, socket); // a seat without one has no focus of keys
    Bystander elsewhere(socket);
    ASSERT_TRUE(elsewhere.awaitFocus());
    session.setVariable(u"XDG_ACTIVATION_TOKEN"_s, QString::fromUtf8(elsewhere.activationToken()));
    const auto second = session.start(program);
    EXPECT_EQ(second->awaitExit(), 0) << second->standardError().toStdString();
    EXPECT_TRUE(elsewhere.awaitLossOfFocus());
    EXPECT_EQ(session.sway().focusedTitle(), u"Orvantile Preferences"_s);
}

TEST(WaylandProgram, loadsNoRendererForGraphicsHardwareAndKeepsSilent) {
    PrivateWaylandSession session;
    const auto orvantile = session.start(program);
    ASSERT_TRUE(awaitPreferences(session)) << orvantile->standardError().toStdString();
    QFile maps(u"/proc/"_s % QString::number(orvantile->processIdentifier()) % u"/maps"_s);
    ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
    const auto loaded = maps.readAll();
    EXPECT_TRUE(loaded.contains("libQt6WaylandClient"));
    EXPECT_FALSE(loaded.contains("wayland-egl.so")) << "the toolkit's own";
    EXPECT_FALSE(loaded.contains("_dri.so"));
    EXPECT_EQ(orvantile->standardError(), "");
}

} // namespace
} // namespace orvantile::test
