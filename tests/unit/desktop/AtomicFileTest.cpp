#include "platform/linux/desktop/AtomicFile.h"

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iterator>
#include <string>
#include <sys/stat.h>

namespace orvantile::platform::desktop {
namespace {

namespace fs = std::filesystem;
using State = FileContents::State;
using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class AtomicFileTest : public ::testing::Test {
protected:
    [[nodiscard]] static std::string contents(const fs::path& path) {
        std::ifstream stream(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    static void write(const fs::path& path, const std::string& text) {
        std::ofstream(path, std::ios::binary) << text;
    }

    [[nodiscard]] static mode_t mode(const fs::path& path) {
        struct stat status {};

        EXPECT_EQ(::stat(path.c_str(), &status), 0);
        return status.st_mode & 0777;
    }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> result;
        for (const auto& entry : fs::directory_iterator(folder)) {
            result.push_back(entry.path().filename().string());
        }
        return result;
    }

    QTemporaryDir temporary;
    fs::path folder = temporary.path().toStdString();
    fs::path path = folder / "a.ini";
    AtomicFile file{path};
};

TEST_F(AtomicFileTest, readsWhatIsThere) {
    EXPECT_EQ(file.read(100).state, State::missing);
    write(path, "a=1\n");
    const auto found = file.read(100);
    EXPECT_EQ(found.state, State::whole);
    EXPECT_EQ(found.bytes, "a=1\n");
    EXPECT_EQ(found.identity, file.identity());
}

TEST_F(AtomicFileTest, readsTheBeginningOfALongFileUpToAWholeLine) {
    write(path, "a=1\nb=2\nc=3\n");
    EXPECT_EQ(file.read(12).state, State::whole);
    const auto found = file.read(11);
    EXPECT_EQ(found.state, State::tooLong);
    EXPECT_EQ(found.bytes, "a=1\nb=2\n");
    EXPECT_EQ(file.read(2).bytes, "");
}

TEST_F(AtomicFileTest, refusesFoldersPipesAndDevicesWithoutWaiting) {
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(file.read(100).state, State::unreadable);
    EXPECT_FALSE(file.replace("x"));
    fs::remove(path);
    fs::create_directory(path);
    EXPECT_EQ(file.read(100).state, State::unreadable);
    EXPECT_FALSE(file.replace("x"));
    fs::remove(path);
    fs::create_symlink("/dev/full", path);
    EXPECT_EQ(file.read(100).state, State::unreadable);
    EXPECT_FALSE(file.replace("x"));
    EXPECT_THAT(names(), ElementsAre("a.ini"));
}

TEST_F(AtomicFileTest, createsAPrivateFileInPrivateFolders) {
    const auto deep = folder / "one" / "two" / "a.ini";
    ASSERT_TRUE(AtomicFile(deep).replace("x"));
    EXPECT_EQ(contents(deep), "x");
    EXPECT_EQ(mode(deep), 0600U);
    EXPECT_EQ(mode(deep.parent_path()), 0700U);
    EXPECT_EQ(mode(deep.parent_path().parent_path()), 0700U);
}

TEST_F(AtomicFileTest, keepsTheModeOfAFile) {
    write(path, "old");
    ASSERT_EQ(::chmod(path.c_str(), 0644), 0);
    ASSERT_TRUE(file.replace("new"));
    EXPECT_EQ(mode(path), 0644U);
}

TEST_F(AtomicFileTest, leavesNothingElseBehind) {
    ASSERT_TRUE(file.replace("1"));
    ASSERT_TRUE(file.replace("2"));
    EXPECT_THAT(names(), ElementsAre("a.ini"));
    EXPECT_EQ(contents(path), "2");
}

TEST_F(AtomicFileTest, tellsEachReplacementFromTheLast) {
    const auto first = file.replace("1");
    ASSERT_TRUE(first);
    EXPECT_EQ(AtomicFile::identityOf(*first), file.identity());
    ASSERT_TRUE(file.replace("1"));
    EXPECT_NE(AtomicFile::identityOf(*first), file.identity());
}

TEST_F(AtomicFileTest, replacesTheFileThatLinksLeadTo) {
    fs::create_directory(folder / "dotfiles");
    write(folder / "dotfiles" / "real.ini", "old");
    fs::create_symlink("dotfiles/real.ini", folder / "link");
    fs::create_symlink("link", path);
    ASSERT_TRUE(file.replace("new"));
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(contents(folder / "dotfiles" / "real.ini"), "new");
}

TEST_F(AtomicFileTest, createsTheFileThatADanglingLinkLeadsTo) {
    fs::create_symlink(folder / "later" / "real.ini", path);
    ASSERT_TRUE(file.replace("new"));
    EXPECT_TRUE(fs::is_symlink(path));
    EXPECT_EQ(contents(folder / "later" / "real.ini"), "new");
}

TEST_F(AtomicFileTest, failsInACircleOfLinks) {
    fs::create_symlink("other", path);
    fs::create_symlink("a.ini", folder / "other");
    EXPECT_FALSE(file.replace("new"));
    EXPECT_TRUE(fs::is_symlink(path));
}

TEST_F(AtomicFileTest, keepsTheOldFileAsideUnderFreeNames) {
    for (const auto* text : {"1", "2", "3"}) {
        write(path, text);
        ASSERT_TRUE(file.replace("new", ".damaged"));
    }
    EXPECT_EQ(contents(path), "new");
    EXPECT_EQ(contents(folder / "a.ini.damaged"), "1");
    EXPECT_EQ(contents(folder / "a.ini.damaged.2"), "2");
    EXPECT_EQ(contents(folder / "a.ini.damaged.3"), "3");
}

TEST_F(AtomicFileTest, doesNotReplaceAFileThatItCannotKeepAside) {
    write(path, "mine");
    write(folder / "a.ini.damaged", "1");
    for (int copy = 2; copy <= 9; ++copy) {
        write(folder / ("a.ini.damaged." + std::to_string(copy)), "1");
    }
    EXPECT_FALSE(file.replace("new", ".damaged"));
    EXPECT_EQ(contents(path), "mine");
    EXPECT_EQ(names().size(), 10U);
}

TEST_F(AtomicFileTest, removesWhatKilledProcessesLeftBehind) {
    write(folder / ".a.ini.2147483646", "half"); // no process has this number
    write(folder / ".a.ini.1", "of a process that lives");
    write(folder / ".a.ini.backup", "mine");
    write(folder / ".b.ini.2147483646", "of another file");
    const auto replacement = file.replace("new");
    ASSERT_TRUE(replacement);
    file.sync(*replacement);
    EXPECT_THAT(names(), UnorderedElementsAre("a.ini", ".a.ini.1", ".a.ini.backup", ".b.ini.2147483646"));
}

} // namespace
} // namespace orvantile::platform::desktop
