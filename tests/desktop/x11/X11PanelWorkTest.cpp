#include "desktop/x11/PanelStage.h"

#include "support/desktop/MainLoop.h"

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cstdio>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::turnFor;
using Qt::StringLiterals::operator""_s;

/// What the panel costs, and that it does no more than is needed.
class X11PanelWorkTest : public PanelStage {};

TEST_F(X11PanelWorkTest, drawsNothingWhileNothingMoves) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    turnFor(150);
    const auto before = xcb_total_written(connection->get());
    turnFor(300);
    EXPECT_EQ(xcb_total_written(connection->get()), before);
}

TEST_F(X11PanelWorkTest, comesUpEveryTimeWithoutATurnOfTheMainLoop) {
    for (int round = 0; round < 100; ++round) {
        show();
        ASSERT_TRUE(huds.awaitNext()); // its own connection; nothing of the panel's runs meanwhile
        panel->orderOut();
        ASSERT_TRUE(huds.awaitHidden());
    }
}

TEST_F(X11PanelWorkTest, drawsOnlyTheLatestOfContentsThatComeFasterThanTheServerReads) {
    show();
    ASSERT_TRUE(huds.awaitNext());
    // Without a turn of the main loop nobody knows that the first picture has been read.
    std::vector<std::shared_ptr<BarContent>> hurried;
    for (int i = 0; i < 50; ++i) {
        hurried.push_back(std::make_shared<BarContent>(QString::number(i)));
        show(hurried.back());
    }
    const auto drawn = [&] {
        return std::ranges::count_if(hurried, [](const auto& each) { return each->preparations > 0; });
    };
    EXPECT_EQ(drawn(), 0);
    EXPECT_TRUE(awaitThat([&] { return hurried.back()->preparations > 0; }));
    EXPECT_TRUE(awaitPixel(middle, red));
    EXPECT_EQ(drawn(), 1);
    EXPECT_EQ(hurried.back()->preparations, 1);
    EXPECT_EQ(huds.takeAll().back().label, u"49"_s);
}

/// Resident memory of this process, in KiB.
long residentMemory() {
    QFile file(u"/proc/self/statm"_s);
    static_cast<void>(file.open(QIODevice::ReadOnly));
    return file.readAll().split(' ').at(1).toLong() * 4;
}

TEST_F(X11PanelWorkTest, keepsItsSizeOverThousandsOfShows) {
    const auto descriptors = [] { return QDir(u"/proc/self/fd"_s).count(); };
    const auto showSome = [&](int count) {
        for (int round = 0; round < count; ++round) {
            show(std::make_shared<BarContent>(QString::number(round), Size{100.0 + round % 300, 60}));
            QCoreApplication::processEvents();
            panel->orderOut();
            if (round % 100 == 0) {
                static_cast<void>(huds.takeAll());
            }
        }
        connection->synchronize();
        static_cast<void>(huds.takeAll());
    };
    showSome(1000);
    const auto memory = residentMemory();
    const auto open = descriptors();
    showSome(10000);
    EXPECT_EQ(descriptors(), open);
    const auto grown = residentMemory() - memory;
    std::printf("grown by %ld KiB over 10000 shows\n", grown);
#ifdef __SANITIZE_ADDRESS__
    // The sanitizer keeps freed memory back to find uses of it.
    std::printf("the limit on memory is not checked under AddressSanitizer\n");
#else
    EXPECT_LT(grown, 2048);
#endif
}

} // namespace
} // namespace orvantile::platform::x11
