#include "desktop/compatibility/ReportFile.h"

#include <QProcess>
#include <QSaveFile>
#include <stdexcept>

namespace orvantile::test {
namespace {

using Qt::StringLiterals::operator""_s;

QString versionOf(const QString& package) {
    QProcess query;
    query.start(u"dpkg-query"_s, {u"-W"_s, u"-f=${Version}"_s, package});
    query.waitForFinished();
    return query.exitCode() == 0 ? QString::fromUtf8(query.readAllStandardOutput()) : QString();
}

} // namespace

void writeReport(const QString& path, const Program& program, const Report& report) {
    QStringList lines;
    const auto add = [&](const QStringList& fields) { lines.append(fields.join(u'\t')); };
    add({u"program"_s, program.title});
    add({u"package"_s, program.package, versionOf(program.package)});
    add({u"toolkit"_s, program.toolkit});
    add({u"source"_s, program.source});
    add({u"truth"_s, program.truth == TruthSource::insideQt     ? u"plugin"_s
                     : !program.shortcutsWindow.first.isEmpty() ? u"shortcuts window"_s
                     : !program.declared.empty()                ? u"its source"_s
                                                                : u"accessibility"_s});
    if (!program.note.isEmpty()) {
        add({u"note"_s, program.note});
    }
    add({u"items"_s, QString::number(report.items)});
    add({u"accelerators"_s, QString::number(report.accelerators)});
    for (const auto& outcome : report.outcomes) {
        add({nameOf(outcome.verdict), outcome.keys, outcome.title, outcome.shown, outcome.detail});
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(lines.join(u'\n').toUtf8() + '\n') < 0 ||
        !file.commit()) {
        throw std::runtime_error("cannot write " + path.toStdString());
    }
}

} // namespace orvantile::test
