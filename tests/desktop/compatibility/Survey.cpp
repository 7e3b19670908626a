#include "desktop/compatibility/Survey.h"

#include "desktop/compatibility/Skips.h"

#include <algorithm>
#include <set>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;
using namespace std::chrono_literals;

/// What a busy machine may take; a HUD usually comes within a few milliseconds.
constexpr auto waitForName = 2500ms;
constexpr auto waitForNothing = 500ms;
constexpr auto namesPatience = 30s;

/// Large menus take a second to read: then not every time.
constexpr std::size_t quicklyRead = 350;
constexpr int readingsApart = 25;

/// So much is fired in a program of which nothing is named.
constexpr int enoughMisses = 12;

constexpr QStringView noCommand = u"(in no menu)";

/// Where a command has several shortcuts that the same keys press ("⌃+" and "⌃⇧+"), each of them is right.
bool names(const QString& shown, const Chord& pressed, const MenuEntry& command) {
    const auto fits = [&](const Chord& chord) { return shown == chord.label + u"  "_s + command.title; };
    return fits(pressed) || std::ranges::any_of(command.otherKeys, [&](const QString& keys) {
               const auto other = chordOf(keys);
               return other && fits(*other);
           });
}

} // namespace

Survey::Survey(const Program& program_, SurveyOptions options_)
    : program(program_),
      options(std::move(options_)),
      deadline(options.longest),
      desk(program_) {
    report.program = program.name;
}

Report Survey::run() {
    desk.startOrvantile();
    desk.start();
    learnMenus();
    thinOut();
    awaitNames();
    fireAll();
    if (options.only.isEmpty()) {
        fireDisabledOnceMore();
        fireKeysWithoutCommand();
    }
    report.restarts = desk.restarts();
    return report;
}

void Survey::learnMenus() {
    const auto entries = desk.truth().read(desk.mainWindow());
    sinceReading = 0;
    report.items = std::max(report.items, static_cast<int>(entries.size()));
    for (const auto& entry : entries) {
        const auto chord = entry.keys.isEmpty() ? std::nullopt : chordOf(entry.keys);
        if (!chord || entry.title.isEmpty()) {
            continue;
        }
        const auto same = std::ranges::find_if(
            candidates, [&](const Candidate& known) { return known.chord.label == chord->label; });
        if (same == candidates.end()) {
            candidates.push_back({entry.keys, *chord, entry.title});
            ++report.accelerators;
        }
    }
}

void Survey::thinOut() {
    const auto most = static_cast<std::size_t>(options.mostShortcuts);
    if (candidates.size() <= most) {
        return;
    }
    for (std::size_t index = 0; index < candidates.size(); ++index) {
        // Whether a multiple of the step falls on it.
        candidates[index].done =
            (index * most) / candidates.size() == ((index + 1) * most) / candidates.size();
    }
}

/// Some that are enabled now, the least harmful first.
std::vector<Survey::Candidate> Survey::fences() {
    constexpr std::size_t most = 4;
    std::vector<Candidate> found;
    const auto take = [&](const Candidate& candidate) {
        if (found.size() < most && candidate.chord.label.size() > 1 &&
            !reasonToSkip(program, candidate.chord, candidate.title) &&
            std::ranges::any_of(desk.truth().again(desk.mainWindow(), candidate.keys), &MenuEntry::enabled)) {
            found.push_back(candidate);
        }
    };
    for (const auto& preferred : {lastRight, u"⌃A"_s}) {
        const auto known =
            std::ranges::find(candidates, preferred, [](const auto& each) { return each.chord.label; });
        if (known != candidates.end()) {
            take(*known);
        }
    }
    std::ranges::for_each(candidates, take);
    return found;
}

