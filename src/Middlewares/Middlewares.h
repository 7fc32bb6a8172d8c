#pragma once

namespace ChipLoom {

class Design;

/// Lets a design make the middlewares of its device. Once for each design object, before it opens a device.
void registerMiddlewares(Design &design);

} // namespace ChipLoom
