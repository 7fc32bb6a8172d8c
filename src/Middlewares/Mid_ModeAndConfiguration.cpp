#include "Middlewares/Mid_ModeAndConfiguration.h"

#include "Design/Design.h"

#include <algorithm>
#include <array>
#include <utility>

namespace ChipLoom {

namespace {

struct ConflictRow
{
    const char *middleware;
    const char *other;
    const char *mode;
    const char *item; ///< of a box; null for a check box
    DesignReason reason;
    bool error;
};

constexpr std::array<ConflictRow, 4> Conflicts{{
    {"FREERTOS", "RT-Thread_Nano", "Activated", nullptr, DesignReason::TwoKernels, true},
    {"RT-Thread_Nano", "FREERTOS", "Activated", nullptr, DesignReason::TwoKernels, true},
    {"FREERTOS", "SYSTEM", "Time_Base", "SysTick", DesignReason::SysTickShared, false},
    {"RT-Thread_Nano", "SYSTEM", "Time_Base", "SysTick", DesignReason::SysTickShared, false},
}};

bool hasChoice(const ModuleConfiguration *module, const ConflictRow &row)
{
    const ModeControl *control = module ? module->control(QLatin1String(row.mode)) : nullptr;
    return control && control->isOn() && (!row.item || control->currentName() == QLatin1String(row.item));
}

} // namespace

Mid_ModeAndConfiguration::Mid_ModeAndConfiguration(Design &design, PeripheralsBaseInfo info,
                                                   std::shared_ptr<const PeripheralTree> tree)
    : ModuleConfiguration(design, std::move(info), std::move(tree))
{
    InitModeUI();
    connect(&design, &Design::statusChanged, this, [this](const QString &other) {
        const bool concerned = std::any_of(Conflicts.begin(), Conflicts.end(), [&](const ConflictRow &row) {
            return instanceName() == QLatin1String(row.middleware) && other == QLatin1String(row.other);
        });
        if (concerned)
            refreshStatus();
    });
}

bool Mid_ModeAndConfiguration::isInUse() const
{
    return std::any_of(controls().begin(), controls().end(),
                       [](const std::unique_ptr<ModeControl> &control) { return control->isOn(); });
}

ModeNote Mid_ModeAndConfiguration::currentNote() const
{
    if (!GetIPValidFlag())
        return {};
    for (const ConflictRow &row : Conflicts) {
        if (instanceName() != QLatin1String(row.middleware) ||
            !hasChoice(design().module(QLatin1String(row.other)), row))
            continue;
        return {ModeNote::Kind::Reason, {}, row.error, {row.reason, {instanceName(), QLatin1String(row.other)}}};
    }
    return {};
}

} // namespace ChipLoom
