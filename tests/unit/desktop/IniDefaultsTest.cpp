#include "platform/linux/desktop/IniDefaults.h"

#include "platform/linux/desktop/IniFile.h"
#include "settings/Settings.h"

#include <QTemporaryDir>
#include <chrono>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvantile::platform::desktop {
namespace {

namespace fs = std::filesystem;
using Qt::StringLiterals::operator""_s;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr uid_t nobody = 65534;

class IniDefaultsTest : public ::testing::Test {
protected:
    [[nodiscard]] static std::string contents(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    void write(const std::string& text) const {
        fs::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << text;
    }

    /// Makes one assignment and waits until it has been tried.
    void assign(const QString& key, const DefaultsValue& value) const {
        IniDefaults defaults(path);
        defaults.set(key, value);
    }

    QTemporaryDir temporary;
    fs::path folder = temporary.path().toStdString();
    fs::path path = folder / "orvantile" / "orvantile.ini";
};

TEST_F(IniDefaultsTest, liveInTheUsersConfigurationFolder) {
    const auto before = qgetenv("XDG_CONFIG_HOME");
    qputenv("XDG_CONFIG_HOME", "/tmp/configuration");
    EXPECT_EQ(IniDefaults::userFile(), "/tmp/configuration/orvantile/orvantile.ini");
    for (const auto* unusable : {"", "relative"}) {
        qputenv("XDG_CONFIG_HOME", unusable);
        EXPECT_EQ(IniDefaults::userFile(),
                  fs::path(QDir::homePath().toStdString()) / ".config/orvantile/orvantile.ini");
    }
    before.isEmpty() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
}

TEST_F(IniDefaultsTest, writeNothingUntilSomethingIsAssigned) {
    {
        IniDefaults defaults(path);
        const Settings settings(defaults);
        EXPECT_EQ(settings.fontSize(), 22.0);
    }
    EXPECT_FALSE(fs::exists(path.parent_path()));
}

TEST_F(IniDefaultsTest, answerRegisteredValuesForKeysThatHaveNone) {
    IniDefaults defaults(path);
    EXPECT_FALSE(defaults.boolForKey(u"a"_s));
    EXPECT_EQ(defaults.doubleForKey(u"a"_s), 0.0);
    EXPECT_EQ(defaults.stringForKey(u"a"_s), std::nullopt);
    defaults.registerDefaults({{u"a"_s, true}, {u"b"_s, 1.5}, {u"c"_s, u"text"_s}});
    EXPECT_TRUE(defaults.boolForKey(u"a"_s));
    EXPECT_EQ(defaults.doubleForKey(u"b"_s), 1.5);
    EXPECT_EQ(defaults.stringForKey(u"c"_s), u"text"_s);
    defaults.set(u"a"_s, false);
    EXPECT_FALSE(defaults.boolForKey(u"a"_s));
}

TEST_F(IniDefaultsTest, areInTheFileInTheOrderOfAssignment) {
    {
        IniDefaults defaults(path);
        Settings settings(defaults);
        settings.position = HUDPosition::topLeft;
        defaults.synchronize();
        settings.resetToDefaults();
    }
    EXPECT_EQ(contents(path),
              "[General]\nposition=bottomCenter\nenabled=true\nshowInMenuBar=true\ndisplaySeconds=1."
              "2\nfontSize=22\n"
              "soundEnabled=true\nsound=Pop\npopAnimation=true\ntranslucent=true\nshowShortcut=true\n"
              "appearance=auto\nflatOpacity=0.75\n");
}

TEST_F(IniDefaultsTest, areTheSameAfterARelaunch) {
    {
        IniDefaults defaults(path);
        Settings settings(defaults);
        settings.enabled = false;
        settings.displaySeconds = 0.1 + 0.2;
        settings.sound = HUDSound::purr;
    }
    IniDefaults defaults(path);
    const Settings settings(defaults);
    EXPECT_FALSE(settings.enabled());
    EXPECT_EQ(settings.displaySeconds(), 0.1 + 0.2);
    EXPECT_EQ(settings.sound(), HUDSound::purr);
    EXPECT_EQ(settings.fontSize(), 22.0);
}

TEST_F(IniDefaultsTest, holdAnyKeyAndString) {
    const auto key = u"a key = [with] everything; größer\n"_s;
    assign(key, u"and\na value"_s);
    const IniDefaults defaults(path);
    EXPECT_EQ(defaults.stringForKey(key), u"and\na value"_s);
}

TEST_F(IniDefaultsTest, readValuesOfAnotherTypeAsFallbacks) {
    write("[General]\nenabled=1\nfontSize=big\nposition=7\nsound=true\nflatOpacity=\ndisplaySeconds=1,5\n"
          "appearance=dark\xFF\n");
    IniDefaults defaults(path);
    const Settings settings(defaults);
    EXPECT_FALSE(settings.enabled());
    EXPECT_EQ(settings.fontSize(), 0.0);
    EXPECT_EQ(settings.position(), HUDPosition::bottomCenter);
    EXPECT_EQ(settings.sound(), HUDSound::pop);
    EXPECT_EQ(settings.flatOpacity(), 0.0);
    EXPECT_EQ(settings.displaySeconds(), 0.0);
    EXPECT_EQ(settings.appearance(), HUDAppearance::auto_);
    EXPECT_TRUE(settings.showShortcut());
}

TEST_F(IniDefaultsTest, keepWhatTheyDoNotKnow) {
    write("; by hand\n[Window]\nfontSize=3\n\n[General]\n# big\nfontSize = 30\nfuture=x\n\xFF\xFE\n");
    assign(u"fontSize"_s, 31.0);
    EXPECT_EQ(contents(path),
              "; by hand\n[Window]\nfontSize=3\n\n[General]\n# big\nfontSize = 31\nfuture=x\n\xFF\xFE\n");
}

TEST_F(IniDefaultsTest, keepWhatOthersChangeMeanwhile) {
    write("[General]\nfontSize=30\n");
    IniDefaults defaults(path);
    write("[General]\nfontSize=40\nadded=1\n");
    defaults.set(u"enabled"_s, false);
    defaults.synchronize();
    EXPECT_EQ(contents(path), "[General]\nfontSize=40\nadded=1\nenabled=false\n");
}

TEST_F(IniDefaultsTest, writeEverythingAgainWhenTheFileVanishes) {
    write("[General]\nfontSize=30\n");
    IniDefaults defaults(path);
    fs::remove_all(path.parent_path());
    defaults.set(u"enabled"_s, false);
    defaults.synchronize();
    EXPECT_EQ(contents(path), "[General]\nfontSize=30\nenabled=false\n");
}

TEST_F(IniDefaultsTest, runOnInMemoryWhereNoFolderCanBe) {
    IniDefaults defaults("/proc/self/nowhere/orvantile.ini");
    defaults.set(u"enabled"_s, true);
    defaults.synchronize();
    EXPECT_TRUE(defaults.boolForKey(u"enabled"_s));
}

TEST_F(IniDefaultsTest, runOnInMemoryWhenAFolderIsInTheFilesPlace) {
    fs::create_directories(path / "inside");
    IniDefaults defaults(path);
    defaults.set(u"enabled"_s, true);
    defaults.synchronize();
    EXPECT_TRUE(defaults.boolForKey(u"enabled"_s));
    EXPECT_TRUE(fs::is_directory(path / "inside"));
    fs::remove_all(path);
    defaults.set(u"fontSize"_s, 30.0);
    defaults.synchronize();
    EXPECT_EQ(contents(path), "[General]\nenabled=true\nfontSize=30\n"); // what had failed as well
}

TEST_F(IniDefaultsTest, keepTheFileAndTheValuesWhenTheDiskIsFull) {
    const auto before = "[General]\nfontSize=30\n; " + std::string(200, 'x') + "\n";
    write(before);
    IniDefaults defaults(path);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit full{64, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0); // a file stops growing there
    defaults.set(u"fontSize"_s, 31.0);
    defaults.synchronize();
    const auto meanwhile = contents(path);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(meanwhile, before);
    EXPECT_EQ(defaults.doubleForKey(u"fontSize"_s), 31.0);
    EXPECT_EQ(std::distance(fs::directory_iterator(path.parent_path()), {}), 1);
    defaults.set(u"enabled"_s, false);
    defaults.synchronize();
    EXPECT_THAT(contents(path), StartsWith("[General]\nfontSize=31\n; x"));
    EXPECT_THAT(contents(path), HasSubstr("\nenabled=false\n"));
}

TEST_F(IniDefaultsTest, keepAFileTheyMayNotReplace) {
    write("[General]\nfontSize=30\n");
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
    ASSERT_EQ(::chmod(path.parent_path().c_str(), 0555), 0);
    const auto asAnother = [this] {
        if (::geteuid() == 0 && ::setuid(nobody) != 0) {
            ::_exit(2);
        }
        IniDefaults defaults(path);
        const bool read = defaults.doubleForKey(u"fontSize"_s) == 30.0;
        defaults.set(u"fontSize"_s, 31.0);
        defaults.synchronize();
        ::_exit(read && defaults.doubleForKey(u"fontSize"_s) == 31.0 ? 0 : 1);
    };
    EXPECT_EXIT(asAnother(), ::testing::ExitedWithCode(0), "");
    EXPECT_EQ(contents(path), "[General]\nfontSize=30\n");
    ASSERT_EQ(::chmod(path.parent_path().c_str(), 0755), 0);
}

TEST_F(IniDefaultsTest, doNotReplaceAFileTheyMayNotRead) {
    write("[General]\nfontSize=30\n");
    ASSERT_EQ(::chmod(path.c_str(), 0000), 0);
    ASSERT_EQ(::chmod(folder.c_str(), 0755), 0);
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(path.parent_path().c_str(), nobody, nobody), 0);
    }
    const auto asAnother = [this] {
        if (::geteuid() == 0 && ::setuid(nobody) != 0) {
            ::_exit(2);
        }
        IniDefaults defaults(path);
        defaults.set(u"fontSize"_s, 31.0);
        defaults.synchronize();
        ::_exit(defaults.doubleForKey(u"fontSize"_s) == 31.0 ? 0 : 1);
    };
    EXPECT_EXIT(asAnother(), ::testing::ExitedWithCode(0), "");
    ASSERT_EQ(::chmod(path.c_str(), 0600), 0);
    EXPECT_EQ(contents(path), "[General]\nfontSize=30\n");
}

