// Surveys programs and writes a result file for each.
#include "desktop/compatibility/ReportFile.h"
#include "desktop/compatibility/Survey.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>
#include <exception>

namespace {

using namespace orvantile::test;
using Qt::StringLiterals::operator""_s;

void print(const QString& line) {
    std::printf("%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

bool survey(const Program& program, const QString& folder, const QStringList& only) {
    print(u"== "_s + program.title);
    try {
        SurveyOptions options;
        options.only = only;
        options.progress = [](const Outcome& outcome) {
            print(u"%1\t%2\t%3\t[%4]\t%5"_s.arg(nameOf(outcome.verdict), outcome.keys, outcome.title,
                                                outcome.shown, outcome.detail));
        };
        const auto report = Survey(program, options).run();
        if (!only.isEmpty()) {
            return true; // a look at something, not a result
        }
        writeReport(folder + u'/' + program.name + u".tsv"_s, program, report);
        print(u"== %1: %2 accelerators, %3 right, %4 wrong, %5 missed, %6 false"_s.arg(program.title)
                  .arg(report.accelerators)
                  .arg(report.count(Verdict::right))
                  .arg(report.count(Verdict::wrong))
                  .arg(report.count(Verdict::missed))
                  .arg(report.count(Verdict::falseAlarm)));
        return true;
    } catch (const std::exception& error) {
        print(u"== %1 could not be surveyed: %2"_s.arg(program.title, QString::fromUtf8(error.what())));
        return false;
    }
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication app(argc, argv);
    QStringList names = QCoreApplication::arguments().mid(1);
    if (names.isEmpty()) {
        print(u"Usage: compatibility_survey --list | FOLDER [PROGRAM | PROGRAM:KEYS…]"_s);
        return 2;
    }
    const auto folder = names.takeFirst();
    if (folder == u"--list") {
        for (const auto& program : allPrograms()) {
            print(program.name);
        }
        return 0;
    }
    QDir().mkpath(folder);
    if (names.isEmpty()) {
        for (const auto& program : allPrograms()) {
            names.append(program.name);
        }
    }
    bool complete = true;
    for (const auto& name : names) {
        const auto& program = programNamed(name.section(u':', 0, 0));
        complete = survey(program, folder, name.section(u':', 1).split(u' ', Qt::SkipEmptyParts)) && complete;
    }
    return complete ? 0 : 1;
}
