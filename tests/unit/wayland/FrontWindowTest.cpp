#include "platform/linux/wayland/FrontWindow.h"

#include "support/VirtualScheduler.h"

#include <gmock/gmock.h>

namespace orvantile::platform::wayland {
namespace {

using a11y::ObjectReference;
using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t mousepad = 100;
constexpr std::int32_t featherpad = 200;
const ObjectReference notes{":1.7", "/120"};
const ObjectReference otherNotes{":1.7", "/121"};
const ObjectReference popup{":1.7", "/334"};
const ObjectReference draft{":1.8", "/2147483700"};
const ObjectReference fileDialog{":1.8", "/2147483756"};

/// The sequences are those that programs were seen to send.
class FrontWindowTest : public ::testing::Test {
protected:
    FrontWindowTest() {
        front.onChanged = [this] { log.append(title()); };
        front.onPopup = [this](const auto& window) { popups.push_back(window); };
        front.appeared(":1.7", mousepad);
        front.appeared(":1.8", featherpad);
    }

    [[nodiscard]] QString title() const { return front.window() ? front.window()->title : u"nobody"_s; }

    void openNotes() {
        front.activated(notes, u"notes - Mousepad"_s);
        log.clear();
    }

    void focus(std::uint64_t number, const QString& title, const QString& application) {
        front.focused(FocusedToplevel{.number = number, .title = title, .applicationId = application});
    }

    test::VirtualScheduler scheduler;
    FrontWindow front{scheduler, [](std::int32_t process) {
                          return process == mousepad ? u"mousepad"_s : u"featherpad"_s;
                      }};
    QStringList log;
    std::vector<ObjectReference> popups;
};

TEST_F(FrontWindowTest, isTheOneThatWasActivated) {
    front.activated(notes, u" notes - Mousepad "_s);
    ASSERT_TRUE(front.window());
    EXPECT_EQ(front.window()->processIdentifier, mousepad);
    EXPECT_EQ(front.window()->title, u"notes - Mousepad"_s);
    EXPECT_EQ(front.window()->accessible, notes);
    EXPECT_EQ(front.application(), ":1.7");
}

TEST_F(FrontWindowTest, changesAtOnceWhenOneHasGivenWay) {
    openNotes();
    front.deactivated(notes);
    EXPECT_THAT(log, IsEmpty()) << "somebody may follow";
    front.activated(draft, u"Untitled"_s);
    front.activated(draft, u"Untitled"_s);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s));
}

TEST_F(FrontWindowTest, ignoresAClaimThatIsTakenBackAtOnce) {
    front.activated(draft, u"Untitled"_s);
    front.deactivated(draft);
    front.activated(notes, u"notes - Mousepad"_s);
    log.clear();
    front.activated(draft, u"Untitled"_s);
    front.deactivated(draft);
    scheduler.advance(1);
    EXPECT_THAT(log, IsEmpty());
    EXPECT_EQ(title(), u"notes - Mousepad"_s);
}

TEST_F(FrontWindowTest, goesToTheDialogThatTakesOver) {
    front.activated(draft, u"Untitled"_s);
    log.clear();
    front.activated(draft, u"Untitled"_s);
    front.activated(fileDialog, u"Open file..."_s);
    front.deactivated(draft);
    EXPECT_THAT(log, ElementsAre(u"Open file..."_s));
    front.deactivated(fileDialog);
    scheduler.advance(0.011);
    front.activated(draft, u"Untitled"_s);
    EXPECT_THAT(log, ElementsAre(u"Open file..."_s, u"Untitled"_s));
}

TEST_F(FrontWindowTest, takesAClaimAgainstOneThatStandsAfterAMoment) {
    openNotes();
    front.activated(draft, u"Untitled"_s);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(FrontWindow::settling + 0.001);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s));
}

TEST_F(FrontWindowTest, asksOneThatClaimsTheFocusOnceTooOften) {
    front.activated(draft, u"Untitled"_s);
    front.deactivated(draft);
    std::vector<ObjectReference> asked;
    front.onContested = [&](const auto& window) { asked.push_back(window); };
    openNotes();
    EXPECT_THAT(asked, IsEmpty());
    front.activated(draft, u"Untitled"_s);
    front.deactivated(draft);
    front.activated(draft, u"Untitled"_s); // and says no more
    ASSERT_FALSE(asked.empty());
    EXPECT_EQ(asked.back(), draft);
    const auto before = asked.size();
    scheduler.advance(FrontWindow::settling + 0.001);
    EXPECT_EQ(asked.size(), before + 1) << "it may have answered too early";
    front.deactivated(draft);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s, u"notes - Mousepad"_s));
}

TEST_F(FrontWindowTest, isDecidedWhenAKeyCannotWait) {
    openNotes();
    front.activated(draft, u"Untitled"_s);
    front.settle();
    EXPECT_EQ(title(), u"Untitled"_s);
    EXPECT_EQ(scheduler.pending(), 0);
}

