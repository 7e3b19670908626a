// What surrounds the program changes or goes away while it runs: sounds, fonts, languages, screens.

#include "desktop/faults/FullFunction.h"

#include "support/QtPrinting.h"
#include "support/sound/Recording.h"
#include "support/sound/SoundServer.h"

#include <QDir>
#include <QFile>
#include <chrono>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// An editor with the program beside it.
void begin(Stage& stage) {
    stage.start(mousepad);
    stage.startOrvantile();
    stage.awaitCommandsOf(mousepad);
}

/// Fires a command; whether it is heard. What sounded before is not counted.
bool isHeard(Stage& stage, SoundServer& server) {
    server.record();
    stage.keys().press(u"Ctrl+I"_s);
    EXPECT_TRUE(stage.huds().awaitNext());
    const Recording recording(server, 4'800, QDeadlineTimer(patience));
    EXPECT_TRUE(stage.huds().awaitHidden());
    stage.huds().takeAll();
    return !recording.isSilent();
}

TEST(Surroundings, soundServerHangsIsKilledAndComesBack) {
    SoundServer server;
    server.start();
    Stage stage;
    server.serve(stage.session());
    stage.session().writeFile(u".config/orvantile/orvantile.ini"_s,
                              "[General]\ndisplaySeconds=0.3\nsoundEnabled=true\n");
    begin(stage);
    EXPECT_TRUE(isHeard(stage, server));

    server.signal(SIGSTOP);
    expectFullFunction(stage);
    server.signal(SIGCONT);
    expectFullFunction(stage);

    server.kill();
    expectFullFunction(stage);
    server.start();
    expectFullFunction(stage);
    EXPECT_TRUE(isHeard(stage, server));
}

TEST(Surroundings, fontsAndLanguagesAreTakenAway) {
    Stage stage({.locale = u"de_DE.UTF-8"_s});
    const QString fonts = stage.session().home() + u"/fonts"_s;
    ASSERT_TRUE(QDir().mkpath(fonts));
    QDir installed(u"/usr/share/fonts/truetype/dejavu"_s);
    for (const auto& name : installed.entryList({u"*.ttf"_s})) {
        ASSERT_TRUE(QFile::copy(installed.filePath(name), fonts + u'/' + name));
    }
    const auto configuration = stage.session().writeFile(
        u"fonts.conf"_s, "<fontconfig><dir>" + fonts.toUtf8() + "</dir></fontconfig>");
    stage.session().setVariable(u"FONTCONFIG_FILE"_s, configuration);
    stage.session().setVariable(u"LANGUAGE"_s, u"en"_s); // the editor's titles
    begin(stage);
    expectFullFunction(stage);

    ASSERT_TRUE(QDir(fonts).removeRecursively());
    ASSERT_TRUE(QFile::remove(configuration));
    ASSERT_TRUE(QDir(stage.session().environment().value(u"LOCPATH"_s)).removeRecursively());
    expectFullFunction(stage);
}

TEST(Surroundings, screenGoesFromUnderAHud) {
    Stage stage({.outputs = true});
    const auto randr = [&](const QStringList& arguments) {
        const auto change = stage.session().start(u"xrandr"_s, arguments);
        ASSERT_EQ(change->awaitExit(), 0) << change->standardError().constData();
    };
    begin(stage);
    randr({u"--addmode"_s, u"DUMMY1"_s, u"800x1280"_s});
    for (int time = 0; time < 2; ++time) {
        randr({u"--output"_s, u"DUMMY1"_s, u"--mode"_s, u"800x1280"_s, u"--right-of"_s, u"DUMMY0"_s});
        stage.windows().moveTo(stage.windows().activeWindow().handle, QPoint(1400, 100));
        stage.keys().press(u"Ctrl+I"_s);
        ASSERT_TRUE(stage.huds().awaitNext());
        randr({u"--output"_s, u"DUMMY1"_s, u"--off"_s});
        EXPECT_TRUE(stage.huds().awaitHidden());
        stage.huds().takeAll();
        expectFullFunction(stage);
    }
}

} // namespace
} // namespace orvantile::test
