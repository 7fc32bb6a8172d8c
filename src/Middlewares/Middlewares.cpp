#include "Middlewares/Middlewares.h"

#include "Design/Design.h"
#include "Middlewares/Mid_ModeAndConfiguration.h"

#include <algorithm>

namespace ChipLoom {

namespace {

std::unique_ptr<DesignPart> makeMiddleware(Design &design, const PeripheralsBaseInfo &entry)
{
    const QList<PeripheralsBaseInfo> &all = design.middlewares();
    const bool middleware = std::any_of(all.begin(), all.end(), [&](const PeripheralsBaseInfo &other) {
        return other.InstanceName == entry.InstanceName;
    });
    if (!middleware)
        return nullptr;
    return std::make_unique<Mid_ModeAndConfiguration>(design, entry, design.peripheralTree(entry));
}

} // namespace

void registerMiddlewares(Design &design)
{
    design.registerPartFactory(makeMiddleware);
}

} // namespace ChipLoom
