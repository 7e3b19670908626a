#include "support/desktop/ProcessCost.h"

#include <QDir>
#include <QFile>
#include <QString>
#include <ctime>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString folder(pid_t process) {
    return u"/proc/%1/"_s.arg(process);
}

/// The number in the line that starts with `label`.
double field(const QByteArray& text, const char* label) {
    for (const auto& line : text.split('\n')) {
        if (line.startsWith(label)) {
            return line.mid(static_cast<int>(qstrlen(label))).simplified().split(' ').first().toDouble();
        }
    }
    return 0;
}

} // namespace

double cpuSeconds(pid_t process) {
    clockid_t clock{};
    timespec used{};
    if (::clock_getcpuclockid(process, &clock) != 0 || ::clock_gettime(clock, &used) != 0) {
        return 0;
    }
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

Wakeups wakeups(pid_t process) {
    Wakeups counts;
    const QDir tasks(folder(process) + u"task"_s);
    for (const auto& thread : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        counts[thread] = static_cast<std::int64_t>(
            field(contents(tasks.filePath(thread) + u"/status"_s), "voluntary_ctxt_switches:"));
    }
    return counts;
}

std::int64_t wokenBetween(const Wakeups& before, const Wakeups& after) {
    std::int64_t woken = 0;
    for (const auto& [thread, count] : after) {
        const auto known = before.find(thread);
        woken += count - (known == before.end() ? 0 : known->second);
    }
    return woken;
}

Memory memory(pid_t process) {
    const auto rollup = contents(folder(process) + u"smaps_rollup"_s);
    return {field(rollup, "Rss:") / 1024, field(rollup, "Pss:") / 1024,
            field(rollup, "Private_Dirty:") / 1024};
}

} // namespace orvantile::test
