#include "platform/linux/desktop/accessibilitysettings/OpenPage.h"
#include "platform/linux/desktop/accessibilitysettings/SettingsPages.h"
#include "support/QtPrinting.h"
#include "unit/accessibilitysettings/FakeDesktop.h"

#include <cerrno>
#include <gmock/gmock.h>
#include <sys/wait.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// Desktops as their packages install them.
class OpenPageTest : public ::testing::Test {
protected:
    void installXfce() const {
        fake.installProgram(u"xfce4-accessibility-settings"_s);
        fake.installEntry(u"xfce4-accessibility-settings.desktop"_s,
                          "Exec=xfce4-accessibility-settings\nOnlyShowIn=XFCE;\n");
    }

    void installMate() const {
        fake.installProgram(u"mate-at-properties"_s);
        fake.installEntry(u"mate-at-properties.desktop"_s, "Exec=mate-at-properties\nOnlyShowIn=MATE;\n");
    }

    void installKde() const {
        fake.installProgram(u"systemsettings"_s);
        fake.installEntry(u"systemsettings.desktop"_s, "Exec=systemsettings\nOnlyShowIn=KDE;\n");
    }

    void installCinnamon() const {
        fake.installProgram(u"cinnamon-settings"_s);
        fake.installEntry(u"cinnamon-settings-universal-access.desktop"_s,
                          "Exec=cinnamon-settings universal-access\nOnlyShowIn=X-Cinnamon;\n");
    }

    void installLxqt() const {
        fake.installProgram(u"lxqt-config"_s);
        fake.installEntry(u"lxqt-config.desktop"_s, "Exec=lxqt-config\nOnlyShowIn=LXQt;\n");
    }

    void installGnome() const {
        fake.installProgram(u"gnome-control-center"_s);
        fake.installEntry(u"gnome-universal-access-panel.desktop"_s,
                          "Exec=gnome-control-center universal-access\nNoDisplay=true\n");
    }

    [[nodiscard]] bool open(const QString& desktop) const {
        return openFirst(accessibilityPages(desktop), fake.launch());
    }

    /// What is started on that desktop.
    [[nodiscard]] QString opened(const QString& desktop) const {
        return open(desktop) ? fake.awaitCommand() : u"nothing"_s;
    }

    test::FakeDesktop fake;
};

TEST_F(OpenPageTest, eachDesktopShowsItsOwnPageThoughOthersAreInstalled) {
    installXfce();
    installMate();
    installKde();
    installCinnamon();
    installLxqt();
    installGnome();
    EXPECT_EQ(opened(u"XFCE"_s), u"xfce4-accessibility-settings"_s);
    EXPECT_EQ(opened(u"MATE"_s), u"mate-at-properties"_s);
    EXPECT_EQ(opened(u"KDE"_s), u"systemsettings|kcm_access"_s);
    EXPECT_EQ(opened(u"X-Cinnamon"_s), u"cinnamon-settings|universal-access"_s);
    EXPECT_EQ(opened(u"LXQt"_s), u"lxqt-config"_s);
    EXPECT_EQ(opened(u"GNOME"_s), u"gnome-control-center|universal-access"_s) << "no bus: by its entry";
    EXPECT_EQ(opened(u"ubuntu:GNOME"_s), u"gnome-control-center|universal-access"_s);
    EXPECT_EQ(opened(u"Nameless:LXQt:KDE"_s), u"lxqt-config"_s) << "in the order of the names";
    EXPECT_EQ(opened(u"kde"_s), u"systemsettings|kcm_access"_s);
}

TEST_F(OpenPageTest, unknownDesktopsShowWhatIsInstalled) {
    EXPECT_EQ(opened(u"Nameless"_s), u"nothing"_s);
    installLxqt();
    EXPECT_EQ(opened(u"Nameless"_s), u"lxqt-config"_s);
    EXPECT_EQ(opened(QString()), u"lxqt-config"_s);
    installKde();
    EXPECT_EQ(opened(u"::"_s), u"systemsettings|kcm_access"_s);
    EXPECT_EQ(opened(u"XFCE"_s), u"systemsettings|kcm_access"_s) << "named, but not installed";
}

