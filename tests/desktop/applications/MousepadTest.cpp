// A GTK 3 editor, its windows, menus and dialogs.

#include "desktop/applications/Stage.h"

#include "support/QtPrinting.h"

#include <gmock/gmock.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using ::testing::ElementsAre;

class MousepadTest : public ::testing::Test {
protected:
    MousepadTest() {
        editor = stage.start(mousepad);
        stage.startOrvantile();
        stage.awaitCommandsOf(mousepad);
    }

    QStringList shownBy(const std::function<void()>& action) { return stage.shownBy(mousepad, action); }

    /// Opens the File menu with the mouse and returns it.
    Window openFileMenu() {
        stage.keys().click(editor.frame.topLeft() + QPoint(18, 14));
        return stage.windows().awaitMenus(1).front();
    }

    Stage stage;
    Window editor;
};

TEST_F(MousepadTest, namesShortcuts) {
    EXPECT_EQ(stage.fire(u"Ctrl+F"_s), u"⌃F  Find"_s);
    EXPECT_EQ(stage.fire(u"Escape"_s), u"nothing"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+I"_s), u"⌃I  Increase Indent"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Y"_s), u"⌃Y  Redo"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+U"_s), u"⌃U  Decrease Indent"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+G"_s), u"⌃⇧G  Find Previous"_s);
    EXPECT_EQ(stage.fire(u"Ctrl+Alt+U"_s), u"⌃⌥U  To Opposite Case"_s) << "deep in a submenu";
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+Delete"_s), u"⌃⇧⌦  Delete Line"_s);
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s);
    EXPECT_EQ(stage.fire(u"F11"_s), u"F11  Fullscreen"_s) << "the HUD is above the full-screen window";
}

TEST_F(MousepadTest, disabledItemsShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    stage.keys().press(u"Ctrl+D"_s);         // Detach Tab, with a single tab
                    stage.keys().press(u"Ctrl+Page_Down"_s); // Next Tab
                    stage.keys().press(u"Ctrl+Z"_s);         // Undo, with nothing to undo
                }),
                ElementsAre());
}

TEST_F(MousepadTest, itemsThatBecomeEnabledAreNamedFromThenOn) {
    EXPECT_THAT(shownBy([&] {
                    stage.keys().type(u"x"_s);
                    stage.windows().awaitActive(titled(u"*"_s)); // the document counts as changed
                }),
                ElementsAre());
    EXPECT_EQ(stage.fire(u"Ctrl+Z"_s), u"⌃Z  Undo"_s);
    EXPECT_THAT(shownBy([&] { stage.keys().press(u"Ctrl+Z"_s); }), ElementsAre()) << "used up";
}

TEST_F(MousepadTest, pickWithTheMouseShowsNothing) {
    EXPECT_THAT(shownBy([&] {
                    const auto menu = openFileMenu();
                    // The second item, New Window, would open a window: take the first, New.
                    stage.keys().click(menu.frame.topLeft() + QPoint(40, 16));
                    stage.windows().awaitMenus(0);
                    stage.windows().awaitActive(titled(u"Untitled"_s));
                }),
                ElementsAre());
}

TEST_F(MousepadTest, pickWithArrowsAndReturnShowsNothing) {
    EXPECT_THAT(shownBy([&] {
                    stage.keys().press(u"F10"_s);
                    stage.windows().awaitMenus(1);
                    stage.keys().press(u"Right"_s); // Edit
                    stage.windows().awaitMenus(1);
                    stage.keys().press(u"Up"_s); // the last item, Preferences
                    stage.keys().press(u"Return"_s);
                    const auto dialog = stage.windows().awaitActive(titled(u"Preferences"_s));
                    stage.keys().press(u"Escape"_s);
                    stage.windows().awaitGone(dialog.handle);
                    stage.windows().awaitActive(ofProcess(editor.process));
                }),
                ElementsAre());
}

