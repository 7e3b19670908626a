#include "support/desktop/CurrentSession.h"

#include <stdexcept>

namespace orvantile::test {
namespace {

PrivateSession*& current() {
    static PrivateSession* session = nullptr;
    return session;
}

} // namespace

CurrentSession::CurrentSession(PrivateSession& session) {
    current() = &session;
}

CurrentSession::~CurrentSession() {
    current() = nullptr;
}

PrivateSession& CurrentSession::get() {
    if (current() == nullptr) {
        throw std::runtime_error("this test executable does not run in a private session");
    }
    return *current();
}

} // namespace orvantile::test
