#include "platform/linux/helper/switch/HelperFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace orvantile::platform::helper {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

class HelperFilesTest : public ::testing::Test {
protected:
    HelperFilesTest() {
        QDir(folder.path()).mkpath(u"home"_s);
        write(u"it's installed/qt-helper.conf"_s,
              "QT_PLUGIN_PATH=${QT_PLUGIN_PATH:+$QT_PLUGIN_PATH:}/lib/qt5:/lib/qt6\n"
              "QT_QPA_GENERIC_PLUGINS=${QT_QPA_GENERIC_PLUGINS:+$QT_QPA_GENERIC_PLUGINS,}orvantile\n");
        write(u"it's installed/qt-helper.sh"_s, "export HELPER=loaded\n");
    }

    [[nodiscard]] HelperFiles files() const {
        const std::filesystem::path root = folder.path().toStdString();
        return HelperFiles({.home = root / "home",
                            .configuration = root / "home/.config",
                            .installed = root / "it's installed"});
    }

    [[nodiscard]] QString path(const QString& relative) const { return folder.filePath(relative); }

    void write(const QString& relative, const QByteArray& contents) const {
        QDir().mkpath(QFileInfo(path(relative)).path());
        QFile file(path(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    [[nodiscard]] QByteArray read(const QString& relative) const {
        QFile file(path(relative));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// What a shell that reads the session file as X sessions do has in the variable afterwards.
    [[nodiscard]] std::string inSession(const QByteArray& variable) const {
        QProcess shell;
        shell.start(u"sh"_s, {u"-euc"_s,
                              u". \"$1\"; printf %s \"${"_s + QString::fromLatin1(variable) + u"-unset}\""_s,
                              u"sh"_s, path(sessionFile)});
        EXPECT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAllStandardError(), QByteArray());
        return shell.readAllStandardOutput().toStdString();
    }

    const QString sessionFile = u"home/.xsessionrc"_s;
    const QString link = u"home/.config/environment.d/60-orvantile-qt-helper.conf"_s;
    QTemporaryDir folder;
};

TEST_F(HelperFilesTest, turnOnAndOffAgain) {
    EXPECT_TRUE(files().isInstalled());
    EXPECT_FALSE(files().isOn());
    EXPECT_TRUE(files().turnOn());
    EXPECT_TRUE(files().isOn());
    EXPECT_THAT(read(link).toStdString(), HasSubstr("orvantile"));
    EXPECT_EQ(inSession("HELPER"), "loaded");
    EXPECT_TRUE(files().turnOff());
    EXPECT_FALSE(files().isOn());
    EXPECT_FALSE(QFileInfo(path(link)).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(path(sessionFile)));
}

TEST_F(HelperFilesTest, knowTheFoldersOfThePlugins) {
    EXPECT_THAT(files().pluginFolders(), ElementsAre("/lib/qt5", "/lib/qt6"));
}

TEST_F(HelperFilesTest, leaveWhatTheUserHasWritten) {
    const QByteArray own = "# mine\nexport EDITOR=vi # no line break follows";
    write(sessionFile, own);
    EXPECT_TRUE(files().turnOn());
    EXPECT_TRUE(files().turnOn());
    EXPECT_EQ(read(sessionFile).count("# Orvantile"), 1);
    EXPECT_EQ(inSession("EDITOR"), "vi");
    EXPECT_EQ(inSession("HELPER"), "loaded");
    EXPECT_TRUE(files().turnOff());
    EXPECT_EQ(read(sessionFile), own + '\n');
}

TEST_F(HelperFilesTest, nothingIsInForceOnceTheInstallationIsRemoved) {
    EXPECT_TRUE(files().turnOn());
    ASSERT_TRUE(QDir(path(u"it's installed"_s)).removeRecursively());
    EXPECT_FALSE(QFileInfo::exists(path(link))) << "the link leads nowhere";
    EXPECT_EQ(inSession("HELPER"), "unset");
    EXPECT_FALSE(files().turnOn());
    EXPECT_TRUE(files().turnOff());
    EXPECT_FALSE(QFileInfo(path(link)).isSymLink());
}

TEST_F(HelperFilesTest, leaveFilesThatAreNotTheirs) {
    write(link, "MINE=1\n");
    EXPECT_FALSE(files().turnOn());
    EXPECT_FALSE(files().isOn());
    EXPECT_FALSE(files().turnOff());
    EXPECT_EQ(read(link), "MINE=1\n");
}

TEST_F(HelperFilesTest, doNotReplaceASessionFileThatCannotBeRead) {
    ASSERT_TRUE(QDir().mkpath(path(sessionFile)));
    EXPECT_FALSE(files().turnOn());
    EXPECT_FALSE(files().turnOff());
    EXPECT_TRUE(QFileInfo(path(sessionFile)).isDir());
}

TEST_F(HelperFilesTest, keepASessionFileThatIsALink) {
    write(u"dotfiles/xsessionrc"_s, "export EDITOR=vi\n");
    ASSERT_TRUE(QFile::link(path(u"dotfiles/xsessionrc"_s), path(sessionFile)));
    EXPECT_TRUE(files().turnOn());
    EXPECT_TRUE(QFileInfo(path(sessionFile)).isSymLink());
    EXPECT_THAT(read(u"dotfiles/xsessionrc"_s).toStdString(), HasSubstr("# Orvantile"));
    EXPECT_TRUE(files().turnOff());
    EXPECT_EQ(read(u"dotfiles/xsessionrc"_s), "export EDITOR=vi\n");
}

/// The installed script itself.
TEST(SessionScriptTest, addsToWhatIsThereOnce) {
    const auto run = [](const QString& pluginPath, const QString& plugins) {
        QProcess shell;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"QT_PLUGIN_PATH"_s);
        environment.remove(u"QT_QPA_GENERIC_PLUGINS"_s);
        if (!pluginPath.isEmpty()) {
            environment.insert(u"QT_PLUGIN_PATH"_s, pluginPath);
            environment.insert(u"QT_QPA_GENERIC_PLUGINS"_s, plugins);
        }
        shell.setProcessEnvironment(environment);
        shell.start(u"sh"_s,
                    {u"-euc"_s, u". \"$1\"; . \"$1\"; echo \"$QT_PLUGIN_PATH $QT_QPA_GENERIC_PLUGINS\""_s,
                     u"sh"_s, QStringLiteral(SESSION_FILES "/qt-helper.sh")});
        EXPECT_TRUE(shell.waitForFinished());
        EXPECT_EQ(shell.readAllStandardError(), QByteArray());
        return shell.readAllStandardOutput().trimmed();
    };
    const HelperFiles installed({.home = "/", .configuration = "/", .installed = SESSION_FILES});
    const auto folders = installed.pluginFolders().join(':');
    ASSERT_THAT(folders.toStdString(), HasSubstr("/orvantile/qt6"));
    EXPECT_EQ(run({}, {}), folders + " orvantile");
    EXPECT_EQ(run(u"/opt/plugins"_s, u"other"_s), "/opt/plugins:" + folders + " other,orvantile");
}

} // namespace
} // namespace orvantile::platform::helper
