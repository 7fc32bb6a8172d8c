#pragma once

#include "Design/Design.h"

#include <QJsonValue>
#include <QString>
#include <QTextStream>

#include <span>

namespace ChipLoom {

/// One part of what `show` prints of a design: as text in the user's language, and as JSON whose keys and state words
/// are fixed.
struct ShowSection
{
    const char *name;  ///< as the option `--section` takes it, and its key in JSON
    const char *title; ///< English; context "Cli"
    void (*text)(Design &design, QTextStream &out);
    QJsonValue (*json)(Design &design);
};

/// All sections, in the order of printing.
std::span<const ShowSection> showSections();

/// Every function of one position with what choosing it would do.
void writePinFunctions(Design &design, int pinNumber, QTextStream &out);
QJsonValue pinFunctionsJson(Design &design, int pinNumber);

} // namespace ChipLoom
