#include "support/sound/SoundServer.h"

#include <QFile>
#include <QFileSystemWatcher>
#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

} // namespace

SoundServer::SoundServer() : environment(QProcessEnvironment::systemEnvironment()) {
    const QString address = u"unix:"_s + directory.filePath(u"native"_s);
    environment.insert(u"HOME"_s, directory.path());
    environment.insert(u"XDG_RUNTIME_DIR"_s, directory.path());
    environment.insert(u"PULSE_RUNTIME_PATH"_s, directory.path());
    environment.insert(u"PULSE_STATE_PATH"_s, directory.path());
    environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    environment.remove(u"DISPLAY"_s);
    qputenv("PULSE_SERVER", address.toLocal8Bit());
    qputenv("PULSE_COOKIE", directory.filePath(u"cookie"_s).toLocal8Bit());
}

SoundServer::~SoundServer() {
    if (recorder) {
        recorder->kill();
        recorder->waitForFinished();
    }
    if (server) {
        server->signal(SIGCONT);
    }
    qunsetenv("PULSE_SERVER");
    qunsetenv("PULSE_COOKIE");
}

void SoundServer::start() {
    const auto socket = directory.filePath(u"native"_s);
    QFile::remove(socket);
    server = std::make_unique<ChildProcess>(
        Command{u"pulseaudio"_s,
                {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                 u"--disable-shm=yes"_s, u"--realtime=no"_s, u"--high-priority=no"_s, u"-L"_s,
                 u"module-null-sink sink_name=probe rate=48000 format=s16le channels=1 norewinds=1"_s,
                 u"-L"_s, u"module-native-protocol-unix auth-anonymous=1 socket="_s + socket},
                environment,
                directory.path()});
    QFileSystemWatcher watcher({directory.path()});
    const QDeadlineTimer deadline(patience);
    QEventLoop loop;
    QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, &loop, [&] { loop.wakeUp(); });
    while (!QFile::exists(socket)) {
        if (deadline.hasExpired() || !server->isRunning()) {
            throw std::runtime_error("no sound server: " + server->standardError().toStdString());
        }
        loop.processEvents(QEventLoop::AllEvents, 100);
    }
}

void SoundServer::kill() {
    server->signal(SIGKILL);
    server->awaitExit();
    server.reset();
}

void SoundServer::serve(PrivateEnvironment& session) const {
    for (const auto* name : {"PULSE_SERVER", "PULSE_COOKIE"}) {
        session.setVariable(QString::fromLatin1(name), qEnvironmentVariable(name));
    }
}

void SoundServer::record() {
    recorder = std::make_unique<QProcess>();
    auto client = environment;
    client.insert(u"PULSE_SERVER"_s, qEnvironmentVariable("PULSE_SERVER"));
    recorder->setProcessEnvironment(client);
    recorder->start(u"parec"_s, {u"--device=probe.monitor"_s, u"--raw"_s, u"--format=s16le"_s,
                                 u"--rate=48000"_s, u"--channels=1"_s, u"--latency-msec=20"_s});
    if (recorded(QDeadlineTimer(patience)).isEmpty()) {
        throw std::runtime_error("no recording: " + recorder->readAllStandardError().toStdString());
    }
}

QByteArray SoundServer::recorded(const QDeadlineTimer& deadline) {
    if (recorder->bytesAvailable() == 0) {
        recorder->waitForReadyRead(static_cast<int>(std::max<qint64>(deadline.remainingTime(), 0)));
    }
    return recorder->readAllStandardOutput();
}

} // namespace orvantile::test
