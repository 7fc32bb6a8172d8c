#pragma once

#include <QString>

#include <vector>

namespace ChipLoom {

/// Whether tokens of one instance reach another on a series, and whether the receiver's parameters then look again.
enum class Route { None, Forward, ForwardAndRefresh };

/// The routing rules for tokens, peripherals and middlewares alike. A rule about an instance that the device does not
/// have has no effect.
Route tokenRoute(const QString &series, const QString &sender, const QString &receiver);

/// Whether the sender's tokens are conditions of every peripheral's DMA requests.
bool reachesDmaSettings(const QString &series, const QString &sender);

/// Whether the sender's parameter list is copied to the receiver.
bool parameterListRoute(const QString &series, const QString &sender, const QString &receiver);

} // namespace ChipLoom
