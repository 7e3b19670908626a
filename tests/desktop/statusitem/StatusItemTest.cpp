#include "platform/linux/desktop/QtScheduler.h"
#include "platform/linux/desktop/statusitem/LinuxStatusBar.h"
#include "platform/null/NullPlatform.h"
#include "support/desktop/CurrentSession.h"
#include "support/desktop/KeyInjector.h"
#include "support/desktop/PanelHost.h"
#include "support/desktop/Screenshot.h"
#include "support/desktop/WindowWatcher.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QStringList>
#include <QTimer>
#include <gmock/gmock.h>
#include <optional>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using platform::MenuAction;
using platform::MenuItem;
using ::testing::ElementsAre;

/// Turns the main loop until `done` holds. False at the deadline.
bool await(const std::function<bool()>& done, std::chrono::milliseconds time = patience) {
    const QDeadlineTimer deadline(time);
    while (!done()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QEventLoop loop;
        QTimer::singleShot(10, &loop, &QEventLoop::quit);
        loop.exec();
    }
    return true;
}

/// Where two pictures of the screen differ.
QRect differenceBetween(const QImage& left, const QImage& right) {
    QRect difference;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            if (left.pixel(x, y) != right.pixel(x, y)) {
                difference |= QRect(x, y, 1, 1);
            }
        }
    }
    return difference;
}

class StatusItemTest : public ::testing::TestWithParam<PanelHost> {
protected:
    StatusItemTest() : session(CurrentSession::get()), watcher(session.display()), hands(session.display()) {
        hands.moveTo({5, 5});
    }

    ~StatusItemTest() override {
        item.reset();
        panel.reset();
    }

    void startPanel() {
        panel = test::startPanel(session, GetParam());
        watcher.awaitWindow(ofProcess(panel->processIdentifier()));
        settle();
    }

    /// Waits until the screen has not changed for a while.
    void settle() {
        auto former = takeScreenshot(session.display());
        QElapsedTimer same;
        same.start();
        ASSERT_TRUE(await([&] {
            const auto now = takeScreenshot(session.display());
            if (now != former) {
                former = now;
                same.restart();
            }
            return same.elapsed() > 700;
        }));
        empty = former;
    }

    void createItem() {
        item = bar.createItem();
        show(u"keyboard"_s);
        menu = makeMenu();
        item->setMenu(menu);
    }

    void show(const QString& symbol) { item->setImage(bar.symbolImage(symbol, u"Orvantile"_s)); }

    std::shared_ptr<platform::Menu> makeMenu() {
        const auto entry = [this](const QString& title) {
            return MenuItem{
                .title = title, .action = MenuAction::call, .handler = [this, title] { chosen << title; }};
        };
        auto enabled = entry(u"Enabled"_s);
        enabled.tag = 1;
        enabled.on = true;
        auto made = std::make_shared<platform::Menu>(std::vector<MenuItem>{
            enabled, MenuItem::separator(), entry(u"Preferences…"_s), entry(u"Check for Updates…"_s),
            MenuItem::separator(),
            MenuItem{
                .title = u"Quit Orvantile"_s, .action = MenuAction::terminate, .keyEquivalent = u"q"_s}});
        made->willOpen = [this](platform::Menu&) { ++openings; };
        return made;
    }

    /// Where the icon has appeared on the panel; waits for it.
    std::optional<QRect> awaitIcon(std::chrono::milliseconds time = patience) {
        QRect place;
        const bool appeared = await(
            [&] {
                place = differenceBetween(empty, takeScreenshot(session.display()));
                return place.width() >= 10 && place.height() >= 6;
            },
            time);
        return appeared ? std::optional(place) : std::nullopt;
    }

    /// Opens the menu with the mouse and waits for it.
    std::optional<QRect> openMenu(QPoint icon) {
        hands.click(icon);
        std::vector<Window> open;
        if (!await([&] {
                open = poppedUp();
                return !open.empty();
            })) {
            return std::nullopt;
        }
        settleMenu();
        return open.back().frame;
    }

    /// Windows outside the window manager's care that are large enough for a menu: the toolkit's own pop-ups
    /// do not say what they are.
    [[nodiscard]] std::vector<Window> poppedUp() const {
        const XConnection x(session.display());
        std::vector<Window> found;
        for (const auto handle : rootChildren(x)) {
            const auto window = lookAt(x, handle);
            if (window.mapped && window.overrideRedirect && window.frame.height() > 60 &&
                window.frame.width() > 60) {
                found.push_back(window);
            }
        }
        return found;
    }

    void settleMenu() {
        (void)await([] { return false; }, std::chrono::milliseconds(400));
    }

    void save(const QString& name) {
        if (qEnvironmentVariableIsSet("ORVANTILE_TEST_PICTURES")) {
            takeScreenshot(session.display())
                .save(qEnvironmentVariable("ORVANTILE_TEST_PICTURES") + u'/' + nameOf(GetParam()) + u'-' +
                      name + u".png"_s);
        }
    }

    PrivateSession& session;
    WindowWatcher watcher;
    KeyInjector hands;
    std::unique_ptr<platform::Platform> others = platform::makeNullPlatform();
    platform::desktop::QtScheduler scheduler;
    platform::desktop::LinuxStatusBar bar{scheduler, *others->appearance};
    std::unique_ptr<ChildProcess> panel;
    std::unique_ptr<platform::StatusItem> item;
    std::shared_ptr<platform::Menu> menu;
    QImage empty; ///< the screen without the item
    QStringList chosen;
    int openings = 0;
};

TEST_P(StatusItemTest, appearsAndOpensItsMenu) {
    startPanel();
    createItem();
    const auto icon = awaitIcon();
    save(u"icon"_s);
    ASSERT_TRUE(icon);
    const auto frame = openMenu(icon->center());
    save(u"menu"_s);
    ASSERT_TRUE(frame);
    EXPECT_EQ(openings, 1);
    const QPoint preferences(frame->center().x(), frame->top() + frame->height() * 39 / 100);
    // As a hand does it: the pointer comes over the entry before the button goes down.
    for (const int distance : {12, 8, 4, 0}) {
        hands.moveTo(preferences - QPoint(distance, distance / 4));
        (void)await([] { return false; }, std::chrono::milliseconds(30));
    }
    hands.click(preferences);
    EXPECT_TRUE(await([&] { return !chosen.isEmpty(); }));
    EXPECT_THAT(chosen, ElementsAre(u"Preferences…"_s));
}

INSTANTIATE_TEST_SUITE_P(, StatusItemTest,
                         ::testing::Values(PanelHost::xfce, PanelHost::lxqt, PanelHost::tint2),
                         [](const auto& host) { return nameOf(host.param).remove(u'-').toStdString(); });

} // namespace
} // namespace orvantile::test
