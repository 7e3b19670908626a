// The time of day jumps, as when a machine wakes up, asks for the time or is set by hand.

#include "desktop/faults/FullFunction.h"

#include "support/QtPrinting.h"

#include <QDateTime>
#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class Clock : public ::testing::Test {
protected:
    Clock() {
        set("+0");
        auto& session = stage.session();
        session.setVariable(u"FAKETIME_TIMESTAMP_FILE"_s, path());
        session.setVariable(u"FAKETIME_NO_CACHE"_s, u"1"_s);
        session.setVariable(u"FAKETIME_DONT_FAKE_MONOTONIC"_s, u"1"_s);
        session.setVariable(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
    }

    /// Another time of day from now on, told as a distance from the true one.
    void set(const QByteArray& distance) {
        // In one step: half a file would be another time.
        const auto fresh = stage.session().writeFile(u"clock.new"_s, distance + '\n');
        ASSERT_EQ(std::rename(QFile::encodeName(fresh).constData(), QFile::encodeName(path()).constData()),
                  0);
    }

    /// The year in which a program sees itself that looks at the clock as ours does.
    [[nodiscard]] int yearSeen() {
        const auto date = stage.session().start(u"env"_s, {preload, u"date"_s, u"+%Y"_s});
        return date->awaitLine().value_or("0").toInt();
    }

    /// Whether the program itself has loaded what shows it the time.
    [[nodiscard]] bool isShownTheTime() {
        QFile maps(u"/proc/%1/maps"_s.arg(stage.orvantile().processIdentifier()));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains(ORVANTILE_FAKE_CLOCK);
    }

    const QString preload = u"LD_PRELOAD=" ORVANTILE_FAKE_CLOCK ""_s;
    Stage stage;

private:
    [[nodiscard]] QString path() { return stage.session().home() + u"/clock"_s; }
};

TEST_F(Clock, jumpsChangeNothingEvenUnderAHud) {
    stage.start(mousepad);
    stage.startOrvantile({u"env"_s, preload});
    ASSERT_TRUE(isShownTheTime());
    stage.awaitCommandsOf(mousepad);
    const int year = QDateTime::currentDateTime().date().year();

    const struct {
        const char* distance;
        int years;
    } jumps[] = {{"+3652d", 10}, {"-7305d", -20}, {"+0", 0}};

    for (const auto& jump : jumps) {
        SCOPED_TRACE(jump.distance);
        stage.keys().press(u"Ctrl+I"_s);
        ASSERT_TRUE(stage.huds().awaitNext());
        set(jump.distance);
        EXPECT_NEAR(yearSeen(), year + jump.years, 1);
        EXPECT_TRUE(stage.huds().awaitHidden());
        stage.huds().takeAll();
        expectFullFunction(stage);
    }
}

} // namespace
} // namespace orvantile::test
