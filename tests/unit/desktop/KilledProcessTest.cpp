#include "platform/linux/desktop/IniDefaults.h"

#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <random>
#include <thread>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

const std::string head = "# by hand\n[Other]\nkey=value\n[General]\nfontSize=";
const std::string tail = "\nsound=Purr\nlast=kept\n";

TEST(KilledProcessTest, leavesACompleteFileWithEveryAssignmentItMade) {
    const QTemporaryDir temporary;
    const auto path = temporary.filePath(u"orvantile.ini"_s);
    std::ofstream(path.toStdString()) << head << 0 << tail;
    std::mt19937 random(20);
    std::uniform_int_distribution<int> microseconds(0, 6000);
    int confirmed = 0;
    for (int round = 0; round < 60; ++round) {
        QProcess process;
        process.start(QStringLiteral(ASSIGN_UNTIL_KILLED), {path});
        ASSERT_TRUE(process.waitForReadyRead(10000));
        std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random))); // any moment
        process.kill();
        ASSERT_TRUE(process.waitForFinished(10000));
        auto lines = process.readAllStandardOutput().split('\n');
        lines.removeLast(); // incomplete, or empty
        int last = 0;
        for (const auto& line : lines) {
            last = std::max(last, line.toInt());
            confirmed += line == "0" ? 0 : 1;
        }

        std::ifstream stream(path.toStdString());
        const std::string contents(std::istreambuf_iterator<char>(stream), {});
        const auto number = IniDefaults(path.toStdString()).doubleForKey(u"fontSize"_s);
        EXPECT_EQ(contents, head + std::to_string(static_cast<int>(number)) + tail);
        EXPECT_GE(number, last);
    }
    EXPECT_GT(confirmed, 0);
}

} // namespace
} // namespace orvantile::platform::desktop
