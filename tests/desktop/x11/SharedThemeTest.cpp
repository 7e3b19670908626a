#include "platform/linux/x11/SharedTheme.h"

#include "support/desktop/CurrentSession.h"
#include "support/desktop/MainLoop.h"

#include <QFile>
#include <csignal>
#include <gmock/gmock.h>

namespace orvantile::platform::x11 {
namespace {

using test::awaitThat;
using test::CurrentSession;
using Qt::StringLiterals::operator""_s;

class SharedThemeTest : public ::testing::Test {
protected:
    SharedThemeTest() {
        connection->synchronize();
        theme.onChanged = [this] { ++changes; };
    }

    void startManager(const QByteArray& settings) {
        configuration = desktop.writeFile(u".xsettingsd"_s, settings);
        manager = desktop.start(u"xsettingsd"_s, {u"--config"_s, configuration});
    }

    /// Whether the manager handles the signal that makes it read its file again; it ends by it before.
    [[nodiscard]] bool listens() const {
        QFile status(u"/proc/%1/status"_s.arg(manager->processIdentifier()));
        static_cast<void>(status.open(QIODevice::ReadOnly));
        const auto text = status.readAll();
        constexpr QByteArrayView key("SigCgt:\t");
        const auto start = text.indexOf(key);
        constexpr qsizetype digits = 16;
        const auto caught = start < 0 ? 0 : text.mid(start + key.size(), digits).toULongLong(nullptr, 16);
        return (caught & (1ULL << (SIGHUP - 1U))) != 0;
    }

    /// The manager may be between looking at its signals and going to sleep: it is told until it has heard.
    [[nodiscard]] bool changeUntilDark(const QByteArray& settings, std::optional<bool> value) {
        desktop.writeFile(u".xsettingsd"_s, settings);
        const QDeadlineTimer deadline(test::patience);
        bool arrived = false;
        while (!arrived && !deadline.hasExpired() && awaitThat([this] { return listens(); }) &&
               ::kill(manager->processIdentifier(), SIGHUP) == 0) {
            arrived = awaitThat([&] { return theme.isDark() == value; }, QDeadlineTimer(500));
        }
        return arrived;
    }

    [[nodiscard]] bool awaitDark(std::optional<bool> value) {
        return awaitThat([&] { return theme.isDark() == value; });
    }

    test::PrivateSession& desktop = CurrentSession::get();
    std::unique_ptr<XConnection> connection = XConnection::open();
    SharedTheme theme{*connection};
    QString configuration;
    std::unique_ptr<test::ChildProcess> manager;
    int changes = 0;
};

TEST_F(SharedThemeTest, saysNothingWithoutAManager) {
    EXPECT_EQ(theme.isDark(), std::nullopt);
}

TEST_F(SharedThemeTest, followsAManagerThatComesLateChangesAndRestarts) {
    startManager("Net/ThemeName \"Adwaita-dark\"\n");
    ASSERT_TRUE(awaitDark(true));
    ASSERT_TRUE(changeUntilDark("Net/ThemeName \"Adwaita\"\n", false));
    ASSERT_TRUE(changeUntilDark("Net/ThemeName \"Adwaita\"\nGtk/ApplicationPreferDarkTheme 1\n", true));
    EXPECT_EQ(changes, 3);
    manager.reset();
    ASSERT_TRUE(awaitDark(std::nullopt));
    startManager("Net/ThemeName \"Arc-Dark\"\n");
    EXPECT_TRUE(awaitDark(true));
}

TEST_F(SharedThemeTest, isTheOneOfAManagerThatRunsAlready) {
    startManager("Net/ThemeName \"Yaru-blue-dark\"\n");
    ASSERT_TRUE(awaitDark(true));
    SharedTheme later(*connection);
    connection->synchronize();
    EXPECT_TRUE(awaitThat([&] { return later.isDark() == true; }));
}

TEST_F(SharedThemeTest, saysNothingWhereTheThemeIsNotSet) {
    startManager("Net/DoubleClickTime 400\nNet/ThemeName 7\n");
    ASSERT_TRUE(changeUntilDark("Net/ThemeName \"Adwaita-dark\"\n", true));
    EXPECT_TRUE(changeUntilDark("Net/DoubleClickTime 400\nNet/ThemeName 7\n", std::nullopt));
}

} // namespace
} // namespace orvantile::platform::x11