/// The program under test reads the menus of an application when that comes to the front; until then nothing
/// can be named.
void Survey::awaitNames() {
    const QDeadlineTimer limit(named ? namesPatience : std::chrono::seconds(3));
    const auto tried = fences();
    for (std::size_t attempt = 0; !tried.empty() && !limit.hasExpired(); ++attempt) {
        const auto shown = press(tried[attempt % tried.size()].chord, 700ms);
        if (desk.restore()) {
            learnMenus();
        }
        if (!shown.isEmpty()) {
            named = true;
            desk.awaitIdle(); // one is named, the others may still be read
            return;
        }
    }
    named = named && tried.empty();
}

void Survey::fireAll() {
    // Reading the menus again may add candidates: an item that was disabled may not have told its keys.
    for (std::size_t index = 0; index < candidates.size(); ++index) {
        fire(candidates[index]);
    }
}

/// What was disabled may not be after all the rest has been fired: there is something to undo, say.
void Survey::fireDisabledOnceMore() {
    for (std::size_t index = 0; index < report.outcomes.size(); ++index) {
        const auto outcome = report.outcomes[index];
        const auto candidate = std::ranges::find_if(
            candidates, [&](const Candidate& known) { return known.chord.label == outcome.keys; });
        if (outcome.verdict != Verdict::quiet || candidate == candidates.end() || deadline.hasExpired()) {
            continue;
        }
        if (!program.prepare.isEmpty()) {
            desk.stage().keys().type(program.prepare);
            desk.stage().keys().press(u"Ctrl+A"_s);
            desk.settle();
        }
        const auto again = *candidate;
        if (std::ranges::none_of(desk.truth().again(desk.mainWindow(), again.keys), &MenuEntry::enabled)) {
            continue;
        }
        const auto second = fireNow(again);
        if (second.verdict != Verdict::quiet) {
            report.outcomes[index] = second;
            if (options.progress) {
                options.progress(second);
            }
        }
    }
}

void Survey::fire(Candidate& given) {
    const bool wanted = options.only.isEmpty() || options.only.contains(given.chord.label);
    if (given.done || !wanted) {
        return;
    }
    given.done = true;
    const auto candidate = given; // reading the menus again moves them
    const auto skip = [&](const QString& reason) {
        record({Verdict::skipped, candidate.chord.label, candidate.title, {}, reason});
    };
    if (const auto reason = reasonToSkip(program, candidate.chord, candidate.title)) {
        skip(*reason);
    } else if (isPressedWithShift(candidate.chord)) {
        skip(u"the keyboard gives the same keys for another with Shift"_s);
    } else if (deadline.hasExpired()) {
        skip(u"no time left"_s);
    } else if (!named && report.count(Verdict::missed) >= enoughMisses) {
        skip(u"nothing is named in this program"_s);
    } else {
        record(fireTwiceIfMissed(candidate));
    }
}

/// A program that is slow to act on the last shortcut may have had another window in front by then. Whatever
/// the second attempt gives is marked as such.
Outcome Survey::fireTwiceIfMissed(const Candidate& candidate) {
    auto outcome = fireNow(candidate);
    if (outcome.verdict == Verdict::missed && named && candidate.chord.label.size() > 1) {
        desk.awaitIdle();
        if (auto second = fireNow(candidate); second.verdict == Verdict::right) {
            second.detail = u"second attempt"_s;
            return second;
        }
    }
    return outcome;
}

/// Whether there is another shortcut that differs by Shift alone, which its character needs anyway.
bool Survey::isPressedWithShift(const Chord& chord) const {
    constexpr QStringView shifted = u"~!@#$%^&*()_+{}|:\"<>?";
    if (!shifted.contains(chord.label.back()) || chord.label.contains(u'⇧')) {
        return false;
    }
    auto withShift = chord.label;
    withShift.insert(withShift.size() - 1, u'⇧');
    return std::ranges::any_of(
        candidates, [&](const Candidate& candidate) { return candidate.chord.label == withShift; });
}

