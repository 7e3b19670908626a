#pragma once

#include "platform/linux/keys/Accelerator.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace orvantile::platform::menus {

/// A line of the window in which a GTK program lists its shortcuts.
struct DescribedShortcut {
    QString title;
    keys::Accelerator accelerator;
    std::string action; ///< what it activates, such as "win.save"; empty when the line does not say

    friend bool operator==(const DescribedShortcut&, const DescribedShortcut&) = default;
};

/// Gives a text in the user's language: its translation domain (may be empty), context (may be empty), text.
using Translate =
    std::function<QString(const QByteArray& domain, const QByteArray& context, const QByteArray& text)>;

/// The shortcuts in a description of GTK's builder; lines with several accelerators give several. Gestures,
/// ranges of keys and sequences are left out. Empty when it is no such description.
[[nodiscard]] std::vector<DescribedShortcut> describedShortcuts(const QByteArray& description,
                                                                const Translate& translate);

} // namespace orvantile::platform::menus
