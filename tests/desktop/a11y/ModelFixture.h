#pragma once

#include "platform/linux/a11y/BusMenuModel.h"
#include "support/desktop/PrivateSession.h"

#include <functional>
#include <gmock/gmock.h>
#include <memory>

namespace orvantile::test {

/// A fake program and the pipe that it takes orders from.
class FakeProgram {
public:
    FakeProgram(const PrivateSession& session, const QStringList& options);

    [[nodiscard]] pid_t processIdentifier() const { return process->processIdentifier(); }

    void order(const QByteArray& line) const;

    void signal(int number) const { process->signal(number); }

    [[nodiscard]] ChildProcess& child() { return *process; }

private:
    QString pipe;
    std::unique_ptr<ChildProcess> process;
};

/// The menu model on an accessibility bus of its own.
class ModelFixture : public ::testing::Test {
protected:
    ModelFixture();

    /// Turns the main loop until `condition` holds; false when it takes too long.
    [[nodiscard]] static bool eventually(const std::function<bool()>& condition);

    [[nodiscard]] std::unique_ptr<FakeProgram> start(const QStringList& options = {}) const;

    /// Starts a program and brings its window to the front.
    [[nodiscard]] std::unique_ptr<FakeProgram> startInFront(const QStringList& options = {});

    [[nodiscard]] static platform::session::ActiveWindow
    windowOf(const FakeProgram& program, const QString& title = QStringLiteral("Fake Window"),
             bool dialog = false);
    void bringToFront(const FakeProgram& program);

    /// What the key combination fires in the program's window: a title, or "(none)".
    [[nodiscard]] QString fired(const FakeProgram& program, const QString& accelerator) const;
    [[nodiscard]] QString fired(const platform::session::ActiveWindow& window,
                                const QString& accelerator) const;

    /// Waits until the combination fires that.
    [[nodiscard]] bool fires(const FakeProgram& program, const QString& accelerator,
                             const QString& title) const;

    PrivateSession session;
    std::unique_ptr<platform::a11y::BusMenuModel> model;
};

} // namespace orvantile::test
