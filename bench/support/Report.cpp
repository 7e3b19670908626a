#include "support/Report.h"

#include <QFile>
#include <QSaveFile>
#include <cmath>
#include <cstdio>
#include <stdexcept>

namespace orvantile::bench {

using Qt::StringLiterals::operator""_s;

void Report::paragraph(const QString& text) {
    markdown += (markdown.endsWith(u"|\n"_s) ? u"\n"_s : QString()) + text + u"\n\n"_s;
}

void Report::table(const QStringList& columns) {
    markdown += (markdown.endsWith(u"|\n"_s) ? u"\n| | "_s : u"| | "_s) + columns.join(u" | "_s) +
                u" |\n|---|"_s + u"---|"_s.repeated(columns.size()) + u"\n"_s;
}

void Report::row(const QStringList& cells) {
    markdown += u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
}

void Report::deliver(const QString& path) const {
    std::printf("%s", qUtf8Printable(markdown));
    std::fflush(stdout);
    if (!path.isEmpty()) {
        writeInto(path);
    }
}

void Report::writeInto(const QString& path) const {
    const auto failure = [&](const QString& what) {
        const QString text = path + u": "_s + what;
        return std::runtime_error(text.toStdString());
    };
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        throw failure(file.errorString());
    }
    auto text = QString::fromUtf8(file.readAll());
    const QString begin = u"<!-- %1 -->\n"_s.arg(name);
    const QString end = u"<!-- /%1 -->"_s.arg(name);
    const auto from = text.indexOf(begin);
    const auto to = text.indexOf(end);
    if (from < 0 || to < from) {
        throw failure(u"it has no part "_s + name);
    }
    const auto first = from + begin.size();
    const QString part = markdown.trimmed() + u"\n"_s;
    text.replace(first, to - first, part);
    QSaveFile written(path);
    if (!written.open(QIODevice::WriteOnly) || written.write(text.toUtf8()) < 0 || !written.commit()) {
        throw failure(written.errorString());
    }
}

QString shortNumber(double value) {
    const double size = std::abs(value);
    return QString::number(value, 'f', size < 0.095 ? 3 : size < 9.95 ? 2 : size < 99.5 ? 1 : 0);
}

} // namespace orvantile::bench
