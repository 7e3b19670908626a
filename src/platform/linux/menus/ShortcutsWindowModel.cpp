#include "platform/linux/menus/ShortcutsWindowModel.h"

#include "platform/linux/menus/CommandList.h"

#include <algorithm>
#include <array>
#include <mutex>
#include <utility>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace orvantile::platform::menus {
namespace {

constexpr std::size_t mostProcesses = 32;

bool isFunctionKey(keys::KeySymbol symbol) {
    return symbol >= XKB_KEY_F1 && symbol <= XKB_KEY_F35;
}

/// Whether the keys edit or walk through text. What they do then depends on the field with the focus and on
/// what is selected in it, of which the list says nothing.
bool editsText(const keys::Accelerator& accelerator) {
    constexpr auto editing =
        std::to_array<keys::KeySymbol>({XKB_KEY_a, XKB_KEY_c, XKB_KEY_v, XKB_KEY_x, XKB_KEY_y, XKB_KEY_z,
                                        XKB_KEY_Home, XKB_KEY_End, XKB_KEY_Left, XKB_KEY_Right, XKB_KEY_Up,
                                        XKB_KEY_Down, XKB_KEY_Insert, XKB_KEY_Delete, XKB_KEY_BackSpace});
    const auto& held = accelerator.modifiers;
    if (held.alt || held.super || isFunctionKey(accelerator.symbol)) {
        return false;
    }
    return !held.control || std::ranges::find(editing, accelerator.symbol) != editing.end();
}

/// Only windows of the application's own kind have its shortcuts: neither dialogs nor the list itself.
bool isMainWindow(const session::ActiveWindow& window) {
    return !window.dialog && !window.objects.gtkWindow.empty();
}

} // namespace

struct ShortcutsWindowModel::Answers {
    std::mutex mutex;
    ShortcutsWindowModel* model = nullptr; ///< null when it has gone
};

ShortcutsWindowModel::ShortcutsWindowModel(SessionMenuBus& bus_, Read read_)
    : bus(bus_),
      read(std::move(read_)),
      answers(std::make_shared<Answers>()) {
    answers->model = this;
    bus.onLost([this] { unwatch(); });
}

ShortcutsWindowModel::~ShortcutsWindowModel() {
    const std::scoped_lock lock(answers->mutex);
    answers->model = nullptr;
}

void ShortcutsWindowModel::unwatch() {
    watched = {};
    actions = {};
}

void ShortcutsWindowModel::follow(std::int32_t processIdentifier) {
    if (std::exchange(followed, processIdentifier) != processIdentifier) {
        latestWindow.reset();
        unwatch();
    }
}

void ShortcutsWindowModel::windowActivated(const session::ActiveWindow& window) {
    if (window.processIdentifier != followed || !isMainWindow(window)) {
        return;
    }
    latestWindow = window;
    if (!known.contains(followed)) {
        learn(followed);
    } else {
        watchActions(window.objects);
    }
}

void ShortcutsWindowModel::learn(std::int32_t processIdentifier) {
    if (std::exchange(reading, true)) {
        return; // the next one is found when this has been read
    }
    worker.schedule([box = answers, reading = read, processIdentifier] {
        auto shortcuts = reading(processIdentifier);
        const std::scoped_lock lock(box->mutex);
        if (box->model == nullptr) {
            return;
        }
        QMetaObject::invokeMethod(
            &box->model->context,
            [model = box->model, processIdentifier, told = std::move(shortcuts)]() mutable {
                model->learned(processIdentifier, std::move(told));
            },
            Qt::QueuedConnection);
    });
}

void ShortcutsWindowModel::learned(std::int32_t processIdentifier, Shortcuts shortcuts) {
    reading = false;
    if (known.size() >= mostProcesses) {
        known.clear();
    }
    known[processIdentifier] = std::move(shortcuts);
    if (latestWindow) {
        windowActivated(*latestWindow);
    }
    if (onRead) {
        onRead();
    }
}

void ShortcutsWindowModel::watchActions(const session::WindowObjects& objects) {
    if (objects == watched ||
        std::ranges::none_of(known[followed], [](const auto& each) { return !each.action.empty(); })) {
        return;
    }
    if (auto* connection = bus.open()) {
        watched = objects;
        actions = ActionGroups(*connection, objects);
    }
}

bool ShortcutsWindowModel::isEnabled(const DescribedShortcut& shortcut) const {
    return actions.isEnabled(shortcut.action).value_or(!editsText(shortcut.accelerator));
}

a11y::MenuAnswer ShortcutsWindowModel::commandFor(const session::ActiveWindow& window,
                                                  const keys::Candidates& candidates) {
    const auto shortcuts = known.find(window.processIdentifier);
    if (shortcuts == known.end() || !isMainWindow(window)) {
        return {};
    }
    Commands meant;
    for (const auto& each : shortcuts->second) {
        if (std::ranges::find(candidates, each.accelerator) != candidates.end()) {
            meant.push_back({each.title, each.accelerator, isEnabled(each)});
        }
    }
    return answer(meant, candidates);
}

a11y::MenuReach ShortcutsWindowModel::reach(std::int32_t processIdentifier) const {
    const auto shortcuts = known.find(processIdentifier);
    const auto count = shortcuts == known.end() ? 0 : shortcuts->second.size();
    return {.items = count, .accelerators = count};
}

} // namespace orvantile::platform::menus
