#include "platform/linux/a11y/Toplevel.h"

namespace orvantile::platform::a11y {
namespace {

/// The only one that `matches`, or null.
template <typename Predicate>
const Toplevel* only(std::span<const Toplevel> toplevels, Predicate matches) {
    const Toplevel* found = nullptr;
    for (const auto& toplevel : toplevels) {
        if (matches(toplevel)) {
            if (found != nullptr) {
                return nullptr;
            }
            found = &toplevel;
        }
    }
    return found;
}

} // namespace

ToplevelChoice chooseToplevel(std::span<const Toplevel> toplevels, const session::ActiveWindow& window) {
    const QString title = window.title.trimmed();
    const auto named = [&](const Toplevel& toplevel) { return !title.isEmpty() && toplevel.title == title; };

    if (const auto* match = only(toplevels, named)) {
        return {match, true};
    }
    if (const auto* match = only(toplevels, [&](const auto& one) { return named(one) && one.active; })) {
        return {match, true};
    }
    if (const auto* match = only(toplevels, [&](const auto& one) {
            return one.active && (window.dialog ? one.dialog : one.main);
        })) {
        return {match, false};
    }
    if (window.dialog) {
        return {};
    }
    return {only(toplevels, [](const auto& one) { return one.main; }), false};
}

} // namespace orvantile::platform::a11y
