#pragma once

#include <QString>
#include <QStringList>

#include <ostream>

// GoogleTest would print a text as a list of numbers.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList &texts, std::ostream *out)
{
    *out << "{" << texts.join(QStringLiteral(" | ")).toStdString() << "}";
}
