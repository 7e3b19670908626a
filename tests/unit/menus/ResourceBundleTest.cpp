#include "platform/linux/menus/ResourceBundle.h"

#include "platform/linux/menus/ProgramShortcuts.h"
#include "support/QtPrinting.h"

#include <QFile>
#include <QTemporaryDir>
#include <gmock/gmock.h>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

bool everything(std::string_view) {
    return true;
}

QByteArray sample() {
    QFile file(QStringLiteral(SAMPLE_RESOURCES));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST(ResourceBundleTest, hasPlainAndCompressedFiles) {
    const ResourceBundle bundle(sample());
    EXPECT_THAT(bundle.files(everything), UnorderedElementsAre("plain contents\n", "compressed contents\n"));
    EXPECT_THAT(bundle.files([](std::string_view path) { return path == "/org/sample/deep/plain.txt"; }),
                ElementsAre("plain contents\n"));
    EXPECT_THAT(bundle.files([](std::string_view path) { return path == "/org/sample/packed.txt"; }),
                ElementsAre("compressed contents\n"));
}

TEST(ResourceBundleTest, bearsBeingCutOff) {
    const auto whole = sample();
    for (qsizetype size = 0; size < whole.size(); ++size) {
        EXPECT_LE(ResourceBundle(whole.first(size)).files(everything).size(), 2U);
    }
}

TEST(ResourceBundleTest, bearsEveryByteBeingAnother) {
    const auto whole = sample();
    for (qsizetype index = 0; index < whole.size(); ++index) {
        for (const char value : {'\0', '\1', '\x7f', '\xff'}) {
            auto changed = whole;
            changed[index] = value;
            EXPECT_LE(ResourceBundle(changed).files(everything).size(), 16U);
        }
    }
}

TEST(ResourceBundleTest, isFoundInAFileOfItsOwn) {
    const auto bundles = bundlesOf(SAMPLE_RESOURCES);
    ASSERT_EQ(bundles.size(), 1U);
    EXPECT_EQ(bundles.front().files(everything).size(), 2U);
}

TEST(ResourceBundleTest, isNotFoundInOtherFiles) {
    const QTemporaryDir directory;
    const auto path = directory.filePath(u"text"_s);
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("\x7f"
               "ELF and no more");
    file.close();
    EXPECT_THAT(bundlesOf(path.toStdString()), IsEmpty());
    EXPECT_THAT(bundlesOf(directory.path().toStdString()), IsEmpty());
    EXPECT_THAT(bundlesOf("/does/not/exist"), IsEmpty());
    EXPECT_THAT(bundlesOf("/proc/self/exe"), IsEmpty()) << "this program has none";
}

TEST(ProgramShortcutsTest, looksIntoTheProgramAndWhatItHasMapped) {
    constexpr auto map = "1000-2000 r-xp 00000000 08:01 1  /usr/bin/editor\n"
                         "2000-3000 r--p 00000000 08:01 2  /usr/lib/libeditor-44.so\n"
                         "3000-4000 r-xp 00001000 08:01 2  /usr/lib/libeditor-44.so\n"
                         "4000-5000 r--p 00000000 08:01 3  /usr/lib/libc.so.6\n"
                         "5000-6000 r--p 00000000 08:01 4  /usr/share/editor/editor.gresource\n"
                         "6000-7000 r--s 00000000 08:01 5  /var/cache/fonts.cache\n"
                         "7000-8000 rw-p 00000000 00:00 0  [heap]\n"
                         "8000-9000 rw-p 00000000 00:00 0\n";
    EXPECT_THAT(mappedFiles(map, "/usr/bin/editor"),
                ElementsAre("/usr/bin/editor", "/usr/lib/libeditor-44.so", "/usr/lib/libc.so.6",
                            "/usr/share/editor/editor.gresource"));
    EXPECT_THAT(mappedFiles("", ""), IsEmpty());
}

TEST(ProgramShortcutsTest, findsNothingInProcessesThatAreNotThere) {
    EXPECT_THAT(shortcutsOfProcess(-1), IsEmpty());
    EXPECT_THAT(shortcutsOfProcess(1 << 30), IsEmpty());
}

} // namespace
} // namespace orvantile::platform::menus