TEST_F(FrontWindowTest, isNobodyWhenNobodyFollows) {
    openNotes();
    front.deactivated(notes);
    scheduler.advance(FrontWindow::absence + 0.001);
    EXPECT_THAT(log, ElementsAre(u"nobody"_s));
    EXPECT_EQ(front.application(), "");
}

TEST_F(FrontWindowTest, takesAPopupForNoWindow) {
    openNotes();
    front.deactivated(popup);
    front.activated(popup, {});
    scheduler.advance(1);
    EXPECT_EQ(title(), u"notes - Mousepad"_s);
    EXPECT_THAT(popups, ElementsAre(popup));
}

TEST_F(FrontWindowTest, maybeAWindowWithoutATitle) {
    front.activated(notes, {});
    ASSERT_TRUE(front.window());
    EXPECT_EQ(front.window()->title, QString());
    EXPECT_THAT(popups, IsEmpty());
}

TEST_F(FrontWindowTest, followsItsTitle) {
    openNotes();
    front.renamed(notes, u"*notes - Mousepad"_s);
    front.renamed(otherNotes, u"something else"_s);
    EXPECT_THAT(log, ElementsAre(u"*notes - Mousepad"_s));
}

TEST_F(FrontWindowTest, keepsTheHandleOfAWindowWhileItExists) {
    openNotes();
    const auto handle = front.window()->handle;
    front.deactivated(notes);
    front.activated(otherNotes, u"other - Mousepad"_s);
    EXPECT_NE(front.window()->handle, handle);
    front.deactivated(otherNotes);
    front.activated(notes, u"notes - Mousepad"_s);
    EXPECT_EQ(front.window()->handle, handle);
    front.destroyed(notes);
    front.activated(notes, u"a new window"_s);
    EXPECT_NE(front.window()->handle, handle);
}

TEST_F(FrontWindowTest, goesWithItsApplication) {
    openNotes();
    front.gone(":1.7");
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre(u"nobody"_s));
}

TEST_F(FrontWindowTest, waitsForTheProcessOfAnApplication) {
    const ObjectReference early{":1.9", "/1"};
    front.activated(early, u"early"_s);
    EXPECT_FALSE(front.window());
    front.appeared(":1.9", 300);
    ASSERT_TRUE(front.window());
    EXPECT_EQ(front.window()->processIdentifier, 300);
}

TEST_F(FrontWindowTest, isNobodyWhenTheCompositorMeansAnUnknownProgram) {
    openNotes();
    focus(1, u"notes - Mousepad"_s, u"mousepad"_s);
    focus(2, u"root@host: ~"_s, u"foot"_s);
    EXPECT_THAT(log, IsEmpty());
    scheduler.advance(FrontWindow::absence + 0.001);
    EXPECT_THAT(log, ElementsAre(u"nobody"_s)) << "the application never took its claim back";
    focus(1, u"notes - Mousepad"_s, u"mousepad"_s);
    EXPECT_EQ(title(), u"notes - Mousepad"_s);
}

TEST_F(FrontWindowTest, isNobodyWhenTheCompositorMeansNoWindow) {
    openNotes();
    front.focused(FocusedToplevel{});
    scheduler.advance(1);
    EXPECT_EQ(title(), u"nobody"_s);
    front.focused(std::nullopt);
    EXPECT_EQ(title(), u"notes - Mousepad"_s);
}

TEST_F(FrontWindowTest, isTheOneThatBothAgreeOnWhateverTheOrder) {
    focus(1, u"notes - Mousepad"_s, u"mousepad"_s);
    openNotes();
    // The compositor tells first.
    focus(2, u"Untitled — FeatherPad"_s, u"featherpad"_s);
    front.activated(draft, u"Untitled"_s);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s)) << "the other claim stands no more";
    front.deactivated(notes);
    // The application tells first.
    front.deactivated(draft);
    front.activated(notes, u"notes - Mousepad"_s);
    focus(1, u"notes - Mousepad"_s, u"mousepad"_s);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s, u"notes - Mousepad"_s));
    // A claim of the one that has lost the focus.
    front.activated(draft, u"Untitled"_s);
    scheduler.advance(1);
    EXPECT_THAT(log, ElementsAre(u"Untitled"_s, u"notes - Mousepad"_s));
}

TEST_F(FrontWindowTest, believesAnApplicationWhoseTitlesDifferButNotItsName) {
    focus(1, u"Text Editor"_s, u"org.example.Mousepad"_s);
    front.activated(notes, u"notes"_s);
    EXPECT_EQ(title(), u"notes"_s);
}

TEST_F(FrontWindowTest, forgetsAllWhenTheBusIsLost) {
    openNotes();
    front.clear();
    EXPECT_THAT(log, ElementsAre(u"nobody"_s));
    front.activated(notes, u"notes - Mousepad"_s);
    EXPECT_FALSE(front.window()) << "its process is not known any more";
}

} // namespace
} // namespace orvantile::platform::wayland
