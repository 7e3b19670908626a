#include "platform/linux/session/CombinedSession.h"

#include <QStringList>
#include <gmock/gmock.h>

namespace orvantile::platform::session {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t older = 100;
constexpr std::int32_t native = 200;
const keys::Candidates controlS{{{.control = true}, 's'}};

class OneSession final : public DesktopSession {
public:
    void start() override { ++started; }

    [[nodiscard]] std::optional<ActiveWindow> activeWindow() const override { return active; }

    [[nodiscard]] int openMenus(std::int32_t) const override { return open; }

    [[nodiscard]] bool hearsKeys() const override { return hears; }

    [[nodiscard]] QString keySources() const override { return source; }

    void drain() override { ++drained; }

    void activate(std::optional<ActiveWindow> window) {
        active = std::move(window);
        onActiveWindowChanged(active);
    }

    std::optional<ActiveWindow> active;
    QString source;
    int open = 0;
    bool hears = false;
    int started = 0;
    int drained = 0;
};

class CombinedSessionTest : public ::testing::Test {
protected:
    CombinedSessionTest() {
        both.onActiveWindowChanged = [this](const auto& window) {
            log.append(window ? window->title : u"nobody"_s);
        };
        both.onKeyPressed = [this](const auto&) { log.append(u"key"_s); };
        both.onMenuOpened = [this](std::int32_t process) { log.append(u"opened %1"_s.arg(process)); };
        both.onMenuClosed = [this](std::int32_t process) { log.append(u"closed %1"_s.arg(process)); };
    }

    OneSession inner;
    OneSession outer;
    CombinedSession both{inner, outer};
    QStringList log;
    ActiveWindow page{.handle = 1, .processIdentifier = older, .title = u"page"_s, .dialog = false};
    ActiveWindow notes{.handle = 1, .processIdentifier = native, .title = u"notes"_s, .dialog = false};
};

TEST_F(CombinedSessionTest, windowsOfTheInnerOneComeFirst) {
    outer.activate(notes);
    inner.activate(page);
    outer.activate(page); // it is a program on the bus as well
    EXPECT_EQ(both.activeWindow(), page);
    inner.activate(std::nullopt);
    outer.activate(notes);
    EXPECT_THAT(log, ElementsAre(u"notes"_s, u"page"_s, u"page"_s, u"notes"_s));
}

TEST_F(CombinedSessionTest, windowsOfBothAreNotMixedUp) {
    inner.activate(page);
    const auto handle = both.activeWindow()->handle;
    inner.activate(std::nullopt);
    outer.activate(notes);
    EXPECT_NE(both.activeWindow()->handle, handle);
}

TEST_F(CombinedSessionTest, aKeyThatBothTellIsHeardOnce) {
    inner.activate(page);
    log.clear();
    inner.onKeyPressed(controlS);
    outer.onKeyPressed(controlS);
    EXPECT_THAT(log, ElementsAre(u"key"_s));
    inner.activate(std::nullopt);
    outer.activate(notes);
    log.clear();
    inner.onKeyPressed(controlS);
    outer.onKeyPressed(controlS);
    EXPECT_THAT(log, ElementsAre(u"key"_s));
}

TEST_F(CombinedSessionTest, menusAreThoseOfTheOneInFront) {
    inner.open = 2;
    outer.open = 1;
    outer.activate(notes);
    EXPECT_EQ(both.openMenus(native), 1);
    log.clear();
    inner.onMenuOpened(older);
    outer.onMenuOpened(native);
    inner.activate(page);
    EXPECT_EQ(both.openMenus(older), 2);
    inner.onMenuClosed(older);
    outer.onMenuClosed(native);
    EXPECT_THAT(log, ElementsAre(u"opened 200"_s, u"page"_s, u"closed 100"_s));
}

TEST_F(CombinedSessionTest, hearsWhatEitherHears) {
    EXPECT_FALSE(both.hearsKeys());
    outer.hears = true;
    EXPECT_TRUE(both.hearsKeys());
    outer.source = u"outer. "_s;
    inner.source = u"inner. "_s;
    EXPECT_EQ(both.keySources(), u"outer. inner. "_s);
}

TEST_F(CombinedSessionTest, startsAndDrainsBoth) {
    both.start();
    both.drain();
    EXPECT_EQ(inner.started + outer.started, 2);
    EXPECT_EQ(inner.drained + outer.drained, 2);
    EXPECT_THAT(log, IsEmpty());
}

TEST_F(CombinedSessionTest, leavesBothWithoutItWhenItGoes) {
    OneSession one;
    OneSession other;
    { const CombinedSession brief(one, other); }
    EXPECT_FALSE(one.onKeyPressed);
    EXPECT_FALSE(other.onActiveWindowChanged);
}

} // namespace
} // namespace orvantile::platform::session
