#pragma once

#include "support/desktop/PrivateSession.h"

#include <stdexcept>

namespace orvantile::test {

/// Names the private session that this whole process runs in.
template <typename Session>
class Current {
public:
    explicit Current(Session& session) { slot() = &session; }

    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;

    ~Current() { slot() = nullptr; }

    /// Throws std::runtime_error in a process that runs in none.
    [[nodiscard]] static Session& get() {
        if (slot() == nullptr) {
            throw std::runtime_error("this test executable does not run in a private session");
        }
        return *slot();
    }

private:
    static Session*& slot() {
        static Session* session = nullptr;
        return session;
    }
};

using CurrentSession = Current<PrivateSession>;

} // namespace orvantile::test
