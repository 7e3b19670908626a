#include "platform/linux/menus/ShortcutsDescription.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::platform::menus {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

QString asItIs(const QByteArray&, const QByteArray&, const QByteArray& text) {
    return QString::fromUtf8(text);
}

/// A description with one line of these properties.
QByteArray line(const QByteArray& properties) {
    return R"(<interface domain="editor"><object class="GtkShortcutsWindow"><child>)"
           R"(<object class="GtkShortcutsShortcut">)" +
           properties + "</object></child></object></interface>";
}

constexpr keys::Accelerator controlN{{.control = true}, 0x6e};

TEST(ShortcutsDescriptionTest, hasTitleAcceleratorAndAction) {
    const auto shortcuts = describedShortcuts(
        line(R"(<property name="title">New window</property><property name="action-name">app.new</property>)"
             R"(<property name="accelerator">&lt;control&gt;n</property>)"),
        asItIs);
    EXPECT_THAT(shortcuts, ElementsAre(DescribedShortcut{u"New window"_s, controlN, "app.new"}));
}

TEST(ShortcutsDescriptionTest, hasEachOfSeveralAccelerators) {
    const auto shortcuts = describedShortcuts(
        line(R"(<property name="title">Zoom In</property>)"
             R"(<property name="accelerator">&lt;ctrl&gt;plus &lt;ctrl&gt;equal F5</property>)"),
        asItIs);
    EXPECT_EQ(shortcuts.size(), 3U);
}

TEST(ShortcutsDescriptionTest, leavesOutWhatIsNoCombination) {
    for (const auto* keys : {"&lt;alt&gt;1...9", "&lt;ctrl&gt;x+s", "a&amp;b", "gibberish", ""}) {
        EXPECT_THAT(describedShortcuts(line(R"(<property name="title">T</property>)"
                                            R"(<property name="accelerator">)" +
                                            QByteArray(keys) + "</property>"),
                                       asItIs),
                    IsEmpty())
            << keys;
    }
}

TEST(ShortcutsDescriptionTest, leavesOutWhatIsHiddenOrForTheOtherDirection) {
    const QByteArray shortcut =
        R"(<property name="title">T</property><property name="accelerator">F5</property>)";
    EXPECT_EQ(describedShortcuts(line(shortcut), asItIs).size(), 1U);
    EXPECT_THAT(describedShortcuts(line(shortcut + R"(<property name="visible">False</property>)"), asItIs),
                IsEmpty());
    EXPECT_THAT(describedShortcuts(line(shortcut + R"(<property name="direction">rtl</property>)"), asItIs),
                IsEmpty());
    EXPECT_EQ(describedShortcuts(line(shortcut + R"(<property name="visible">1</property>)"), asItIs).size(),
              1U);
}

TEST(ShortcutsDescriptionTest, translatesWhatIsMarkedForIt) {
    const Translate translate = [](const QByteArray& domain, const QByteArray& context,
                                   const QByteArray& text) {
        return QString::fromUtf8(domain + '|' + context + '|' + text);
    };
    const auto marked =
        describedShortcuts(line(R"(<property name="title" translatable="yes" context="window">New</property>)"
                                R"(<property name="accelerator">F5</property>)"),
                           translate);
    ASSERT_EQ(marked.size(), 1U);
    EXPECT_EQ(marked.front().title, u"editor|window|New"_s);
    const auto plain = describedShortcuts(
        line(R"(<property name="title">New</property><property name="accelerator">F5</property>)"),
        translate);
    ASSERT_EQ(plain.size(), 1U);
    EXPECT_EQ(plain.front().title, u"New"_s);
}

TEST(ShortcutsDescriptionTest, isEmptyForAnythingElse) {
    EXPECT_THAT(describedShortcuts({}, asItIs), IsEmpty());
    EXPECT_THAT(describedShortcuts("<interface><object class=\"GtkBox\"/></interface>", asItIs), IsEmpty());
    EXPECT_THAT(describedShortcuts("<interface><object class=\"GtkShortcutsShortcut\"><property", asItIs),
                IsEmpty());
    EXPECT_THAT(describedShortcuts(QByteArray(4096, '<'), asItIs), IsEmpty());
}

} // namespace
} // namespace orvantile::platform::menus
