// Programs that answer wrongly, endlessly or not at all, beside one that behaves.
#include "desktop/a11y/LoopWatch.h"
#include "desktop/a11y/ModelFixture.h"
#include "support/QtPrinting.h"

#include <csignal>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

#ifdef __SANITIZE_ADDRESS__
constexpr std::chrono::microseconds longestTurn =
    500ms; // the sanitizer copies large messages many times over
#else
constexpr std::chrono::microseconds longestTurn = 5ms;
#endif

/// Far below any time-out of a call, far above what a busy machine takes away from the loop.
constexpr std::chrono::microseconds longestGap = 500ms;

class BadApplication : public ModelFixture {
protected:
    /// The program in front is bad; another one that comes to the front after it is served as if nothing
    /// were.
    void expectAnotherIsServed() {
        const auto good = startInFront();
        EXPECT_TRUE(fires(*good, u"<Primary>n"_s, u"New"_s));
    }

    void expectTheLoopWasFree() const {
        EXPECT_LE(watch.longestWork().count(), longestTurn.count()) << "microseconds of work in one turn";
        EXPECT_LE(watch.longestGap().count(), longestGap.count()) << "microseconds without a turn";
    }

    LoopWatch watch;
};

TEST_F(BadApplication, thatCannotListItsItemsIsWalkedThrough) {
    const auto program = startInFront({u"no-collection"_s, u"items=50"_s});
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items == 54; }));
}

TEST_F(BadApplication, whoseMenusContainThemselvesIsReadOnce) {
    const auto program = startInFront({u"no-collection"_s, u"cyclic"_s, u"items=50"_s});
    EXPECT_TRUE(fires(*program, u"<Primary><Shift>s"_s, u"Save As…"_s));
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items >= 54; }));
    expectAnotherIsServed();
    expectTheLoopWasFree();
}

TEST_F(BadApplication, ofAHundredThousandItemsIsReadInPart) {
    const auto program = startInFront({u"items=100000"_s, u"bound-items"_s});
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    expectAnotherIsServed();
    bringToFront(*program);
    EXPECT_TRUE(eventually([&] {
        return model->reach(program->processIdentifier()).items == platform::a11y::MenuTable::capacity;
    })) << model->reach(program->processIdentifier()).items;
    // Read again, it is the same.
    bool complete = false;
    model->onTableComplete = [&](std::int32_t) { complete = true; };
    model->menuClosed();
    EXPECT_TRUE(eventually([&] { return complete; }));
    EXPECT_EQ(model->reach(program->processIdentifier()).items, platform::a11y::MenuTable::capacity);
    expectTheLoopWasFree();
}

TEST_F(BadApplication, ofAHundredThousandItemsInOneMenuIsReadInPart) {
    const auto program = startInFront({u"no-collection"_s, u"items=100000"_s});
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    expectAnotherIsServed();
    expectTheLoopWasFree();
}

TEST_F(BadApplication, withTitlesOfAMegabyteHasItemsWithoutTitle) {
    const auto program = startInFront({u"items=5"_s, u"title-bytes=1000000"_s});
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).accelerators == 8; }));
    EXPECT_EQ(fired(*program, u"<Primary><Alt>x"_s), u"(none)");
    expectAnotherIsServed();
    expectTheLoopWasFree();
}

TEST_F(BadApplication, thatAnswersWithWrongTypesHasNoCommands) {
    const auto program = startInFront({u"wrong-types"_s});
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items == 4; }));
    expectAnotherIsServed();
    EXPECT_EQ(model->reach(program->processIdentifier()).accelerators, 0U);
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"(none)");
}

TEST_F(BadApplication, withGarbageForBindingsKeepsItsGoodOnes) {
    const auto program = startInFront({u"garbage-bindings"_s});
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items == 14; }));
    expectAnotherIsServed();
    expectTheLoopWasFree();
}

TEST_F(BadApplication, whoseTitlesAreNoTextIsThrownOffTheBusAndForgotten) {
    const auto program = startInFront({u"invalid-utf8"_s});
    EXPECT_TRUE(program->child().awaitExit().has_value());
    EXPECT_TRUE(eventually([&] { return model->reach(program->processIdentifier()).items == 0; }));
    expectAnotherIsServed();
}

TEST_F(BadApplication, thatNeverAnswersHoldsNobodyUp) {
    const auto program = startInFront({u"silent"_s});
    expectAnotherIsServed();
    bringToFront(*program);
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"(none)");
    expectAnotherIsServed();
    expectTheLoopWasFree();
}

TEST_F(BadApplication, thatIsStoppedFromTheStartIsReadWhenItGoesOn) {
    const auto program = start();
    program->signal(SIGSTOP);
    bringToFront(*program);
    expectAnotherIsServed();
    bringToFront(*program);
    program->signal(SIGCONT);
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    expectTheLoopWasFree();
}

TEST_F(BadApplication, thatStopsWhileItIsReadIsReadWhenItGoesOn) {
    for (const int question : {1, 5, 9, 13}) {
        const auto program = startInFront({u"stop-after=%1"_s.arg(question)});
        expectAnotherIsServed();
        bringToFront(*program);
        program->signal(SIGCONT);
        EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s)) << question;
    }
    expectTheLoopWasFree();
}

TEST_F(BadApplication, thatIsLeftAloneForItsSilenceIsReadWhenItAnswersAgain) {
    const auto program = startInFront({u"stop-after=5"_s});
    QEventLoop loop; // longer than anyone waits for an answer
    QTimer::singleShot(platform::a11y::BusConnection::patience + 500ms, &loop, [&] { loop.quit(); });
    loop.exec();
    EXPECT_EQ(fired(*program, u"<Primary>n"_s), u"(none)");
    expectAnotherIsServed();
    bringToFront(*program);
    program->signal(SIGCONT);
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    expectTheLoopWasFree();
}

TEST_F(BadApplication, thatIsStoppedAfterItWasReadHoldsNobodyUp) {
    const auto program = startInFront();
    ASSERT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    program->signal(SIGSTOP);
    model->menuClosed();
    expectAnotherIsServed();
    bringToFront(*program);
    program->signal(SIGCONT);
    EXPECT_TRUE(fires(*program, u"<Primary>n"_s, u"New"_s));
    expectTheLoopWasFree();
}

} // namespace
} // namespace orvantile::test
