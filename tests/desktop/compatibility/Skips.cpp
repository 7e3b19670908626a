#include "desktop/compatibility/Skips.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

struct Skip {
    const char16_t* titles; ///< regular expression, in any case of letters
    const char16_t* reason;
};

constexpr auto skips = std::to_array<Skip>({
    {u"^(quit|exit|log ?out|shut ?down)\\b|^(quit|exit)$", u"ends the program"},
    {u"^close( window| all.*| tab| document| file| image| project)?$", u"closes the window"},
    {u"full ?screen|kiosk|presentation|slide ?show|distraction.free|focus mode|start from",
     u"takes the whole screen"},
    {u"\\bprint\\b|print(er|ing)|^print", u"looks for printers"},
    {u"help|contents|handbook|user guide|manual|online|what'?s this|forum|website|report .*bug|support",
     u"starts a browser or a help viewer"},
    {u"terminal here|open terminal|open in terminal|in new window|mail|open with", u"starts another program"},
    {u"screenshot|minimi[sz]e|\\block\\b|\\bsleep\\b|restart", u"leaves the window"},
    {u"menu ?bar", u"hides the menus themselves"},
    {u"^debug|macro|^run\\b|^build|^compile|^make\\b|^execute", u"runs commands"},
    {u"delete permanently|move to trash|send to", u"changes files"},
});

/// What the window manager keeps for itself.
constexpr auto windowManagersOwn = std::to_array<QStringView>({
    u"Alt+F4",         u"Alt+Escape",      u"Alt+space",      u"Alt+Tab",        u"Alt+Shift+Tab",
    u"Ctrl+Alt+Tab",   u"Ctrl+Alt+Left",   u"Ctrl+Alt+Right", u"Ctrl+Alt+Up",    u"Ctrl+Alt+Down",
    u"Alt+Shift+Left", u"Alt+Shift+Right", u"Alt+Shift+Up",   u"Alt+Shift+Down", u"Super+d",
    u"Super+e",        u"Super+F1",        u"Super+F2",       u"Super+F3",       u"Super+F4",
});

} // namespace

std::optional<QString> reasonToSkip(const Program& program, const Chord& chord, const QString& title) {
    for (const auto own : windowManagersOwn) {
        if (own.compare(chord.strokes.front(), Qt::CaseInsensitive) == 0) {
            return u"belongs to the window manager"_s;
        }
    }
    if (program.leaveOut.contains(title)) {
        return u"leads out of the window in this program"_s;
    }
    for (const auto& skip : skips) {
        const QRegularExpression pattern(QString::fromUtf16(skip.titles),
                                         QRegularExpression::CaseInsensitiveOption);
        if (pattern.match(title).hasMatch()) {
            return QString::fromUtf16(skip.reason);
        }
    }
    return std::nullopt;
}

} // namespace orvantile::test
