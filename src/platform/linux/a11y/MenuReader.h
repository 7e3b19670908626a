#pragma once

#include "platform/linux/a11y/MenuTable.h"
#include "platform/linux/a11y/ReplyDecoder.h"
#include "platform/linux/a11y/RequestQueue.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace orvantile::platform::a11y {

/// Fills the table of one application's menu items. Finds the menu bars near the top of a window, asks each
/// for the items in it, and walks through the menus where an application cannot answer that. Looks nowhere
/// else: a window may hold a whole web page. Main thread only.
class MenuReader {
public:
    MenuReader(std::string name, RequestQueue& requests, MenuTable& table);

    /// Learns the window's items; those that are known already are only confirmed.
    void readWindow(const std::string& toplevel);

    /// Reads an item's accelerator, then its title and state.
    void readItem(const std::string& path);

    /// Reads the title and state of every item that has an accelerator.
    void refreshAccelerated();

    /// Takes the next piece of what is still to be asked; false when there is none.
    bool readOn();

    /// Forgets what was being read.
    void abandon();

    /// Whether the object holds, or has been looked into for, a menu bar.
    [[nodiscard]] bool hasLookedInto(const std::string& path) const { return containers.contains(path); }

private:
    /// One look at a window.
    struct Scan {
        std::string toplevel;
        std::uint64_t number = 0;
        std::size_t steps = 0; ///< questions and lists that may still reveal items
        std::size_t explored = 0;
        bool foundMenuBar = false;
        bool failed = false;
        std::vector<std::string> toolBars;       ///< looked into only if there is no menu bar elsewhere
        std::unordered_set<std::string> visited; ///< against cycles and endless trees
    };

    using ScanHandle = std::shared_ptr<Scan>;

    /// Items, or parts of menus, that an answer lists.
    struct PendingList {
        ScanHandle scan;
        ReferenceList list;
        int depth = 0;
        bool itemsOnly = false;
    };

    void explore(const ScanHandle& scan, const std::string& path, int depth);
    void exploreRole(const ScanHandle& scan, const std::string& path, int depth, std::uint32_t role);
    void match(const ScanHandle& scan, const std::string& menuBar);
    void walk(const ScanHandle& scan, const std::string& path, int depth);
    void walkNode(const ScanHandle& scan, const std::string& path, int depth);
    void found(const ScanHandle& scan, const std::string& path);
    void readDetails(const std::string& path);
    void readOn(PendingList& pending);
    void step(const ScanHandle& scan);
    [[nodiscard]] bool visit(Scan& scan, const ObjectReference& object) const;

    std::string name;
    RequestQueue& requests;
    MenuTable& table;
    std::uint64_t latestScan = 0;
    std::deque<PendingList> lists;
    std::vector<std::string> stale; ///< items whose title and state are to be read again
    std::unordered_set<std::string> containers;
};

} // namespace orvantile::platform::a11y
