#pragma once

#include <QList>
#include <QStringList>
#include <QTextStream>

namespace ChipLoom {

/// Writes lines in columns as wide as their widest text, two blanks apart. Every line has as many texts as the first.
/// `indent` blanks stand before each.
void writeTable(QTextStream &out, const QList<QStringList> &lines, int indent = 0);

} // namespace ChipLoom
