#pragma once

#include "support/desktop/PrivateSession.h"

namespace orvantile::test {

/// Names the private session that this whole process runs in.
class CurrentSession {
public:
    explicit CurrentSession(PrivateSession& session);
    CurrentSession(const CurrentSession&) = delete;
    CurrentSession& operator=(const CurrentSession&) = delete;
    ~CurrentSession();

    /// Throws std::runtime_error in a process that runs in none.
    [[nodiscard]] static PrivateSession& get();
};

} // namespace orvantile::test
