#include "platform/linux/desktop/DesktopAppearance.h"

#include "ScriptedPortal.h"
#include "support/desktop/ChildProcess.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gmock/gmock.h>
#include <optional>
#include <thread>

namespace orvantile::platform::desktop {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Qt::StringLiterals::operator""_s;
using test::colorScheme;

constexpr std::uint32_t noPreference = 0;
constexpr std::uint32_t dark = 1;
constexpr std::uint32_t light = 2;

class DesktopAppearanceTest : public ::testing::Test {
protected:
    DesktopAppearanceTest()
        : bus({u"dbus-daemon"_s,
               {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s, u"--address"_s,
                u"unix:path="_s + folder.filePath(u"bus"_s)},
               QProcessEnvironment::systemEnvironment(),
               folder.path()}) {
        const auto line = bus.awaitLine();
        EXPECT_TRUE(line);
        address = QString::fromLatin1(line.value_or(QByteArray()));
        fs::create_directory(configuration);
        setPaletteDark(false);
    }

    ~DesktopAppearanceTest() override { setPaletteDark(false); }

    static void setPaletteDark(bool toDark) {
        QGuiApplication::setPalette(QPalette(toDark ? QColor(40, 40, 40) : QColor(240, 240, 240)));
    }

    void start(bool kde = false) {
        appearance.emplace(DesktopAppearance::Sources{address.toStdString(), configuration, kde});
        token = appearance->observeChanges([this] {
            ++changes;
            lastSeen = appearance->isDark();
        });
    }

    void write(const std::string& name, const std::string& text) const {
        const auto path = configuration / name;
        fs::create_directories(path.parent_path());
        std::ofstream(path.string() + ".new") << text;
        fs::rename(path.string() + ".new", path); // as desktops do
    }

    template <typename Condition>
    [[nodiscard]] static bool await(Condition condition) {
        const QDeadlineTimer deadline(test::patience);
        while (!condition() && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 50);
        }
        return condition();
    }

    [[nodiscard]] bool awaitDark(bool value) {
        return await([&] { return appearance->isDark() == value; });
    }

    /// The portal has answered all three questions: a value that it says afterwards has arrived.
    [[nodiscard]] bool awaitQuestions(int count) {
        return await([&] { return portal->questions() >= count; });
    }

    QTemporaryDir folder;
    fs::path configuration = fs::path(folder.path().toStdString()) / "config";
    test::ChildProcess bus;
    QString address;
    std::optional<test::ScriptedPortal> portal;
    std::optional<DesktopAppearance> appearance;
    Appearance::Token token;
    int changes = 0;
    std::optional<bool> lastSeen;
};

TEST_F(DesktopAppearanceTest, isWhatThePortalSays) {
    portal.emplace(address);
    portal->values[colorScheme] = dark;
    portal->appear();
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    start();
    EXPECT_TRUE(awaitDark(true));
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(lastSeen, true);
}

TEST_F(DesktopAppearanceTest, isLightWhenThePortalSaysSoAndAllElseIsDark) {
    portal.emplace(address);
    portal->values[colorScheme] = light;
    portal->appear();
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=1\n");
    setPaletteDark(true);
    start();
    EXPECT_TRUE(appearance->isDark()); // until the portal has answered
    EXPECT_TRUE(awaitDark(false));
}

TEST_F(DesktopAppearanceTest, followsThePortal) {
    portal.emplace(address);
    portal->values[colorScheme] = light;
    portal->appear();
    start();
    ASSERT_TRUE(awaitQuestions(3));
    portal->change(colorScheme, dark);
    EXPECT_TRUE(awaitDark(true));
    portal->change(colorScheme, light);
    EXPECT_TRUE(awaitDark(false));
    EXPECT_EQ(changes, 2);
}

TEST_F(DesktopAppearanceTest, looksFurtherWhenThePortalHasNoPreference) {
    portal.emplace(address);
    portal->values[colorScheme] = dark;
    portal->appear();
    start();
    EXPECT_TRUE(awaitDark(true));
    portal->change(colorScheme, noPreference);
    EXPECT_TRUE(awaitDark(false));
    portal->change(test::gnomeColorScheme, u"prefer-dark"_s);
    EXPECT_TRUE(awaitDark(true));
    portal->change(test::gnomeColorScheme, u"default"_s);
    EXPECT_TRUE(awaitDark(false));
    portal->change(test::gnomeTheme, u"Yaru-dark"_s);
    EXPECT_TRUE(awaitDark(true));
}

TEST_F(DesktopAppearanceTest, asksAPortalThatOnlyHasTheYoungerMethod) {
    portal.emplace(address);
    portal->knowsOnlyReadOne = true;
    portal->values[colorScheme] = dark;
    portal->appear();
    start();
    EXPECT_TRUE(awaitDark(true));
}

TEST_F(DesktopAppearanceTest, ignoresWhatIsOfAnotherType) {
    portal.emplace(address);
    portal->values[colorScheme] = u"dark"_s;
    portal->appear();
    start();
    ASSERT_TRUE(awaitQuestions(3));
    portal->change(colorScheme, -1);
    portal->change(test::gnomeColorScheme, u"prefer-dark"_s); // arrives after it
    EXPECT_TRUE(awaitDark(true));
    EXPECT_EQ(changes, 1);
}