TEST_F(OpenPageTest, plasmaIsAskedInItsSeveralWays) {
    fake.installProgram(u"kcmshell5"_s);
    EXPECT_EQ(opened(u"KDE"_s), u"kcmshell5|kcm_access"_s);
    fake.installProgram(u"kcmshell6"_s);
    EXPECT_EQ(opened(u"KDE"_s), u"kcmshell6|kcm_access"_s);
    installKde();
    EXPECT_EQ(opened(u"KDE"_s), u"systemsettings|kcm_access"_s);
    fake.installEntry(u"kcm_access.desktop"_s, "Exec=systemsettings kcm_access --from-entry\n");
    EXPECT_EQ(opened(u"KDE"_s), u"systemsettings|kcm_access|--from-entry"_s);
}

TEST_F(OpenPageTest, entriesThatCannotBeUsedAreSkipped) {
    installMate();
    const auto entry = u"xfce4-accessibility-settings.desktop"_s;
    fake.installEntry(entry, "Exec=xfce4-accessibility-settings\n");
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s) << "its program is not there";
    installXfce();
    fake.installEntry(entry, "Exec=xfce4-accessibility-settings\nTryExec=absent\n");
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s);
    fake.installEntry(entry, "Exec=xfce4-accessibility-settings\nTerminal=true\n");
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s);
    fake.installEntry(entry, "Exec=\"unfinished\n");
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s);
    fake.installEntry(entry, QByteArray(100'000, '\xff'));
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s);
    installXfce();
    fake.installEntry(entry, "Hidden=true\n", u"own"_s);
    EXPECT_EQ(opened(u"XFCE"_s), u"mate-at-properties"_s) << "the user has removed it";
    fake.installEntry(entry, "Exec=xfce4-accessibility-settings --own\n", u"own"_s);
    EXPECT_EQ(opened(u"XFCE"_s), u"xfce4-accessibility-settings|--own"_s);
}

TEST_F(OpenPageTest, theTokenIsHandedOnAndOldOnesAreNot) {
    installXfce();
    fake.setVariable(u"DESKTOP_STARTUP_ID"_s, u"old"_s);
    fake.setVariable(u"XDG_ACTIVATION_TOKEN"_s, u"old"_s);
    fake.setVariable(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
    ASSERT_TRUE(open(u"XFCE"_s));
    const auto without = fake.awaitStarted();
    ASSERT_TRUE(without && without->size() == 6);
    EXPECT_EQ(without->mid(1, 3), (QStringList{QString(), QString(), QString()}));
    fake.setToken(u"new_TIME7"_s);
    ASSERT_TRUE(open(u"XFCE"_s));
    const auto with = fake.awaitStarted();
    ASSERT_TRUE(with && with->size() == 6);
    EXPECT_EQ(with->mid(1, 3), (QStringList{u"new_TIME7"_s, u"new_TIME7"_s, QString()}));
}

TEST_F(OpenPageTest, programsStartInTheirFolderAndAreNobodysChildren) {
    installXfce();
    ASSERT_TRUE(open(u"XFCE"_s));
    auto told = fake.awaitStarted();
    ASSERT_TRUE(told && told->size() == 6);
    EXPECT_EQ(told->at(4), fake.path(u"home"_s));
    fake.installEntry(u"xfce4-accessibility-settings.desktop"_s,
                      "Exec=xfce4-accessibility-settings\nPath=" + fake.path(u"system"_s).toUtf8() + '\n');
    ASSERT_TRUE(open(u"XFCE"_s));
    told = fake.awaitStarted();
    ASSERT_TRUE(told && told->size() == 6);
    EXPECT_EQ(told->at(4), fake.path(u"system"_s));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD) << "nothing is left to be waited for";
}

TEST_F(OpenPageTest, aShellHasNoPart) {
    fake.installProgram(u"settings"_s);
    fake.installEntry(u"xfce4-accessibility-settings.desktop"_s, R"(Exec=settings $HOME ; "`id`" > out)");
    EXPECT_EQ(opened(u"XFCE"_s), u"settings|$HOME|;|`id`|>|out"_s);
}

} // namespace
} // namespace orvantile::platform::desktop
