#pragma once

#include <QString>
#include <ostream>

/// Lets a failing expectation show texts as texts. Found by argument-dependent look-up.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}
