#pragma once

#include <QJsonValue>

class QTextStream;

namespace ChipLoom {

class Design;

/// The requests that have a channel, as the settings that make them, and those that could have one.
void writeDma(Design &design, QTextStream &out);
QJsonValue dmaJson(Design &design);

} // namespace ChipLoom