Outcome Survey::fireNow(const Candidate& candidate) {
    try {
        // What the last one did may come late: the menus are looked at just before the keys are pressed.
        desk.stage().huds().awaitHidden();
        if (!desk.isAtRest()) {
            backToRest();
        }
        auto commands = desk.truth().again(desk.mainWindow(), candidate.keys);
        if (desk.knowsTriggered()) {
            static_cast<void>(desk.truth().triggered());
        }
        const bool expected = std::ranges::any_of(commands, &MenuEntry::enabled);
        const auto shown = press(candidate.chord, expected ? waitForName : waitForNothing);
        if (desk.knowsTriggered()) {
            commands = desk.truth().triggered();
        }
        const bool late = desk.knowsTriggered() && commands.empty() && !shown.isEmpty();
        backToRest();
        if (late) {
            commands = desk.truth().triggered(); // what it does first may have waited for an answer
        }
        if (desk.knowsTriggered()) {
            for (auto& command : commands) {
                command.enabled = true; // it may have disabled itself
            }
        }
        return judge(candidate, commands, shown);
    } catch (const std::runtime_error&) {
        desk.start();
        learnMenus();
        awaitNames();
        return {Verdict::skipped,
                candidate.chord.label,
                candidate.title,
                {},
                u"the program crashes or stops answering"_s};
    }
}

Outcome Survey::judge(const Candidate& candidate, const std::vector<MenuEntry>& commands,
                      const QString& shown) const {
    Outcome outcome{Verdict::quiet, candidate.chord.label, candidate.title, shown};
    bool any = false;
    for (const auto& command : commands) {
        if (!command.enabled) {
            continue;
        }
        if (!any) {
            outcome.title = command.title;
        }
        any = true;
        if (names(shown, candidate.chord, command)) {
            outcome.title = command.title;
            outcome.verdict = Verdict::right;
            return outcome;
        }
    }
    if (any) {
        outcome.verdict = shown.isEmpty() ? Verdict::missed : Verdict::wrong;
    } else if (!shown.isEmpty()) {
        outcome.verdict = Verdict::falseAlarm;
    } else {
        const bool inMenu = candidate.title != noCommand;
        outcome.detail = !inMenu ? QString() : desk.knowsTriggered() ? u"not triggered"_s : u"disabled"_s;
    }
    return outcome;
}

/// What no menu has: nothing is to be shown.
void Survey::fireKeysWithoutCommand() {
    for (const auto& keys : {u"Ctrl+Alt+Shift+J"_s, u"Ctrl+Shift+F11"_s, u"Alt+Shift+F6"_s, u"Ctrl+Alt+8"_s,
                             u"Ctrl+Alt+Shift+End"_s}) {
        const auto chord = chordOf(keys);
        const bool taken = std::ranges::any_of(
            candidates, [&](const Candidate& candidate) { return candidate.chord.label == chord->label; });
        if (taken) {
            continue;
        }
        if (desk.knowsTriggered()) {
            static_cast<void>(desk.truth().triggered());
        }
        const auto shown = press(*chord, waitForNothing);
        const Candidate none{keys, *chord, noCommand.toString()};
        record(
            judge(none, desk.knowsTriggered() ? desk.truth().triggered() : std::vector<MenuEntry>(), shown));
        backToRest();
    }
}

QString Survey::press(const Chord& chord, std::chrono::milliseconds wait) {
    auto& huds = desk.stage().huds();
    huds.awaitHidden();
    huds.takeAll();
    for (const auto& stroke : chord.strokes) {
        desk.stage().keys().press(stroke);
    }
    const auto hud = huds.awaitNext(QDeadlineTimer(wait));
    return hud ? hud->label : QString();
}

void Survey::backToRest() {
    ++sinceReading;
    if (desk.restore()) {
        learnMenus();
        awaitNames();
    } else if (candidates.size() < 1000 &&
               (static_cast<std::size_t>(report.items) <= quicklyRead || sinceReading >= readingsApart)) {
        learnMenus();
    }
}

void Survey::record(Outcome outcome) {
    if (outcome.verdict == Verdict::right) {
        lastRight = outcome.keys;
        named = true;
    }
    if (options.progress) {
        options.progress(outcome);
    }
    report.outcomes.push_back(std::move(outcome));
}

} // namespace orvantile::test
