#pragma once

#include <QDeadlineTimer>
#include <QString>
#include <memory>

namespace orvantile::test {

/// A session manager of the X desktop for one program. At most one exists in a process. It does its work
/// while one of its members waits.
class SessionManager {
public:
    /// Throws std::runtime_error when there can be none.
    SessionManager();
    SessionManager(const SessionManager&) = delete;
    SessionManager& operator=(const SessionManager&) = delete;
    ~SessionManager();

    /// For the variable SESSION_MANAGER of the program.
    [[nodiscard]] QString address() const;

    /// Waits until the program has joined the session. False at the deadline.
    [[nodiscard]] bool awaitClient(const QDeadlineTimer& deadline);

    /// Ends the session as a user's log-out does: the program may save what it has, then it has to go. False
    /// when the program wants to ask the user first, or does not answer in time.
    [[nodiscard]] bool logOut(const QDeadlineTimer& deadline);

private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace orvantile::test
