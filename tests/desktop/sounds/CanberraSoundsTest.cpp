#include "platform/linux/desktop/CanberraSounds.h"
#include "support/sound/Recording.h"
#include "support/sound/SoundServer.h"
#include "support/sound/WaveFile.h"

#include <QEventLoop>
#include <QTimer>
#include <algorithm>
#include <csignal>
#include <gmock/gmock.h>
#include <map>
#include <vector>

namespace orvantile::platform::desktop {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Qt::StringLiterals::operator""_s;
using test::Recording;

constexpr std::size_t rate = 48000;
const QStringList names{u"Pop"_s, u"Tink"_s, u"Glass"_s, u"Ping"_s, u"Morse"_s, u"Purr"_s};

class CanberraSoundsTest : public ::testing::Test {
protected:
    CanberraSoundsTest() {
        for (const auto& name : names) {
            waves[name] =
                test::WaveFile::read(QStringLiteral(SOUND_FOLDER) + u'/' + name + u".wav"_s).samples;
        }
    }

    void startServer() {
        server.start();
        server.record();
    }

    /// The next sound that is heard, by its likeness to each that there is; empty when nothing is.
    QString next() {
        const Recording recording(server, rate * 7 / 10, QDeadlineTimer(test::patience));
        QString best;
        double likeness = 0.97;
        for (const auto& name : names) {
            const auto match = recording.find(waves[name], 480);
            if (match.likeness > likeness && match.share > 0.97 && match.share < 1.03) {
                best = name;
                likeness = match.likeness;
            }
        }
        return best;
    }

    /// Plays 20 sounds, 5 ms apart, and returns the longest turns of the main loop, longest first.
    std::vector<Clock::duration> turnsWhilePlaying() {
        std::vector<Clock::duration> turns;
        QEventLoop loop;
        QTimer timer;
        timer.setInterval(5);
        QObject::connect(&timer, &QTimer::timeout, &loop, [&] {
            const auto start = Clock::now();
            sounds.play(names[static_cast<qsizetype>(turns.size()) % names.size()]);
            turns.push_back(Clock::now() - start);
            if (turns.size() == 20) {
                loop.quit();
            }
        });
        timer.start();
        loop.exec();
        std::ranges::sort(turns, std::greater());
        return turns;
    }

    test::SoundServer server;
    std::map<QString, Recording::Samples> waves;
    CanberraSounds sounds{SoundFolder(SOUND_FOLDER)};
};

TEST_F(CanberraSoundsTest, playsEachSoundAsItIs) {
    startServer();
    for (const auto& name : names) {
        sounds.play(name);
        EXPECT_EQ(next(), name);
    }
    sounds.play(u"Pop"_s); // which the server has by now
    EXPECT_EQ(next(), u"Pop"_s);
}

TEST_F(CanberraSoundsTest, playsSoundsThatOverlap) {
    startServer();
    sounds.play(u"Glass"_s);
    sounds.play(u"Morse"_s);
    const Recording recording(server, rate, QDeadlineTimer(test::patience));
    const auto glass = recording.find(waves[u"Glass"_s], rate / 4);
    const auto morse = recording.find(waves[u"Morse"_s], rate / 4);
    EXPECT_NEAR(glass.share, 1, 0.03);
    EXPECT_NEAR(morse.share, 1, 0.03);
    const auto apart = glass.start > morse.start ? glass.start - morse.start : morse.start - glass.start;
    EXPECT_LT(apart, waves[u"Morse"_s].size());
}

TEST_F(CanberraSoundsTest, isSilentForNamesWithoutASound) {
    startServer();
    for (const auto& name : {u"Basso"_s, u"pop"_s, u""_s, u"../sounds/Pop"_s, u"/etc/passwd"_s}) {
        sounds.play(name);
    }
    sounds.play(u"Ping"_s);
    EXPECT_EQ(next(), u"Ping"_s);
}

TEST_F(CanberraSoundsTest, isSilentWithoutAServerAndHoldsNobody) {
    const auto turns = turnsWhilePlaying();
    EXPECT_LT(turns[2], 5ms); // this thread itself may have been held up now and then
}

TEST_F(CanberraSoundsTest, findsTheServerThatReplacesOneThatWasKilled) {
    startServer();
    sounds.play(u"Tink"_s);
    EXPECT_EQ(next(), u"Tink"_s);
    server.kill();
    startServer();
    sounds.play(u"Glass"_s);
    EXPECT_EQ(next(), u"Glass"_s);
}

TEST_F(CanberraSoundsTest, isSilentAfterTheServerWasKilledAndHoldsNobody) {
    startServer();
    sounds.play(u"Tink"_s);
    EXPECT_EQ(next(), u"Tink"_s);
    server.kill();
    EXPECT_LT(turnsWhilePlaying()[2], 5ms);
}

TEST_F(CanberraSoundsTest, holdsNobodyWhileTheServerIsStoppedAndPlaysAgainAfterwards) {
    startServer();
    sounds.play(u"Tink"_s);
    EXPECT_EQ(next(), u"Tink"_s);
    server.signal(SIGSTOP);
    const auto turns = turnsWhilePlaying();
    EXPECT_LT(turns[2], 5ms);
    RecordProperty("longestTurnMicroseconds",
                   static_cast<int>(std::chrono::duration_cast<std::chrono::microseconds>(turns[0]).count()));
    QEventLoop loop;
    QTimer::singleShot(400ms, &loop, &QEventLoop::quit);
    loop.exec();
    server.signal(SIGCONT);
    EXPECT_EQ(next(), u"Pop"_s); // whose start was under way; for the others it is too late
    sounds.play(u"Ping"_s);
    EXPECT_EQ(next(), u"Ping"_s);
}

TEST_F(CanberraSoundsTest, leavesAStoppedServerBehindWhenItEnds) {
    startServer();
    server.signal(SIGSTOP);
    const auto start = Clock::now();
    {
        CanberraSounds others{SoundFolder(SOUND_FOLDER)};
        others.play(u"Pop"_s);
    }
    EXPECT_LT(Clock::now() - start, 2s);
}

} // namespace
} // namespace orvantile::platform::desktop
