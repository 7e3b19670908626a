#include "macos/axfake/FakeApplication.h"

#include "macos/axfake/Objects.h"

#include <algorithm>
#include <ranges>

namespace orvantile::test {
namespace {

std::shared_ptr<const FakeElement> menuElement(const QString& title) {
    return std::make_shared<FakeElement>(FakeElement{
        {{QStringLiteral("AXRole"), QStringLiteral("AXMenu")}, {QStringLiteral("AXTitle"), title}}});
}

} // namespace

FakeApplication::FakeApplication(AxFake& fake_, pid_t process_, std::vector<FakeMenuItem> menuBar_)
    : fake(fake_),
      process(process_),
      menuBar(std::move(menuBar_)) {}

bool FakeApplication::press(const QString& character, std::int64_t modifiers) {
    const auto* item = find(menuBar, character, modifiers);
    if (item != nullptr) {
        select(*item);
    }
    return item != nullptr;
}

void FakeApplication::openMenu(const QString& title) {
    fake.post(process, QStringLiteral("AXMenuOpened"), menuElement(title));
}

void FakeApplication::closeMenu(const QString& title) {
    fake.post(process, QStringLiteral("AXMenuClosed"), menuElement(title));
}

void FakeApplication::pick(const std::vector<QString>& path) {
    const auto* items = &menuBar;
    for (const auto& title : path) {
        const auto item = std::ranges::find(*items, title, &FakeMenuItem::title);
        if (item == items->end()) {
            ax::misuse("FakeApplication::pick", "no such item");
        }
        if (item->submenu.empty()) {
            select(*item);
        } else {
            openMenu(title);
        }
        items = &item->submenu;
    }
    for (const auto& title : path | std::views::reverse | std::views::drop(1)) {
        closeMenu(title);
    }
}

const FakeMenuItem* FakeApplication::find(const std::vector<FakeMenuItem>& items, const QString& character,
                                          std::int64_t modifiers) {
    for (const auto& item : items) {
        if (item.submenu.empty() && item.character == character && item.modifiers == modifiers) {
            return &item;
        }
        if (const auto* deeper = find(item.submenu, character, modifiers)) {
            return deeper;
        }
    }
    return nullptr;
}

void FakeApplication::select(const FakeMenuItem& item) {
    FakeElement element;
    element.attributes = {
        {QStringLiteral("AXRole"), QStringLiteral("AXMenuItem")},
        {QStringLiteral("AXTitle"), item.title},
        {QStringLiteral("AXMenuItemCmdChar"), item.character},
        {QStringLiteral("AXMenuItemCmdModifiers"), item.modifiers},
    };
    if (item.glyph != 0) {
        element.attributes.emplace(QStringLiteral("AXMenuItemCmdGlyph"), item.glyph);
    }
    fake.post(process, QStringLiteral("AXMenuItemSelected"),
              std::make_shared<FakeElement>(std::move(element)));
}

} // namespace orvantile::test
