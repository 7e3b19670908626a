#include "support/desktop/ChildProcess.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <vector>

namespace orvantile::test {
namespace {

std::vector<std::string> toStrings(const QStringList& texts) {
    std::vector<std::string> strings;
    for (const QString& text : texts) {
        strings.push_back(text.toStdString());
    }
    return strings;
}

std::vector<char*> toPointers(std::vector<std::string>& strings) {
    std::vector<char*> pointers;
    for (std::string& string : strings) {
        pointers.push_back(string.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

[[noreturn]] void fail(const QString& what) {
    throw std::runtime_error(what.toStdString());
}

} // namespace

ChildProcess::ChildProcess(const Command& command) {
    const QString path =
        command.program.contains(u'/')
            ? command.program
            : QStandardPaths::findExecutable(command.program,
                                             command.environment.value(QStringLiteral("PATH")).split(u':'));
    if (path.isEmpty() || !QFileInfo(path).isExecutable()) {
        fail(u"the program \"" % command.program % u"\" is not installed");
    }
    errorPath = command.outputDirectory % u'/' % QFileInfo(path).fileName() % u".XXXXXX";
    QByteArray errorTemplate = QFile::encodeName(errorPath);
    const FileDescriptor error(::mkostemp(errorTemplate.data(), O_CLOEXEC | O_APPEND));
    errorPath = QFile::decodeName(errorTemplate);
    const FileDescriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    std::array<int, 2> ends{};
    if (error.get() < 0 || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
        fail(u"no file for the output of " % path);
    }
    output = FileDescriptor(ends[0]);
    const FileDescriptor writeEnd(ends[1]);

    std::vector<std::string> arguments = toStrings(QStringList{path} + command.arguments);
    std::vector<std::string> environment = toStrings(command.environment.toStringList());
    const std::vector<char*> argumentPointers = toPointers(arguments);
    const std::vector<char*> environmentPointers = toPointers(environment);

    const pid_t parent = ::getpid();
    process = ::fork();
    if (process < 0) {
        fail(u"cannot fork for " % path);
    }
    if (process == 0) {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        for (const int ignored : {SIGHUP, SIGINT, SIGTERM}) { // by whoever runs the tests in the background
            std::signal(ignored, SIG_DFL);
        }
        if (::getppid() != parent || ::dup2(input.get(), STDIN_FILENO) < 0 ||
            ::dup2(writeEnd.get(), STDOUT_FILENO) < 0 || ::dup2(error.get(), STDERR_FILENO) < 0) {
            ::_exit(126);
        }
        ::execve(argumentPointers.front(), argumentPointers.data(), environmentPointers.data());
        ::_exit(127);
    }
    ::setpgid(process, process);
    handle = FileDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
}

ChildProcess::~ChildProcess() {
    end();
}

bool ChildProcess::isRunning() {
    return !collect(false);
}

std::optional<ChildProcess::ExitStatus> ChildProcess::awaitExit(QDeadlineTimer deadline) {
    if (!collect(false) && awaitReadable(handle.get(), deadline)) {
        collect(true);
    }
    return status;
}

std::optional<QByteArray> ChildProcess::awaitLine(QDeadlineTimer deadline) {
    for (;;) {
        if (const auto length = pending.indexOf('\n'); length >= 0) {
            const QByteArray line = pending.left(length);
            pending.remove(0, length + 1);
            return line;
        }
        std::array<char, 4096> buffer{};
        const ssize_t count =
            awaitReadable(output.get(), deadline) ? ::read(output.get(), buffer.data(), buffer.size()) : -1;
        if (count <= 0) {
            return std::nullopt;
        }
        pending.append(buffer.data(), count);
    }
}

QByteArray ChildProcess::standardError() const {
    QFile file(errorPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void ChildProcess::signal(int number) const {
    if (!status) {
        ::kill(process, number);
    }
}

void ChildProcess::end() {
    // The group outlives its leader when the leader has started others.
    ::kill(-process, SIGCONT);
    ::kill(-process, SIGTERM);
    if (!awaitExit(QDeadlineTimer(std::chrono::milliseconds(500)))) {
        ::kill(-process, SIGKILL);
        collect(true);
    }
    ::kill(-process, SIGKILL);
}

bool ChildProcess::collect(bool wait) {
    if (status) {
        return true;
    }
    int raw = 0;
    pid_t done = 0;
    do {
        done = ::waitpid(process, &raw, wait ? 0 : WNOHANG);
    } while (done < 0 && errno == EINTR);
    if (done == process) {
        status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -WTERMSIG(raw);
    }
    return status.has_value();
}

} // namespace orvantile::test
