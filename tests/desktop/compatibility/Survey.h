#pragma once

#include "desktop/compatibility/Chord.h"
#include "desktop/compatibility/Desk.h"
#include "desktop/compatibility/Outcome.h"

#include <functional>
#include <map>

namespace orvantile::test {

/// How much of a program is surveyed.
struct SurveyOptions {
    int mostShortcuts = 1000;           ///< evenly taken from all there are
    std::chrono::seconds longest{1200}; ///< nothing is fired any more after that
    QStringList only{};                 ///< labels of the only keys to fire, such as "⌃S"; empty for all
    std::function<void(const Outcome&)> progress{};
};

/// Fires what a program's menus offer, and compares what the HUD shows with what the menus show.
class Survey {
public:
    Survey(const Program& program, SurveyOptions options);

    Report run();

private:
    struct Candidate {
        QString keys; ///< as the program writes them
        Chord chord;
        QString title;
        bool done = false;
    };

    void learnMenus();
    void thinOut();
    void awaitNames();
    [[nodiscard]] std::vector<Candidate> fences();
    void fireAll();
    void fireDisabledOnceMore();
    void fire(Candidate& candidate);
    [[nodiscard]] Outcome fireTwiceIfMissed(const Candidate& candidate);
    [[nodiscard]] bool isPressedWithShift(const Chord& chord) const;
    [[nodiscard]] Outcome fireNow(const Candidate& candidate);
    void fireKeysWithoutCommand();
    [[nodiscard]] Outcome judge(const Candidate& candidate, const std::vector<MenuEntry>& commands,
                                const QString& shown) const;
    [[nodiscard]] QString press(const Chord& chord, std::chrono::milliseconds wait);
    void backToRest();
    void record(Outcome outcome);

    const Program& program;
    SurveyOptions options;
    QDeadlineTimer deadline;
    Desk desk;
    std::vector<Candidate> candidates;
    bool named = true; ///< anything at all has been shown
    int sinceReading = 0;
    QString lastRight;
    Report report;
};

} // namespace orvantile::test
