#include "Design/VectorRules.h"

#include <QHash>
#include <QStringList>

namespace ChipLoom {

RtosRule rtosRule(const QString &name)
{
    static const QHash<QString, RtosRule> Rules{
        {QStringLiteral("Reset_IRQ"), RtosRule::Never},
        {QStringLiteral("NonMaskableInt_IRQ"), RtosRule::Never},
        {QStringLiteral("HardFault_IRQ"), RtosRule::Never},
        {QStringLiteral("PendSV_IRQ"), RtosRule::LowestPriority},
        {QStringLiteral("SysTick_IRQ"), RtosRule::LowestPriority},
        {QStringLiteral("SVCall_IRQ"), RtosRule::HighestPriority},
        {QStringLiteral("MemoryManagement_IRQ"), RtosRule::OnRequest},
        {QStringLiteral("BusFault_IRQ"), RtosRule::OnRequest},
        {QStringLiteral("UsageFault_IRQ"), RtosRule::OnRequest},
        {QStringLiteral("DebugMonitor_IRQ"), RtosRule::OnRequest},
    };
    return Rules.value(name, RtosRule::Peripheral);
}

bool rtosHandles(const QString &name)
{
    return name == QLatin1String("PendSV_IRQ") || name == QLatin1String("SVCall_IRQ");
}

bool ignoresTokens(const MCUNVICSetting &vector)
{
    static const QStringList Names{QStringLiteral("FLASH_IRQ"), QStringLiteral("FPU_IRQ"),
                                   QStringLiteral("SysTick_IRQ")};
    return vector.core_IRQFlag || Names.contains(vector.NVICName) || vector.NVICName.contains(QLatin1String("EXINT"));
}

QString vectorOfToken(const QString &token)
{
    static const QString Start = QStringLiteral("Semaphore_AutoEnable_");
    return token.startsWith(Start) ? token.mid(Start.size()).section(QLatin1String("_FromApp_"), 0, 0) : QString();
}

} // namespace ChipLoom
