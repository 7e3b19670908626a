#include "platform/linux/wayland/FrontWindow.h"

#include <algorithm>
#include <utility>

namespace orvantile::platform::wayland {
namespace {

constexpr std::size_t mostClaims = 64;
constexpr std::size_t mostHandles = 1'000;

/// Of an identifier such as "org.example.Editor" what a program may be called.
QString lastPart(const QString& applicationId) {
    return applicationId.section(u'.', -1);
}

bool isPartOf(const QString& one, const QString& other) {
    return one.contains(other, Qt::CaseInsensitive) || other.contains(one, Qt::CaseInsensitive);
}

} // namespace

FrontWindow::FrontWindow(Scheduler& scheduler_, ProgramName programName_)
    : scheduler(scheduler_),
      programName(std::move(programName_)) {}

std::string FrontWindow::application() const {
    return frontReference ? frontReference->name : std::string();
}

void FrontWindow::appeared(const std::string& name, std::int32_t processIdentifier) {
    processes[name] = processIdentifier;
    consider();
}

void FrontWindow::gone(const std::string& name) {
    processes.erase(name);
    std::erase_if(claims, [&](const Claim& claim) { return claim.window.name == name; });
    std::erase_if(handles, [&](const auto& entry) { return entry.first.first == name; });
    consider();
}

void FrontWindow::activated(const a11y::ObjectReference& window, const QString& title) {
    const auto known = claimOf(window);
    const bool popup =
        title.isEmpty() && known == claims.end() && std::ranges::any_of(claims, [&](const Claim& claim) {
            return claim.window.name == window.name && !claim.title.isEmpty();
        });
    if (popup) {
        if (onPopup) {
            onPopup(window);
        }
        return;
    }
    if (known != claims.end()) {
        claims.erase(known);
    } else if (claims.size() >= mostClaims) {
        claims.erase(claims.begin());
    }
    claims.push_back({window, title.trimmed()});
    consider();
}

void FrontWindow::deactivated(const a11y::ObjectReference& window) {
    if (const auto claim = claimOf(window); claim != claims.end()) {
        claims.erase(claim);
        consider();
    }
}

void FrontWindow::destroyed(const a11y::ObjectReference& window) {
    handles.erase(Key(window.name, window.path));
    deactivated(window);
    if (frontReference == window) {
        decide(); // the next one may get its name
    }
}

void FrontWindow::renamed(const a11y::ObjectReference& window, const QString& title) {
    const auto claim = claimOf(window);
    if (claim == claims.end()) {
        return;
    }
    claim->title = title.trimmed();
    consider();
}

void FrontWindow::focused(std::optional<FocusedToplevel> toplevel) {
    if (toplevel != focus) {
        focus = std::move(toplevel);
        consider();
    }
}

void FrontWindow::settle() {
    if (pending) {
        decide();
    }
}

void FrontWindow::clear() {
    claims.clear();
    processes.clear();
    handles.clear();
    decide();
}

std::vector<FrontWindow::Claim>::iterator FrontWindow::claimOf(const a11y::ObjectReference& window) {
    return std::ranges::find(claims, window, &Claim::window);
}

/// Whether the claim may be for the window that the compositor means. Nothing connects the two but names, and
/// those that an application gives its window on either side need not be the same.
bool FrontWindow::agrees(const Claim& claim, std::int32_t process) const {
    if (!focus) {
        return true;
    }
    if (focus->number == 0) {
        return false;
    }
    if (claim.title.isEmpty() || focus->title.isEmpty() || isPartOf(claim.title, focus->title)) {
        return true;
    }
    const auto program = programName(process);
    const auto wanted = lastPart(focus->applicationId);
    return program.isEmpty() || wanted.isEmpty() || isPartOf(program, wanted);
}

/// The latest claim that nothing speaks against.
std::optional<std::size_t> FrontWindow::choose() const {
    for (auto index = claims.size(); index-- > 0;) {
        const auto process = processes.find(claims[index].window.name);
        if (process != processes.end() && agrees(claims[index], process->second)) {
            return index;
        }
    }
    return std::nullopt;
}

void FrontWindow::consider() {
    const auto chosen = choose();
    const bool same = chosen ? frontReference == claims[*chosen].window : !frontReference.has_value();
    if (same) {
        pending.reset();
        if (chosen && front->title != claims[*chosen].title) {
            front->title = claims[*chosen].title;
            announce();
        }
        return;
    }
    const auto former = frontReference ? claimOf(*frontReference) : claims.end();
    const bool stands = former != claims.end() && agrees(*former, front->processIdentifier);
    if (chosen && !stands) {
        decide();
        return;
    }
    if (chosen) {
        contest(claims[*chosen].window);
    }
    if (!pending) {
        pending = scheduler.runAfter(chosen ? settling : absence, [this] {
            decide();
            if (claims.size() > 1 && frontReference) {
                contest(*frontReference);
            }
        });
    }
}

void FrontWindow::contest(const a11y::ObjectReference& window) const {
    if (onContested) {
        onContested(a11y::ObjectReference(window));
    }
}

void FrontWindow::decide() {
    pending.reset();
    const auto chosen = choose();
    frontReference.reset();
    auto former = std::exchange(front, std::nullopt);
    if (chosen) {
        const auto& claim = claims[*chosen];
        if (handles.size() >= mostHandles) {
            handles.clear();
        }
        auto& handle = handles[Key(claim.window.name, claim.window.path)];
        if (handle == 0) {
            handle = ++latestHandle;
        }
        frontReference = claim.window;
        front = session::ActiveWindow{.handle = handle,
                                      .processIdentifier = processes.at(claim.window.name),
                                      .title = claim.title,
                                      .dialog = false,
                                      .accessible = claim.window};
    }
    if (front != former) {
        announce();
    }
}

void FrontWindow::announce() const {
    if (onChanged) {
        onChanged();
    }
}

} // namespace orvantile::platform::wayland