TEST_F(DesktopAppearanceTest, findsAPortalThatComesLateAndOneThatComesBack) {
    start();
    EXPECT_FALSE(appearance->isDark());
    portal.emplace(address);
    portal->values[colorScheme] = dark;
    portal->appear();
    EXPECT_TRUE(awaitDark(true));
    portal->disappear();
    portal->values[colorScheme] = light;
    portal->appear();
    EXPECT_TRUE(awaitDark(false));
}

TEST_F(DesktopAppearanceTest, waitsForNoPortalThatHangsAndHearsItLater) {
    portal.emplace(address);
    portal->values[colorScheme] = dark;
    portal->hangs = true;
    portal->appear();
    start();
    ASSERT_TRUE(awaitQuestions(3));
    EXPECT_FALSE(appearance->isDark());
    portal->resume();
    EXPECT_TRUE(awaitDark(true));
}

TEST_F(DesktopAppearanceTest, waitsForNoBusThatHangs) {
    bus.signal(SIGSTOP);
    auto shortest = Clock::duration::max(); // whatever else the machine was doing
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto begin = Clock::now();
        start();
        shortest = std::min(shortest, Clock::now() - begin);
        QCoreApplication::processEvents();
    }
    bus.signal(SIGCONT);
    EXPECT_LT(shortest, std::chrono::milliseconds(5));
    EXPECT_FALSE(appearance->isDark());
}

TEST_F(DesktopAppearanceTest, keepsToTheFilesWithoutABus) {
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Arc-Dark\n");
    for (const auto* nowhere : {"", "unix:path=/nowhere/bus", "tcp:host=example.org", "rubbish"}) {
        const DesktopAppearance alone({nowhere, configuration, false});
        EXPECT_TRUE(alone.isDark()) << nowhere;
    }
}

TEST_F(DesktopAppearanceTest, outlivesTheBus) {
    portal.emplace(address);
    portal->values[colorScheme] = dark;
    portal->appear();
    start();
    EXPECT_TRUE(awaitDark(true));
    portal.reset();
    bus.end();
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    QCoreApplication::processEvents();
    EXPECT_TRUE(appearance->isDark()); // as was said last
}

TEST_F(DesktopAppearanceTest, followsGtksSettings) {
    start();
    EXPECT_FALSE(appearance->isDark());
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita-dark\n");
    EXPECT_TRUE(awaitDark(true));
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Arc-Darker\n");
    EXPECT_TRUE(awaitDark(false));
    write("gtk-4.0/settings.ini", "[Settings]\ngtk-application-prefer-dark-theme=true\n");
    EXPECT_TRUE(awaitDark(true));
    fs::remove_all(configuration / "gtk-4.0");
    EXPECT_TRUE(awaitDark(false));
}

TEST_F(DesktopAppearanceTest, noticesSettingsThatComeTogetherWithTheirFolder) {
    start();
    for (int round = 0; round < 40; ++round) {
        const auto folderOfGtk = configuration / "gtk-3.0";
        std::thread desktop([&] {
            fs::create_directories(folderOfGtk);
            std::ofstream(folderOfGtk / "settings.ini")
                << "[Settings]\ngtk-application-prefer-dark-theme=1\n";
        });
        EXPECT_TRUE(awaitDark(true)) << "round " << round;
        desktop.join();
        fs::remove_all(folderOfGtk);
        ASSERT_TRUE(awaitDark(false)) << "round " << round;
    }
}

TEST_F(DesktopAppearanceTest, followsKdesColours) {
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Breeze\n");
    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
    start(true);
    EXPECT_TRUE(appearance->isDark());
    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=239,240,241\n");
    EXPECT_TRUE(awaitDark(false));
    write("kdeglobals", "[General]\nColorScheme=BreezeDark\n");
    EXPECT_TRUE(awaitDark(true));
    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=1,2\n"); // says nothing, so that GTK's does
    EXPECT_TRUE(awaitDark(false));
}

TEST_F(DesktopAppearanceTest, looksAtKdesColoursLastElsewhere) {
    write("kdeglobals", "[Colors:Window]\nBackgroundNormal=42,46,50\n");
    start();
    EXPECT_TRUE(appearance->isDark());
    write("gtk-3.0/settings.ini", "[Settings]\ngtk-theme-name=Adwaita\n");
    EXPECT_TRUE(awaitDark(false));
}

TEST_F(DesktopAppearanceTest, followsThePaletteWhenNothingElseSays) {
    start();
    EXPECT_FALSE(appearance->isDark());
    setPaletteDark(true);
    EXPECT_TRUE(awaitDark(true));
    setPaletteDark(false);
    EXPECT_TRUE(awaitDark(false));
    EXPECT_EQ(changes, 2);
}

TEST_F(DesktopAppearanceTest, tellsNobodyWhoseTokenHasGone) {
    start();
    token.reset();
    setPaletteDark(true);
    EXPECT_TRUE(awaitDark(true));
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace orvantile::platform::desktop
