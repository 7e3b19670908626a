// The desktop launches the program over the session bus, as its desktop file allows.

#include "support/QtPrinting.h"
#include "support/desktop/PrivateSession.h"
#include "support/desktop/SessionBusCalls.h"
#include "support/desktop/WindowWatcher.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::HasSubstr;

const auto program = QStringLiteral(ORVANTILE_EXECUTABLE);
const auto name = u"org.orvantile.Orvantile"_s;
const auto path = u"/org/orvantile/Orvantile"_s;
const auto title = u"Orvantile Preferences"_s;

/// A session in which the program is installed and does not run.
class BusActivation : public ::testing::Test {
protected:
    BusActivation() {
        session.writeFile(u".local/share/dbus-1/services/"_s + name + u".service"_s,
                          (u"[D-BUS Service]\nName="_s + name + u"\nExec="_s + program + u'\n').toUtf8());
        session.startSessionBus();
    }

    /// What launchers do with a program whose desktop file says that the bus starts it. Their exit status.
    [[nodiscard]] std::optional<int> launch() const {
        return session.start(u"gapplication"_s, {u"launch"_s, name})->awaitExit();
    }

    /// Calls a method of the program; its exit status, and what it complained about.
    [[nodiscard]] std::pair<std::optional<int>, std::string> call(const QString& method,
                                                                  const QStringList& arguments) const {
        const auto caller =
            session.start(u"gdbus"_s, QStringList{u"call"_s, u"--session"_s, u"--dest"_s, name,
                                                  u"--object-path"_s, path, u"--method"_s, method} +
                                          arguments);
        const auto status = caller->awaitExit();
        return {status, caller->standardError().toStdString()};
    }

    [[nodiscard]] pid_t owner() const { return SessionBusCalls(session.sessionBusAddress()).ownerOf(name); }

    PrivateSession session{{.sessionBus = false, .accessibility = false}};
    WindowWatcher windows{session.display()};
};

TEST_F(BusActivation, startsTheProgramAndOpensThePreferencesOfTheRunningOne) {
    EXPECT_EQ(owner(), 0);
    EXPECT_EQ(launch(), 0);
    const auto preferences = windows.awaitActive(titled(title));
    EXPECT_EQ(owner(), preferences.process);
    windows.close(preferences.handle);
    windows.awaitGone(preferences.handle);
    EXPECT_EQ(launch(), 0);
    EXPECT_EQ(windows.awaitActive(titled(title)).process, preferences.process);
}

TEST_F(BusActivation, aDirectLaunchFindsTheCopyThatTheBusHasStarted) {
    EXPECT_EQ(launch(), 0);
    const auto preferences = windows.awaitActive(titled(title));
    windows.close(preferences.handle);
    windows.awaitGone(preferences.handle);
    EXPECT_EQ(session.start(program)->awaitExit(), 0);
    EXPECT_EQ(windows.awaitActive(titled(title)).process, preferences.process);
}

TEST_F(BusActivation, offersTheInterfaceAndRefusesWhatItCannotDo) {
    const auto running = session.start(program);
    const auto preferences = windows.awaitActive(titled(title));
    EXPECT_EQ(call(u"org.freedesktop.DBus.Peer.Ping"_s, {}).first, 0);
    EXPECT_EQ(call(u"org.freedesktop.DBus.Peer.GetMachineId"_s, {}).first, 0);

    windows.close(preferences.handle);
    windows.awaitGone(preferences.handle);
    EXPECT_EQ(call(u"org.freedesktop.Application.Open"_s, {u"['file:///etc/hosts']"_s, u"{}"_s}).first, 0);
    windows.awaitActive(titled(title));

    EXPECT_THAT(
        call(u"org.freedesktop.Application.ActivateAction"_s, {u"explode"_s, u"[]"_s, u"{}"_s}).second,
        HasSubstr("There is no action “explode”."));
    // Unlike the other caller this one does not look before what is wanted.
    const auto careless =
        session.start(u"dbus-send"_s, {u"--session"_s, u"--print-reply"_s, u"--dest="_s + name, path,
                                       u"org.freedesktop.Application.Activate"_s, u"int32:5"_s});
    EXPECT_EQ(careless->awaitExit(), 1);
    EXPECT_THAT(careless->standardError().toStdString(), HasSubstr("InvalidArgs"));
    EXPECT_EQ(call(u"org.freedesktop.Application.Activate"_s,
                   {u"{'desktop-startup-id': <5>, 'activation-token': <['x']>, 'other': <{'a': <1>}>}"_s})
                  .first,
              0);
    EXPECT_TRUE(running->isRunning());
}

} // namespace
} // namespace orvantile::test
