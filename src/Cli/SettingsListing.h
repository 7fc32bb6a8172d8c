#pragma once

#include "Design/Design.h"

#include <QJsonValue>
#include <QTextStream>

namespace ChipLoom {

/// The pins in use with their settings, as the settings that make them.
void writeGpio(Design &design, QTextStream &out);
QJsonValue gpioJson(Design &design);

/// The priority group and the interrupts that are open; as JSON all of them.
void writeNvic(Design &design, QTextStream &out);
QJsonValue nvicJson(Design &design);

} // namespace ChipLoom
