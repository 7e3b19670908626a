#pragma once

#include "platform/linux/a11y/MenuModel.h"
#include "platform/linux/keys/Accelerator.h"

#include <QString>
#include <cstddef>
#include <vector>

namespace orvantile::platform::menus {

/// A menu command that a key combination fires.
struct Command {
    QString title; ///< as menus show it
    keys::Accelerator accelerator;
    bool enabled = false;

    friend bool operator==(const Command&, const Command&) = default;
};

using Commands = std::vector<Command>;

/// What `commands` say about a key press. Decided as soon as one of them, enabled or not, is meant by the
/// keys. Of several enabled ones the first counts.
[[nodiscard]] a11y::MenuAnswer answer(const Commands& commands, const keys::Candidates& candidates);

/// A label without the underscores that mark its mnemonic; doubled ones stand for themselves.
[[nodiscard]] QString withoutMnemonic(QStringView label);

/// More items than any program's menus hold.
inline constexpr std::size_t mostItems = 4'000;

} // namespace orvantile::platform::menus
