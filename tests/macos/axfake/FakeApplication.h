#pragma once

#include "macos/axfake/AxFake.h"

#include <vector>

namespace orvantile::test {

/// A command or a submenu of a fake application.
struct FakeMenuItem {
    QString title;
    QString character;          ///< of the key equivalent; empty for none
    std::int64_t modifiers = 0; ///< the accessibility interface's mask: 0 is Command alone
    std::int64_t glyph = 0;     ///< 0 for none
    std::vector<FakeMenuItem> submenu;
};

/// A process with a menu bar that posts what an application posts.
class FakeApplication {
public:
    FakeApplication(AxFake& fake, pid_t process, std::vector<FakeMenuItem> menuBar);

    /// The user presses a key equivalent: its item is selected, and no menu opens. False when no item has it.
    bool press(const QString& character, std::int64_t modifiers);

    void openMenu(const QString& title);
    void closeMenu(const QString& title);

    /// The user opens the menus along the path and chooses the last item, after which all of them close.
    void pick(const std::vector<QString>& path);

private:
    [[nodiscard]] static const FakeMenuItem* find(const std::vector<FakeMenuItem>& items,
                                                  const QString& character, std::int64_t modifiers);
    void select(const FakeMenuItem& item);

    AxFake& fake;
    pid_t process;
    std::vector<FakeMenuItem> menuBar;
};

} // namespace orvantile::test
