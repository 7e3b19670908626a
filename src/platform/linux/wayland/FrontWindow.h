#pragma once

#include "platform/Scheduler.h"
#include "platform/linux/a11y/ObjectReference.h"
#include "platform/linux/session/DesktopSession.h"
#include "platform/linux/wayland/FocusedToplevel.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace orvantile::platform::wayland {

/// Concludes which window is in front from what applications say of their own windows, and from what the
/// compositor says of the focus where it does.
///
/// Applications are not exact: an application that loses the focus may claim it once more in the same breath,
/// one that opens a dialog claims two windows for a moment, and the two applications of a switch speak in any
/// order. So a claim against one that still stands waits a moment for that one to be taken back. A popup of
/// an application claims the focus without a title and never takes that back: it is no window.
class FrontWindow {
public:
    /// A window against one that still has the focus, and nobody after somebody (seconds).
    static constexpr double settling = 0.03;
    static constexpr double absence = 0.15;

    /// Tells the name of a process's program; empty when it is not known.
    using ProgramName = std::function<QString(std::int32_t processIdentifier)>;

    FrontWindow(Scheduler& scheduler, ProgramName programName);

    /// The window in front has changed, or its title.
    std::function<void()> onChanged;

    /// A window claims the focus while another has not given it up. Whoever can ask it may tell that it was
    /// deactivated after all.
    std::function<void(const a11y::ObjectReference&)> onContested;

    /// An application has put a popup over its window.
    std::function<void(const a11y::ObjectReference&)> onPopup;

    [[nodiscard]] const std::optional<session::ActiveWindow>& window() const { return front; }

    /// The bus name of the application in front; empty when there is none.
    [[nodiscard]] std::string application() const;

    void appeared(const std::string& name, std::int32_t processIdentifier);
    void gone(const std::string& name);
    void activated(const a11y::ObjectReference& window, const QString& title);
    void deactivated(const a11y::ObjectReference& window);
    void destroyed(const a11y::ObjectReference& window);
    void renamed(const a11y::ObjectReference& window, const QString& title);

    /// Absent while the compositor does not tell.
    void focused(std::optional<FocusedToplevel> toplevel);

    /// Decides now what would be decided in a moment.
    void settle();

    /// Forgets all applications.
    void clear();

private:
    using Key = std::pair<std::string, std::string>;

    struct Claim {
        a11y::ObjectReference window;
        QString title;
    };

    [[nodiscard]] std::vector<Claim>::iterator claimOf(const a11y::ObjectReference& window);
    [[nodiscard]] bool agrees(const Claim& claim, std::int32_t process) const;
    [[nodiscard]] std::optional<std::size_t> choose() const;
    void consider();
    void decide();
    void contest(const a11y::ObjectReference& window) const;
    void announce() const;

    Scheduler& scheduler;
    ProgramName programName;
    std::vector<Claim> claims; ///< the latest at the end
    std::map<std::string, std::int32_t> processes;
    std::map<Key, std::uint64_t> handles;
    std::uint64_t latestHandle = 0;
    std::optional<FocusedToplevel> focus;
    std::optional<session::ActiveWindow> front;
    std::optional<a11y::ObjectReference> frontReference;
    std::unique_ptr<Scheduled> pending;
};

} // namespace orvantile::platform::wayland
