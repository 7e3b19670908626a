#include "platform/linux/desktop/PermissionPrompt.h"

#include "support/VirtualScheduler.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Obstacle = PermissionPrompt::Obstacle;

class PermissionPromptTest : public ::testing::Test {
protected:
    static QMessageBox* dialog() {
        for (auto* widget : QApplication::topLevelWidgets()) {
            if (auto* box = qobject_cast<QMessageBox*>(widget); box != nullptr && box->isVisible()) {
                return box;
            }
        }
        return nullptr;
    }

    static QAbstractButton* button(const QString& text) {
        for (auto* each : dialog()->buttons()) {
            if (each->text().remove(u'&') == text) {
                return each;
            }
        }
        return nullptr;
    }

    test::VirtualScheduler scheduler;
    Obstacle obstacle = Obstacle::accessibilityOff;
    int turnedOn = 0;
    PermissionPrompt prompt{scheduler,
                            {.obstacle = [this] { return obstacle; }, .turnOn = [this] { ++turnedOn; }}};
};

TEST_F(PermissionPromptTest, givesTheBusTimeToAnswerAfterTheStart) {
    prompt.ask();
    scheduler.advance(1.9);
    EXPECT_EQ(dialog(), nullptr);
    obstacle = Obstacle::none;
    scheduler.advance(1);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(PermissionPromptTest, saysWhatIsOffAndTurnsItOn) {
    scheduler.advance(10);
    prompt.ask();
    EXPECT_EQ(dialog(), nullptr);
    scheduler.turn();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_FALSE(dialog()->isModal());
    EXPECT_EQ(dialog()->text(), QStringLiteral("Accessibility is switched off"));
    EXPECT_TRUE(dialog()->informativeText().contains(QStringLiteral("restart")));
    EXPECT_TRUE(dialog()->informativeText().contains(QStringLiteral("helper")));
    auto* turnOn = button(QStringLiteral("Turn On"));
    ASSERT_NE(turnOn, nullptr);
    turnOn->click();
    EXPECT_EQ(turnedOn, 1);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(PermissionPromptTest, goesWhenTheObstacleHasGone) {
    scheduler.advance(10);
    prompt.reconsider();
    prompt.ask();
    scheduler.turn();
    prompt.reconsider();
    ASSERT_NE(dialog(), nullptr) << "nothing has changed";
    obstacle = Obstacle::none;
    prompt.reconsider();
    EXPECT_EQ(dialog(), nullptr);
    prompt.reconsider();
    EXPECT_EQ(turnedOn, 0);
}

TEST_F(PermissionPromptTest, changesNothingWhenItIsDeclined) {
    scheduler.advance(10);
    prompt.ask();
    scheduler.turn();
    ASSERT_NE(dialog(), nullptr);
    button(QStringLiteral("Not Now"))->click();
    EXPECT_EQ(turnedOn, 0);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(PermissionPromptTest, offersNothingToTurnOnWhereKeysCannotBeHeard) {
    obstacle = Obstacle::noKeys;
    scheduler.advance(10);
    prompt.ask();
    scheduler.turn();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(button(QStringLiteral("Turn On")), nullptr);
    EXPECT_EQ(dialog()->text(), QStringLiteral("Shortcuts cannot be heard"));
}

} // namespace
} // namespace orvantile::platform::desktop
