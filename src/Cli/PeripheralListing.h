#pragma once

#include "Design/Design.h"

#include <QJsonValue>
#include <QTextStream>

namespace ChipLoom {

/// The peripherals in use: their modes with the chosen entry, and their parameters with range and status.
void writePeripherals(Design &design, QTextStream &out);

/// Every peripheral with every mode, the state of each entry, and the parameters that it shows.
QJsonValue peripheralsJson(Design &design);

} // namespace ChipLoom
