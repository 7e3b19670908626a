#include "platform/linux/desktop/accessibilitysettings/Programs.h"

#include <QProcess>
#include <QStandardPaths>
#include <csignal>

namespace orvantile::platform::desktop {
namespace {

using Qt::StringLiterals::operator""_s;

/// Programs inherit the blocked signals of the thread that starts them: none, for the life of this object.
class SignalsUnblocked {
public:
    SignalsUnblocked() {
        sigset_t none;
        sigemptyset(&none);
        pthread_sigmask(SIG_SETMASK, &none, &before);
    }

    SignalsUnblocked(const SignalsUnblocked&) = delete;
    SignalsUnblocked& operator=(const SignalsUnblocked&) = delete;

    ~SignalsUnblocked() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }

private:
    sigset_t before{};
};

} // namespace

std::optional<QString> findProgram(const QString& program, const QProcessEnvironment& environment) {
    const auto path = environment.value(u"PATH"_s).split(u':', Qt::SkipEmptyParts);
    if (program.isEmpty() || (path.isEmpty() && !program.startsWith(u'/'))) {
        return std::nullopt; // the toolkit would look in the PATH of this process
    }
    const auto found = QStandardPaths::findExecutable(program, path);
    return found.isEmpty() ? std::nullopt : std::optional(found);
}

bool startProgram(const QStringList& command, const QString& directory, const Launch& launch) {
    const auto program = command.isEmpty() ? std::nullopt : findProgram(command.front(), launch.environment);
    if (!program) {
        return false;
    }
    QProcess process;
    process.setProgram(*program);
    process.setArguments(command.mid(1));
    process.setProcessEnvironment(launch.childEnvironment());
    process.setWorkingDirectory(directory.isEmpty() ? launch.environment.value(u"HOME"_s) : directory);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    const SignalsUnblocked inherited;
    return process.startDetached();
}

} // namespace orvantile::platform::desktop
