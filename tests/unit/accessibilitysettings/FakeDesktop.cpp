#include "unit/accessibilitysettings/FakeDesktop.h"

#include <QDir>
#include <QFile>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

/// One write, so that what several programs tell does not mix.
constexpr auto script = R"(#!/bin/sh
blocked=$(/bin/sed -n 's/^SigBlk:[[:space:]]*//p' /proc/self/status)
line="${0##*/}"
for argument; do line="$line|$argument"; done
printf '%s\n' "$line#$XDG_ACTIVATION_TOKEN#$DESKTOP_STARTUP_ID#$QT_QPA_PLATFORM#$PWD#$blocked" > 'RECORD'
)";

void write(const QString& path, const QByteArray& contents) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

} // namespace

FakeDesktop::FakeDesktop() {
    for (const auto& folder : {u"bin"_s, u"home"_s, u"own/applications"_s, u"system/applications"_s}) {
        QDir(directory.path()).mkpath(folder);
    }
    const auto fifo = path(u"record"_s).toLocal8Bit();
    if (::mkfifo(fifo.constData(), 0600) != 0) {
        throw std::runtime_error("cannot make a pipe");
    }
    record = FileDescriptor(::open(fifo.constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    setVariable(u"PATH"_s, path(u"bin"_s));
    setVariable(u"HOME"_s, path(u"home"_s));
    setVariable(u"XDG_DATA_HOME"_s, path(u"own"_s));
    setVariable(u"XDG_DATA_DIRS"_s, path(u"absent"_s) + u':' + path(u"system"_s));
}

void FakeDesktop::installProgram(const QString& name) const {
    const auto file = path(u"bin/"_s + name);
    write(file, QByteArray(script).replace("RECORD", path(u"record"_s).toLocal8Bit()));
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

void FakeDesktop::installEntry(const QString& fileName, const QByteArray& body,
                               const QString& dataFolder) const {
    write(path(dataFolder + u"/applications/"_s + fileName),
          "[Desktop Entry]\nType=Application\nName=Settings\n" + body);
}

std::optional<QStringList> FakeDesktop::awaitStarted(QDeadlineTimer deadline) const {
    QByteArray line;
    while (!line.endsWith('\n')) {
        char byte = 0;
        if (!awaitReadable(record.get(), deadline) || ::read(record.get(), &byte, 1) != 1) {
            return std::nullopt;
        }
        line += byte;
    }
    return QString::fromUtf8(line).trimmed().split(u'#');
}

QString FakeDesktop::awaitCommand() const {
    const auto told = awaitStarted();
    return told ? told->front() : u"nothing was started"_s;
}

} // namespace orvantile::test
