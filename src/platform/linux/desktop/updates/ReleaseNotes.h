#pragma once

#include "platform/linux/desktop/updates/Appcast.h"

#include <QString>
#include <vector>

namespace orvantile::platform::desktop {

/// One paragraph of release notes: plain text, never markup.
struct NotesParagraph {
    enum class Kind { heading, text, bullet };

    Kind kind = Kind::text;
    QString text;

    friend bool operator==(const NotesParagraph&, const NotesParagraph&) = default;
};

using ReleaseNotes = std::vector<NotesParagraph>;

/// Reduces notes to headings, paragraphs and list items. Whatever else the markup asks for (pictures, styles,
/// scripts, tables, links) is dropped and its text kept. Reads at most 16 384 characters and gives at most
/// 400 paragraphs. Any thread, after the application object was made.
[[nodiscard]] ReleaseNotes readReleaseNotes(const QString& notes, NotesFormat format);

} // namespace orvantile::platform::desktop
