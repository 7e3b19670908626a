#include "desktop/a11y/ModelFixture.h"

#include "platform/linux/keys/KeyBinding.h"

#include <QEventLoop>
#include <QFile>
#include <QTimer>
#include <stdexcept>
#include <sys/stat.h>

namespace orvantile::test {

using platform::session::ActiveWindow;

FakeProgram::FakeProgram(const PrivateSession& session, const QStringList& options) {
    static int number = 0;
    pipe = session.home() + QStringLiteral("/orders-%1").arg(++number);
    if (mkfifo(pipe.toLocal8Bit().constData(), 0600) != 0) {
        throw std::runtime_error("no pipe for orders");
    }
    process = session.start(QStringLiteral(FAKE_ACCESSIBLE), QStringList{pipe} + options);
    if (process->awaitLine() != "ready") {
        throw std::runtime_error("the fake program did not start: " + process->standardError().toStdString());
    }
}

void FakeProgram::order(const QByteArray& line) const {
    QFile file(pipe);
    if (!file.open(QIODevice::WriteOnly) || file.write(line + '\n') < 0) {
        throw std::runtime_error("the fake program takes no orders");
    }
}

ModelFixture::ModelFixture() : session({.windowManager = WindowManager::none}) {
    session.enter();
    model = platform::a11y::makeBusMenuModel({});
}

bool ModelFixture::eventually(const std::function<bool()>& condition) {
    const QDeadlineTimer deadline(patience);
    QTimer beat; // conditions change by messages, none of which the test sees
    beat.start(5);
    while (!condition()) {
        if (deadline.hasExpired()) {
            return false;
        }
        QEventLoop().processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

std::unique_ptr<FakeProgram> ModelFixture::start(const QStringList& options) const {
    return std::make_unique<FakeProgram>(session, options);
}

std::unique_ptr<FakeProgram> ModelFixture::startInFront(const QStringList& options) {
    auto program = start(options);
    bringToFront(*program);
    return program;
}

ActiveWindow ModelFixture::windowOf(const FakeProgram& program, const QString& title, bool dialog) {
    return {static_cast<std::uint64_t>(program.processIdentifier()), program.processIdentifier(), title,
            dialog};
}

void ModelFixture::bringToFront(const FakeProgram& program) {
    model->follow(program.processIdentifier());
    model->windowActivated(windowOf(program));
}

QString ModelFixture::fired(const FakeProgram& program, const QString& accelerator) const {
    return fired(windowOf(program), accelerator);
}

QString ModelFixture::fired(const ActiveWindow& window, const QString& accelerator) const {
    const auto parsed = platform::keys::parseAccelerator(accelerator);
    const auto node = parsed ? model->commandFor(window, {*parsed}).command : nullptr;
    return node ? std::get<QString>(node->copyAttribute(u"AXTitle")) : QStringLiteral("(none)");
}

bool ModelFixture::fires(const FakeProgram& program, const QString& accelerator, const QString& title) const {
    return eventually([&] { return fired(program, accelerator) == title; });
}

} // namespace orvantile::test
