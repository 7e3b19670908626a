#include "platform/linux/desktop/accessibilitysettings/DesktopEntry.h"
#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

QStringList commandOf(const QByteArray& exec) {
    const auto entry = DesktopEntry::parse("[Desktop Entry]\nType=Application\nName=My Settings\n"
                                           "Icon=gear\nExec=" +
                                           exec + '\n');
    return entry ? entry->command(u"/there/it.desktop"_s) : QStringList{u"no entry"_s};
}

TEST(DesktopEntryTest, readsItsOwnGroupOnly) {
    const auto entry = DesktopEntry::parse("# a comment\n"
                                           "[Other]\nExec=wrong\n"
                                           "[Desktop Entry]\r\n"
                                           "Type = Application\n"
                                           "Name[de]=Einstellungen\n"
                                           "Name=Settings\n"
                                           "Exec=right\n"
                                           "Exec=second\n"
                                           "TryExec=/bin/right\n"
                                           "Path=/srv\n"
                                           "Hidden=true\n"
                                           "Terminal=true\n"
                                           "[Desktop Action New]\nExec=wrong\nName=New\n");
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, u"Settings"_s);
    EXPECT_EQ(entry->exec, u"right"_s);
    EXPECT_EQ(entry->tryExec, u"/bin/right"_s);
    EXPECT_EQ(entry->directory, u"/srv"_s);
    EXPECT_TRUE(entry->hidden);
    EXPECT_TRUE(entry->terminal);
}

TEST(DesktopEntryTest, isNoneWithoutAnApplication) {
    EXPECT_FALSE(DesktopEntry::parse(""));
    EXPECT_FALSE(DesktopEntry::parse("[Desktop Entry]\nType=Link\nExec=x\n"));
    EXPECT_FALSE(DesktopEntry::parse("Type=Application\nExec=x\n"));
    EXPECT_FALSE(DesktopEntry::parse(QByteArray("\0\xff\xfe=\n[\n]=\n=\n", 10)));
}

TEST(DesktopEntryTest, splitsTheCommandAndDropsPlaceholdersForFiles) {
    EXPECT_EQ(commandOf("settings  universal-access"), (QStringList{u"settings"_s, u"universal-access"_s}));
    EXPECT_EQ(commandOf("settings %u --files %F %n"), (QStringList{u"settings"_s, u"--files"_s}));
    EXPECT_EQ(commandOf("settings %i --caption %c --from=%k --part=100%%"),
              (QStringList{u"settings"_s, u"--icon"_s, u"gear"_s, u"--caption"_s, u"My Settings"_s,
                           u"--from=/there/it.desktop"_s, u"--part=100%"_s}));
    EXPECT_EQ(commandOf(R"("/opt/my settings/run" "a \\"quoted\\" %u" "")"),
              (QStringList{u"/opt/my settings/run"_s, u"a \"quoted\" %u"_s, QString()}));
    EXPECT_EQ(commandOf(R"(settings a\sb)"), (QStringList{u"settings"_s, u"a"_s, u"b"_s}));
}

TEST(DesktopEntryTest, malformedCommandsAreNone) {
    EXPECT_EQ(commandOf(""), QStringList());
    EXPECT_EQ(commandOf("   "), QStringList());
    EXPECT_EQ(commandOf("settings \"open"), QStringList());
    EXPECT_EQ(commandOf("settings trailing%"), (QStringList{u"settings"_s, u"trailing"_s}));
}

} // namespace
} // namespace orvantile::platform::desktop
