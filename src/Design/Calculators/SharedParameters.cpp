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

void CombinedChannels_Operate(ParameterSheet &sheet, const QString &leader, const QList<RefParameter> &leading)
{
    const QStringList onSamePins = sheet.text(QStringLiteral("CommonChannels")).split(QLatin1Char(' '));
    for (const QString &sequence : {QStringLiteral("Ordinary"), QStringLiteral("Preempt")}) {
        // Who takes turns with the leader is meant to sample the same signal.
        const bool together =
            sheet.isOn(sequence + QLatin1String("Follows")) &&
            sheet.text(QStringLiteral("CombineMode")).contains(sequence.toUpper() + QLatin1String("_SMLT"));
        const double ranks = together ? sheet.number(QStringLiteral("NbrOf%1Sequence").arg(sequence)).value_or(0) : 0;
        for (int rank = 1; rank <= ranks; ++rank) {
            const QString name = QStringLiteral("Channel_%1Sequence_%2").arg(sequence).arg(rank);
            const bool same = std::any_of(leading.begin(), leading.end(), [&](const RefParameter &other) {
                return other.Name == name && other.CurrentValue == sheet.text(name);
            });
            if (same && onSamePins.contains(QString::number(sheet.tokenNumber(name).value_or(-1))))
                sheet.warn(name, DesignReason::ChannelAtOnce, {name, leader});
        }
    }
}

} // namespace ChipLoom
