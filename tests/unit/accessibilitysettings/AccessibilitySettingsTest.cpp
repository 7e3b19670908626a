#include "platform/linux/desktop/accessibilitysettings/AccessibilitySettings.h"

#include "platform/linux/desktop/accessibilitysettings/OpenPage.h"
#include "platform/linux/desktop/accessibilitysettings/SettingsPages.h"
#include "support/QtPrinting.h"
#include "unit/accessibilitysettings/FakeDesktop.h"
#include "unit/accessibilitysettings/FakeSettingsService.h"

#include <QElapsedTimer>
#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using test::FakeDesktop;
using test::FakeSettingsService;
using test::PrivateBus;
using Manner = FakeSettingsService::Manner;
using Qt::StringLiterals::operator""_s;

const auto settingsName = u"org.gnome.Settings"_s;

/// This process's own environment is that of a fake desktop.
class AccessibilitySettingsTest : public ::testing::Test {
protected:
    AccessibilitySettingsTest() {
        fake.setVariable(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        fake.installProgram(u"gnome-control-center"_s);
        fake.installEntry(u"gnome-universal-access-panel.desktop"_s,
                          "Exec=gnome-control-center universal-access\n");
        for (const auto& name : fake.launch().environment.keys()) {
            replaced.insert(name, qEnvironmentVariable(name.toUtf8().constData()));
            qputenv(name.toUtf8().constData(), fake.launch().environment.value(name).toUtf8());
        }
        qputenv("XDG_CURRENT_DESKTOP", "GNOME");
    }

    ~AccessibilitySettingsTest() override {
        qunsetenv("XDG_CURRENT_DESKTOP");
        for (const auto& name : replaced.keys()) {
            qputenv(name.toUtf8().constData(), replaced.value(name).toUtf8());
        }
    }

    PrivateBus bus;
    FakeDesktop fake;
    QProcessEnvironment replaced;
};

TEST_F(AccessibilitySettingsTest, settingsOnTheBusAreAskedForTheirPanel) {
    const FakeSettingsService service(bus.address(), settingsName, Manner::answers);
    AccessibilitySettings settings([](const auto& receiver) { receiver(u"token_TIME5"_s); });
    settings.open();
    EXPECT_EQ(service.awaitAsked(),
              (QStringList{u"/org/gnome/Settings"_s, u"launch-panel"_s, u"universal-access"_s, u"1"_s,
                           u"desktop-startup-id=token_TIME5"_s, u"activation-token=token_TIME5"_s}));
}

TEST_F(AccessibilitySettingsTest, nothingElseIsStartedWhenTheyAnswer) {
    const FakeSettingsService service(bus.address(), settingsName, Manner::answers);
    ASSERT_TRUE(openFirst(accessibilityPages(u"GNOME"), fake.launch()));
    EXPECT_EQ(service.awaitAsked(),
              (QStringList{u"/org/gnome/Settings"_s, u"launch-panel"_s, u"universal-access"_s, u"1"_s}));
    EXPECT_EQ(fake.awaitStarted(QDeadlineTimer(0)), std::nullopt);
}

TEST_F(AccessibilitySettingsTest, settingsThatRefuseAreStartedByTheirEntry) {
    const FakeSettingsService service(bus.address(), settingsName, Manner::refuses);
    ASSERT_TRUE(openFirst(accessibilityPages(u"GNOME"), fake.launch()));
    EXPECT_EQ(service.awaitAsked().value(2), u"universal-access"_s);
    EXPECT_EQ(fake.awaitCommand(), u"gnome-control-center|universal-access"_s);
}

TEST_F(AccessibilitySettingsTest, settingsThatAreNotOnTheBusAreStartedByTheirEntry) {
    AccessibilitySettings settings;
    settings.open();
    EXPECT_EQ(fake.awaitCommand(), u"gnome-control-center|universal-access"_s);
}

TEST_F(AccessibilitySettingsTest, aBusThatIsGoneIsNoObstacle) {
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + bus.path(u"nowhere"_s).toUtf8());
    AccessibilitySettings settings;
    settings.open();
    const auto told = fake.awaitStarted();
    ASSERT_TRUE(told && told->size() == 6);
    EXPECT_EQ(told->front(), u"gnome-control-center|universal-access"_s);
    EXPECT_EQ(told->back(), QString(16, u'0')) << "signals reach what was started";
}

TEST_F(AccessibilitySettingsTest, theMainThreadNeverWaits) {
    const FakeSettingsService service(bus.address(), settingsName, Manner::keepsSilent);
    constexpr double most = 5; // milliseconds
    double quickest = 1e9;
    {
        AccessibilitySettings settings;
        for (int i = 0; i < 5; ++i) {
            QElapsedTimer clock;
            clock.start();
            settings.open();
            quickest = std::min(quickest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
        }
        EXPECT_LE(quickest, most);
        EXPECT_EQ(service.awaitAsked().value(2), u"universal-access"_s);
    } // while the answer is still being waited for
    EXPECT_EQ(fake.awaitStarted(QDeadlineTimer(0)), std::nullopt);
}

TEST_F(AccessibilitySettingsTest, aTokenThatComesTooLateOpensNothing) {
    AccessibilitySettings::TokenReceiver kept;
    {
        AccessibilitySettings settings([&](const auto& receiver) { kept = receiver; });
        settings.open();
    }
    kept(u"late"_s);
    EXPECT_EQ(fake.awaitStarted(QDeadlineTimer(0)), std::nullopt);
}

} // namespace
} // namespace orvantile::platform::desktop
