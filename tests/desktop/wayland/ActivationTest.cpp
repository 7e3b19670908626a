// The preferences come to the front on a compositor that lets windows do so only for the user.

#include "desktop/statusitem/ScriptedBar.h"
#include "desktop/wayland/OtherCompositorStage.h"
#include "support/QtPrinting.h"
#include "support/wayland/Bystander.h"
#include "support/wayland/KWinInput.h"

#include <gmock/gmock.h>
#include <linux/input-event-codes.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class ActivationTest : public ::testing::Test {
protected:
    ActivationTest() {
        stage.startOrvantile();
        if (!stage.awaitPreferences()) {
            throw std::runtime_error("the preferences do not come: " + stage.complaints());
        }
    }

    /// Lets the user work with another window, whose token is returned.
    QByteArray workElsewhere() {
        elsewhere.emplace(stage.session().compositorSocket());
        return elsewhere->awaitFocus() ? elsewhere->activationToken() : QByteArray();
    }

    void closePreferences() {
        KWinInput(stage.session().compositorSocket()).press({KEY_ESC});
        ASSERT_TRUE(stage.awaitPreferencesClosed());
    }

    /// Launches the program once more, as a launcher does in that window.
    [[nodiscard]] std::optional<int> launchAgain(const QByteArray& token) {
        stage.session().setVariable(u"XDG_ACTIVATION_TOKEN"_s, QString::fromUtf8(token));
        return stage.session().start(QStringLiteral(ORVANTILE_PROGRAM))->awaitExit();
    }

    OtherCompositorStage stage{OtherWaylandSession::Compositor::kwin, {}};
    std::optional<Bystander> elsewhere;
};

TEST_F(ActivationTest, openPreferencesComeToTheFrontWithTheTokenOfASecondLaunch) {
    const auto token = workElsewhere();
    ASSERT_NE(token, "");
    EXPECT_EQ(launchAgain(token), 0);
    EXPECT_TRUE(elsewhere->awaitLossOfFocus());
}

TEST_F(ActivationTest, closedPreferencesComeToTheFrontWithTheTokenOfASecondLaunch) {
    closePreferences();
    const auto token = workElsewhere();
    ASSERT_NE(token, "");
    EXPECT_EQ(launchAgain(token), 0);
    EXPECT_TRUE(elsewhere->awaitLossOfFocus());
    EXPECT_TRUE(stage.awaitPreferences());
}

TEST_F(ActivationTest, preferencesComeToTheFrontWithTheTokenOfTheBarThatShowsTheItem) {
    ScriptedBar bar(stage.session().sessionBusAddress());
    bar.appear();
    ASSERT_TRUE(bar.await([&] { return !bar.items().isEmpty(); }));
    for (int round = 0; round < 2; ++round) {
        const auto token = workElsewhere();
        ASSERT_NE(token, "");
        ASSERT_TRUE(bar.giveToken(token));
        ASSERT_TRUE(bar.choose(u"Preferences…"_s));
        EXPECT_TRUE(elsewhere->awaitLossOfFocus());
        elsewhere.reset();
    }
}

} // namespace
} // namespace orvantile::test