TEST_F(MousepadTest, acceleratorsWhileAMenuIsOpenShowNothing) {
    EXPECT_THAT(shownBy([&] {
                    openFileMenu();
                    stage.keys().press(u"Ctrl+F"_s);
                    stage.keys().press(u"Ctrl+I"_s);
                    while (!stage.windows().menus().empty()) {
                        stage.keys().press(u"Escape"_s);
                        stage.windows().awaitMenus(0);
                    }
                }),
                ElementsAre());
}

TEST_F(MousepadTest, acceleratorsOfTheEditorInAModalDialogShowNothing) {
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+S"_s), u"⌃⇧S  Save As..."_s);
    const auto dialog = stage.windows().awaitActive(titled(u"Save As"_s));
    EXPECT_THAT(shownBy([&] {
                    stage.keys().press(u"Ctrl+N"_s);
                    stage.keys().press(u"Ctrl+I"_s);
                    stage.keys().press(u"F11"_s);
                    stage.windows().close(dialog.handle);
                    stage.windows().awaitGone(dialog.handle);
                    stage.windows().awaitActive(ofProcess(editor.process));
                }),
                ElementsAre());
}

TEST_F(MousepadTest, typingShowsNothingAndIsNotRetained) {
    // 2 000 keystrokes as fast as the server takes them, in words that are nowhere else in memory.
    const auto word = u"xylophonequartz"_s;
    EXPECT_THAT(shownBy([&] {
                    for (int typed = 0; typed < 2000; typed += static_cast<int>(word.size()) + 1) {
                        stage.keys().type(word + u' ');
                    }
                    stage.keys().press(u"Shift+Home"_s);
                }),
                ElementsAre());
    QFile memory(u"/proc/%1/mem"_s.arg(stage.orvantile().processIdentifier()));
    QFile maps(u"/proc/%1/maps"_s.arg(stage.orvantile().processIdentifier()));
    ASSERT_TRUE(memory.open(QIODevice::ReadOnly) && maps.open(QIODevice::ReadOnly));
    qint64 scanned = 0;
    for (const auto& line : maps.readAll().split('\n')) {
        const auto fields = line.split(' ');
        const auto range = fields.value(0).split('-');
        if (range.size() != 2 || !fields.value(1).startsWith("rw")) {
            continue;
        }
        const auto begin = range[0].toLongLong(nullptr, 16);
        const auto size = range[1].toLongLong(nullptr, 16) - begin;
        // The sanitizers' shadow is huge and holds no text.
        if (size > 256 * 1024 * 1024 || !memory.seek(begin)) {
            continue;
        }
        const auto bytes = memory.read(size);
        scanned += bytes.size();
        EXPECT_FALSE(bytes.contains(word.toUtf8()));
        const auto* wide = reinterpret_cast<const char*>(word.utf16());
        EXPECT_FALSE(bytes.contains(QByteArray(wide, word.size() * 2)));
    }
    EXPECT_GT(scanned, 1024 * 1024) << "the memory could be read";
}

TEST_F(MousepadTest, twoWindowsOfOneProcess) {
    EXPECT_EQ(stage.fire(u"Ctrl+Shift+N"_s), u"⌃⇧N  New Window"_s);
    const auto second = stage.windows().awaitActive(titled(u"Untitled"_s));
    stage.awaitCommandsOf(mousepad);
    EXPECT_EQ(stage.fire(u"Ctrl+R"_s), u"⌃R  Find and Replace..."_s);
    EXPECT_NE(second.handle, editor.handle);
}

TEST_F(MousepadTest, focusOnTheBareDesktopShowsNothing) {
    const auto other = stage.start(geany);
    stage.windows().close(editor.handle);
    stage.windows().awaitGone(editor.handle);
    stage.windows().activate(other.handle);
    stage.awaitCommandsOf(geany);
    stage.windows().close(other.handle);
    stage.windows().awaitGone(other.handle);
    stage.keys().press(u"Ctrl+A"_s);
    stage.keys().press(u"Ctrl+F"_s);
    stage.start(mousepad);
    EXPECT_THAT(stage.awaitCommandsOf(mousepad), ElementsAre());
}

} // namespace
} // namespace orvantile::test
