#include "Design/Calculators/SharedParameters.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

// Lists of names have blanks between them.
struct SharedRow
{
    const char *leader;     // beginning of its name
    const char *shared;     // empty: whatever is closed here
    const char *interrupts; // that the handler of the leader answers for all
};

constexpr std::array<SharedRow, 2> Rows{{
    {.leader = "XMC_SDRAM", .shared = "ClockDivision BurstRead ReadDelay", .interrupts = "Interrupt_RefreshError"},
    {.leader = "ADC", .shared = "", .interrupts = ""},
}};

QStringList names(const char *list)
{
    return QString(QLatin1String(list)).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

} // namespace

void UpdateParam_FromLeader_Operate(QList<RefParameter> &list, const QString &leader,
                                    const QList<RefParameter> &leading)
{
    const auto row = std::find_if(Rows.begin(), Rows.end(), [&](const SharedRow &entry) {
        return leader.startsWith(QLatin1String(entry.leader));
    });
    if (row == Rows.end() || leading.isEmpty())
        return;
    const QStringList shared = names(row->shared);
    const QStringList interrupts = names(row->interrupts);
    for (RefParameter &entry : list) {
        if (interrupts.contains(entry.Name)) {
            entry.Enable = entry.Visible = false;
            entry.CurrentValue = QStringLiteral("FALSE");
            continue;
        }
        if (shared.contains(entry.Name))
            entry.Enable = false;
        else if (entry.Enable || !shared.isEmpty())
            continue;
        for (const RefParameter &other : leading) {
            if (other.Name == entry.Name && other.Enable)
                entry.CurrentValue = other.CurrentValue;
        }
    }
}

} // namespace ChipLoom
