// What the open preferences do when nobody touches them.

#include "desktop/preferences/PreferencesDesk.h"
#include "support/QtPrinting.h"

#include <QDir>
#include <QFile>
#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

/// How often the threads of a process have been given a processor.
long long wakeups(pid_t process) {
    long long total = 0;
    const QDir tasks(u"/proc/%1/task"_s.arg(process));
    for (const auto& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile status(tasks.filePath(task + u"/status"_s));
        if (status.open(QIODevice::ReadOnly)) {
            for (const auto& line : QString::fromLatin1(status.readAll()).split(u'\n')) {
                if (line.contains(u"ctxt_switches:"_s)) {
                    total += line.section(u':', 1).trimmed().toLongLong();
                }
            }
        }
    }
    return total;
}

TEST(OutsideTest, theWindowAndAnAutomaticPreviewFollowTheDesktop) {
    PreferencesDesk desk;
    desk.showTab(u"HUD"_s);
    const auto strip = desk.reader().extents(desk.control(u"graphic"_s, u"⌘S  Save"_s));
    const auto brightness = [&](QPoint place) {
        return QColor(desk.picture({place, QSize(1, 1)}).pixel(0, 0)).lightness();
    };
    const auto margin = strip.bottomLeft() + QPoint(5, 30); // beside the cards
    const auto sky = strip.topLeft() + QPoint(10, 5);
    ASSERT_TRUE(desk.await([&] { return brightness(margin) > 200; }));
    EXPECT_TRUE(desk.await([&] { return brightness(sky) < 110; })) << "a dark picture on a light desktop";
    desk.session().writeFile(u".config/gtk-3.0/settings.ini"_s,
                             "[Settings]\ngtk-application-prefer-dark-theme=1\n");
    EXPECT_TRUE(desk.await([&] { return brightness(margin) < 60; }));
    EXPECT_TRUE(desk.await([&] { return brightness(sky) > 150; }));
    ASSERT_TRUE(desk.reader().perform(desk.segment(u"Light"_s), u"Toggle"_s));
    EXPECT_TRUE(desk.await([&] { return brightness(sky) < 110; })) << "no longer automatic";
    desk.session().writeFile(u".config/gtk-3.0/settings.ini"_s,
                             "[Settings]\ngtk-application-prefer-dark-theme=0\n");
    EXPECT_TRUE(desk.await([&] { return brightness(margin) > 200; }));
    EXPECT_LT(brightness(sky), 110);
}

TEST(OutsideTest, valuesOutOfRangeInTheFileAreShownAndKept) {
    PreferencesDesk desk("displaySeconds=-5\nfontSize=1000\nflatOpacity=7\ntranslucent=false\n");
    desk.showTab(u"HUD"_s);
    const auto& reader = desk.reader();
    for (const auto* name : {u"Duration", u"Font size", u"Background opacity"}) {
        EXPECT_TRUE(reader.value(desk.slider(QString::fromUtf16(name))).has_value());
    }
    EXPECT_TRUE(desk.isShown(u"label"_s, u"-5.0s"_s)) << desk.outline().toStdString();
    EXPECT_TRUE(desk.isShown(u"label"_s, u"700%"_s));
    EXPECT_EQ(desk.stored(u"displaySeconds"_s), u"-5"_s);
    EXPECT_EQ(desk.stored(u"fontSize"_s), u"1000"_s);
    EXPECT_EQ(desk.stored(u"flatOpacity"_s), u"7"_s);
    ASSERT_TRUE(reader.perform(desk.slider(u"Duration"_s), u"Increase"_s));
    EXPECT_TRUE(desk.awaitStored(u"displaySeconds"_s, u"0.4"_s)) << "moved into the range";
}

TEST(OutsideTest, nothingWakesTheProgramWhileTheWindowIsOpen) {
    using namespace std::chrono_literals;
    PreferencesDesk desk;
    desk.hands().moveTo({5, 5});
    desk.showTab(u"HUD"_s);
    const auto process = desk.program().processIdentifier();
    long long before = -1;
    const auto quietFor = [&](std::chrono::milliseconds time) {
        before = wakeups(process);
        return !desk.reader().await([&] { return wakeups(process) != before; }, QDeadlineTimer(time));
    };
    const QDeadlineTimer deadline(60s);
    while (!quietFor(2s) && !deadline.hasExpired()) { // what the start and the tab have set off
    }
    EXPECT_TRUE(quietFor(10s)) << "woken " << wakeups(process) - before << " times";
}

} // namespace
} // namespace orvantile::test
