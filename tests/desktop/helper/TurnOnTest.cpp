// From accessibility that is switched off to a Qt program whose commands are named, by what the user does.

#include "desktop/helper/HelperStage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

class TurnOnTest : public ::testing::TestWithParam<int> {
protected:
    /// Asks the installed tool until it says so.
    void expectStatus(const QByteArray& expected) {
        std::optional<QByteArray> status;
        for (const QDeadlineTimer deadline(patience); !deadline.hasExpired() && status != expected;) {
            status = run({u"status"_s});
        }
        EXPECT_EQ(status, expected);
    }

    std::optional<QByteArray> run(const QStringList& arguments) {
        return stage.session().start(QStringLiteral(ORVANTILE_HELPER_SWITCH), arguments)->awaitLine();
    }

    Stage stage{{.accessibility = false}};
};

TEST_P(TurnOnTest, thePromptSwitchesTheHelperOnForTheNextSession) {
    expectStatus("off");
    stage.startOrvantile();
    const auto prompt =
        stage.windows().awaitWindow([](const Window& window) { return window.title == u"Orvantile"; });
    stage.windows().activate(prompt.handle);
    stage.keys().press(u"Return"_s);
    stage.windows().awaitGone(prompt.handle);
    expectStatus("on");

    // What an X session does when it starts.
    const auto application = menuApplication(GetParam());
    const auto program = stage.session().start(
        u"sh"_s, {u"-c"_s, u". \"$HOME/.xsessionrc\"; exec \"$0\""_s, application.program});
    stage.windows().awaitActive(ofClass(application.windowClass));
    stage.awaitCommandsOf(application);
    EXPECT_EQ(stage.fire(u"Ctrl+N"_s), u"⌃N  New"_s);

    run({u"off"_s});
    expectStatus("off");
}

INSTANTIATE_TEST_SUITE_P(Qt, TurnOnTest, ::testing::Values(ORVANTILE_QT_VERSIONS),
                         [](const auto& version) { return std::to_string(version.param); });

} // namespace
} // namespace orvantile::test
