#include "platform/linux/desktop/SoundFolder.h"
#include "settings/HUDSound.h"
#include "support/sound/WaveFile.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <numeric>

namespace orvantile {
namespace {

using Qt::StringLiterals::operator""_s;

class SoundFilesTest : public ::testing::TestWithParam<HUDSound> {
protected:
    QString path = QStringLiteral(SOUND_FOLDER) + u'/' + GetParam().rawValue() + u".wav"_s;
    test::WaveFile wave = test::WaveFile::read(path);
};

double rms(const std::vector<std::int16_t>& samples, std::size_t start, std::size_t count) {
    double sum = 0;
    for (std::size_t index = start; index < start + count; ++index) {
        sum += static_cast<double>(samples[index]) * samples[index];
    }
    return std::sqrt(sum / static_cast<double>(count));
}

TEST_P(SoundFilesTest, isShortMonoAtFortyEightKilohertz) {
    EXPECT_EQ(wave.channels, 1);
    EXPECT_EQ(wave.rate, 48000);
    EXPECT_GE(wave.samples.size(), 4800U);
    EXPECT_LE(wave.samples.size(), 28800U);
}

TEST_P(SoundFilesTest, peaksAtMinusTwelveDecibels) {
    int peak = 0;
    for (const int sample : wave.samples) {
        peak = std::max(peak, std::abs(sample));
    }
    EXPECT_NEAR(20 * std::log10(peak / 32767.0), -12, 0.05);
}

TEST_P(SoundFilesTest, startsAndEndsInSilence) {
    EXPECT_EQ(wave.samples.front(), 0);
    EXPECT_EQ(wave.samples.back(), 0);
    constexpr std::size_t edge = 24; // half a millisecond
    const auto whole = rms(wave.samples, 0, wave.samples.size());
    EXPECT_LT(rms(wave.samples, 0, edge), whole / 4);
    EXPECT_LT(rms(wave.samples, wave.samples.size() - edge, edge), whole / 20);
}

TEST_P(SoundFilesTest, hasNoOffset) {
    const auto sum = std::accumulate(wave.samples.begin(), wave.samples.end(), 0LL);
    EXPECT_LT(std::abs(static_cast<double>(sum) / static_cast<double>(wave.samples.size())), 20);
}

INSTANTIATE_TEST_SUITE_P(each, SoundFilesTest, ::testing::ValuesIn(HUDSound::allCases),
                         [](const auto& sound) { return sound.param.rawValue().toStdString(); });

TEST(SoundScriptTest, makesTheSameBytesAgain) {
    const QTemporaryDir folder;
    QProcess python;
    python.start(u"python3"_s, {QStringLiteral(SOUND_FOLDER "/make_sounds.py"), folder.path()});
    ASSERT_TRUE(python.waitForFinished(60000));
    ASSERT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
    for (const auto& sound : HUDSound::allCases) {
        QFile kept(QStringLiteral(SOUND_FOLDER) + u'/' + sound.rawValue() + u".wav"_s);
        QFile made(folder.filePath(sound.rawValue() + u".wav"_s));
        ASSERT_TRUE(kept.open(QFile::ReadOnly));
        ASSERT_TRUE(made.open(QFile::ReadOnly));
        EXPECT_TRUE(kept.readAll() == made.readAll()) << sound.rawValue().toStdString();
    }
}

TEST(SoundFolderTest, findsSoundsByTheirExactNames) {
    const platform::desktop::SoundFolder folder(SOUND_FOLDER);
    for (const auto& sound : HUDSound::allCases) {
        EXPECT_TRUE(folder.find(sound.rawValue()));
    }
    for (const auto& name : {u"pop"_s, u"Basso"_s, u""_s, u"../sounds/Pop"_s, u"Pop.wav"_s}) {
        EXPECT_FALSE(folder.find(name)) << name.toStdString();
    }
    EXPECT_FALSE(platform::desktop::SoundFolder("/nowhere").find(u"Pop"_s));
}

} // namespace
} // namespace orvantile
