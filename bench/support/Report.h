#pragma once

#include <QString>
#include <QStringList>

namespace orvantile::bench {

/// What a benchmark found, as Markdown: printed, and put into a document when one is named.
class Report {
public:
    /// The document's part between the comments "<!-- name -->" and "<!-- /name -->" is this report's.
    explicit Report(QString name_) : name(std::move(name_)) {}

    void paragraph(const QString& text);

    /// Begins a table; `columns` without the first, whose head is empty.
    void table(const QStringList& columns);
    void row(const QStringList& cells);

    /// Prints the report; puts it into its part of the document, too, where `path` names one. Throws
    /// std::runtime_error when there is no such part.
    void deliver(const QString& path) const;

private:
    void writeInto(const QString& path) const;

    QString name;
    QString markdown;
};

/// With as many digits as such a value is worth.
[[nodiscard]] QString shortNumber(double value);

} // namespace orvantile::bench
