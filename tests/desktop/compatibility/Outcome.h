#pragma once

#include <QString>
#include <vector>

namespace orvantile::test {

/// What came of one shortcut.
enum class Verdict {
    right,      ///< the HUD showed the keys and the title that the menu shows
    wrong,      ///< it showed something else
    missed,     ///< the command was there and enabled, or has been triggered, and nothing was shown
    falseAlarm, ///< something was shown though no command was there to fire
    quiet,      ///< no command was there to fire, and nothing was shown
    skipped     ///< not fired
};

struct Outcome {
    Verdict verdict = Verdict::skipped;
    QString keys;    ///< "⌃S"
    QString title;   ///< as the menu shows it
    QString shown{}; ///< the whole label; empty when nothing was
    QString detail{};
};

/// The outcomes of one program.
struct Report {
    QString program;
    int items = 0;        ///< of its menus
    int accelerators = 0; ///< different ones on these items
    int restarts = 0;
    std::vector<Outcome> outcomes;

    [[nodiscard]] int count(Verdict verdict) const;
};

[[nodiscard]] QString nameOf(Verdict verdict);

} // namespace orvantile::test