TEST_F(IniDefaultsTest, keepADamagedFileAside) {
    const std::string damaged("[General]\nfontSize=30\nsound=\0\0\0\nenabled=false\n", 47);
    write(damaged);
    {
        IniDefaults defaults(path);
        EXPECT_EQ(defaults.doubleForKey(u"fontSize"_s), 30.0);
        defaults.set(u"sound"_s, u"Purr"_s);
        defaults.set(u"sound"_s, u"Ping"_s);
    }
    EXPECT_EQ(contents(path), "[General]\nfontSize=30\nenabled=false\nsound=Ping\n");
    auto aside = path;
    aside += ".damaged";
    EXPECT_EQ(contents(aside), damaged);
    EXPECT_EQ(std::distance(fs::directory_iterator(path.parent_path()), {}), 2);
}

TEST_F(IniDefaultsTest, startAfreshBesideRubbish) {
    std::string rubbish;
    for (int byte = 0; byte < 4096; ++byte) {
        rubbish.push_back(static_cast<char>(byte * 7 % 256));
    }
    write(rubbish);
    assign(u"enabled"_s, true);
    const IniDefaults defaults(path);
    EXPECT_TRUE(defaults.boolForKey(u"enabled"_s));
    auto aside = path;
    aside += ".damaged";
    EXPECT_EQ(contents(aside), rubbish);
}

TEST_F(IniDefaultsTest, readTheBeginningOfAHugeFileAtOnceAndKeepItAside) {
    write("[General]\nfontSize=30\n");
    constexpr auto size = 100U * 1024 * 1024;
    fs::resize_file(path, size);
    const auto start = std::chrono::steady_clock::now();
    {
        IniDefaults defaults(path);
        EXPECT_EQ(defaults.doubleForKey(u"fontSize"_s), 30.0);
        defaults.set(u"enabled"_s, false);
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(500));
    }
    EXPECT_EQ(contents(path), "[General]\nfontSize=30\nenabled=false\n");
    auto aside = path;
    aside += ".too-long";
    EXPECT_EQ(fs::file_size(aside), size);
}

} // namespace
} // namespace orvantile::platform::desktop
