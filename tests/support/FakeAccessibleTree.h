#pragma once

#include <map>
#include <string>
#include <vector>

namespace orvantile::test {

/// How an application misbehaves, by command line option.
struct Manners {
    int items = 0;           ///< further items, "Command 0" onwards, beside the usual ones
    int titleBytes = 0;      ///< length of the titles of the further items
    bool boundItems = false; ///< the further items all have an accelerator
    bool collection = true;  ///< answers GetMatches
    bool cyclic = false;     ///< menus contain their own parents, endlessly
    bool wrongTypes = false; ///< everything but the tree is answered with numbers where texts belong
    bool garbageBindings = false;
    bool invalidUtf8 = false; ///< a title that is no text
    bool silent = false;      ///< never answers anything
    int stopAfter = 0;        ///< stops its own process at that question
};

struct FakeItem {
    std::string title;
    std::string binding;
    bool enabled = true;
};

/// The accessible objects of a program with one window, a menu bar and a menu.
class FakeAccessibleTree {
public:
    explicit FakeAccessibleTree(const Manners& manners);

    static constexpr auto root = "/org/a11y/atspi/accessible/root";

    [[nodiscard]] std::vector<std::string> children(const std::string& path) const;
    [[nodiscard]] unsigned role(const std::string& path) const;
    [[nodiscard]] std::string name(const std::string& path) const;
    [[nodiscard]] std::vector<unsigned> states(const std::string& path) const;
    [[nodiscard]] std::string binding(const std::string& path) const;

    /// All items, in order.
    [[nodiscard]] std::vector<std::string> itemPaths() const;

    /// The item's path; empty when there is none of that title.
    [[nodiscard]] std::string pathOf(const std::string& title) const;

    std::string addItem(const FakeItem& item);
    std::string addDialog(const std::string& title);
    [[nodiscard]] static std::string path(const std::string& rest);

    std::map<std::string, FakeItem> items; ///< by path
    std::string title = "Fake Window";

private:
    std::vector<std::string> order;
    std::map<std::string, std::string> dialogs; ///< titles by path
    bool cyclic;
};

} // namespace orvantile::test
