#pragma once

#include <QByteArray>
#include <QString>
#include <memory>

namespace orvantile::test {

/// A window that a test makes on a compositor: that of the program which the user works with. It serves the
/// compositor while one of its members waits. Throws std::runtime_error when it cannot be had.
class Bystander {
public:
    /// `compositor`: the path of its socket.
    explicit Bystander(const QString& compositor);
    Bystander(const Bystander&) = delete;
    Bystander& operator=(const Bystander&) = delete;
    ~Bystander();

    /// Waits until it has the focus, or has it no more. False at the deadline.
    [[nodiscard]] bool awaitFocus();
    [[nodiscard]] bool awaitLossOfFocus();

    /// What a program that is launched from this window is given, so that its own may come to the front.
    [[nodiscard]] QByteArray activationToken();

private:
    struct Protocol;

    std::unique_ptr<Protocol> protocol;
};

} // namespace orvantile::test
