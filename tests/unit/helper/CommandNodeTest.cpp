#include "platform/linux/helper/CommandNode.h"

#include "monitor/ShortcutMonitor.h"
#include "platform/linux/helper/QtKeys.h"
#include "support/QtPrinting.h"

#include <QKeySequence>
#include <gmock/gmock.h>

namespace orvantile::platform::helper {
namespace {

using Qt::StringLiterals::operator""_s;

/// What a menu would show for a shortcut, through the very keys that Qt numbers.
QString shown(const QString& keys) {
    FiredCommand command{u"Save"_s, {}, true};
    const QKeySequence sequence(keys, QKeySequence::PortableText);
    for (int index = 0; index < sequence.count(); ++index) {
        const auto code = sequence[static_cast<unsigned>(index)].toCombined();
        const auto key = acceleratorOf(static_cast<std::uint32_t>(code));
        if (!key) {
            return u"unknown"_s;
        }
        command.keys.push_back(*key);
    }
    const AccessibilityElement element(std::make_shared<CommandNode>(command));
    EXPECT_EQ(ShortcutMonitor::title(element), u"Save"_s);
    return ShortcutMonitor::shortcutString(element).value_or(u"none"_s);
}

TEST(CommandNodeTest, showsKeysAsMenusDo) {
    EXPECT_EQ(shown(u"Ctrl+S"_s), u"⌃S"_s);
    EXPECT_EQ(shown(u"Ctrl+Alt+Shift+Meta+X"_s), u"⌃⌥⇧⌘X"_s);
    EXPECT_EQ(shown(u"Ctrl++"_s), u"⌃+"_s);
    EXPECT_EQ(shown(u"Ctrl+Ö"_s), u"⌃Ö"_s);
    EXPECT_EQ(shown(u"Ctrl+Я"_s), u"⌃Я"_s);
    EXPECT_EQ(shown(u"Ctrl+,"_s), u"⌃,"_s);
    EXPECT_EQ(shown(u"F5"_s), u"F5"_s);
    EXPECT_EQ(shown(u"Shift+F12"_s), u"⇧F12"_s);
    EXPECT_EQ(shown(u"F15"_s), u"F15"_s);
    EXPECT_EQ(shown(u"F30"_s), u"F30"_s);
    EXPECT_EQ(shown(u"Del"_s), u"⌦"_s);
    EXPECT_EQ(shown(u"Backspace"_s), u"⌫"_s);
    EXPECT_EQ(shown(u"Ctrl+Return"_s), u"⌃⏎"_s);
    EXPECT_EQ(shown(u"Ctrl+Enter"_s), u"⌃⌅"_s);
    EXPECT_EQ(shown(u"Ctrl+Space"_s), u"⌃␣"_s);
    EXPECT_EQ(shown(u"Ctrl+Tab"_s), u"⌃⇥"_s);
    EXPECT_EQ(shown(u"Ctrl+PgUp"_s), u"⌃⇞"_s);
    EXPECT_EQ(shown(u"Alt+Left"_s), u"⌥←"_s);
    EXPECT_EQ(shown(u"Esc"_s), u"⎋"_s);
    EXPECT_EQ(shown(u"Home"_s), u"↖"_s);
}

TEST(CommandNodeTest, writesTheStrokesOfASequenceOneAfterTheOther) {
    EXPECT_EQ(shown(u"Ctrl+K, Ctrl+C"_s), u"⌃K ⌃C"_s);
    EXPECT_EQ(shown(u"Ctrl+K, Shift+D, E"_s), u"⌃K ⇧D E"_s);
    EXPECT_EQ(shown(u"Ctrl+K, Left"_s), u"none"_s) << "a symbol cannot be written behind a character";
    EXPECT_EQ(shown({}), u"none"_s);
}

TEST(CommandNodeTest, codesThatAreNoKeysAreAbsent) {
    EXPECT_EQ(acceleratorOf(0), std::nullopt);
    EXPECT_EQ(acceleratorOf(Qt::Key_unknown), std::nullopt);
    EXPECT_EQ(acceleratorOf(0xD800), std::nullopt);
    EXPECT_EQ(acceleratorOf(0x110000), std::nullopt);
    EXPECT_EQ(acceleratorOf(0xFFFFFFFF), std::nullopt);
    EXPECT_EQ(acceleratorOf(Qt::ControlModifier), std::nullopt);
}

} // namespace
} // namespace orvantile::platform::helper
