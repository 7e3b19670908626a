#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QString>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace orvantile::platform::a11y {

/// What is known of a menu item.
struct MenuItem {
    std::string path;
    std::string toplevel; ///< path of the window whose menus it is in
    std::optional<keys::Accelerator> accelerator;
    QString title; ///< trimmed
    bool enabled = false;
    bool copy = false;       ///< of an item of the same title, with its state of now but without its keys
    std::uint64_t seen = 0;  ///< the reading that found it last
    std::uint64_t order = 0; ///< later ones have higher numbers
};

/// The menu items of one application, found by path or by what fires them. Bounded.
class MenuTable {
public:
    /// More items than any program's menus hold.
    static constexpr std::size_t capacity = 4'000;

    /// The item at `path`, which is new if there was none; null when the table is full.
    MenuItem* insert(const std::string& path, const std::string& toplevel);

    [[nodiscard]] MenuItem* find(const std::string& path);

    void setAccelerator(MenuItem& item, std::optional<keys::Accelerator> accelerator);

    /// The enabled, named item of the window that `accelerator` fires; the one found first when there are
    /// several, or else one of which a copy is enabled. Null when there is none.
    [[nodiscard]] const MenuItem* command(const std::string& toplevel,
                                          const keys::Accelerator& accelerator) const;

    /// Whether any item of the window has an accelerator.
    [[nodiscard]] bool hasAccelerators(const std::string& toplevel) const;

    /// Paths of the items that have an accelerator.
    [[nodiscard]] std::vector<std::string> accelerated() const;

    /// Drops the window's items that the reading `seen` has not found.
    void removeUnseen(const std::string& toplevel, std::uint64_t seen);
    void removeToplevel(const std::string& toplevel);
    void clear();

    [[nodiscard]] std::size_t size() const { return items.size(); }

    [[nodiscard]] std::size_t acceleratedCount() const { return byAccelerator.size(); }

    [[nodiscard]] bool isFull() const { return items.size() >= capacity; }

private:
    using Items = std::unordered_map<std::string, MenuItem>;

    /// Many items may have one accelerator; each entry can still be found at once.
    using Key = std::pair<keys::Accelerator, std::uint64_t>;

    [[nodiscard]] bool hasEnabledCopy(const MenuItem& item) const;
    void unlink(const MenuItem& item);
    void removeIf(const std::function<bool(const MenuItem&)>& matches);

    Items items; ///< its elements never move
    std::map<Key, const MenuItem*> byAccelerator;
    std::uint64_t inserted = 0;
};

} // namespace orvantile::platform::a11y
