#include "Design/PinSeries.h"

namespace ChipLoom {

const PinSeriesRules &pinSeriesRules(const QString &series)
{
    static constexpr PinSeriesRules rows[] = {
        {"ZV32F403A", true, false}, {"ZV32F407", true, false},  {"ZV32A403A", true, false}, {"ZV32F413", true, false},
        {"ZV32F415", true, false},  {"ZV32WB415", true, false}, {"ZV32F403E", true, true},  {"ZV32F407E", true, true},
    };
    static constexpr PinSeriesRules ordinary = {"", false, false};
    for (const PinSeriesRules &row : rows) {
        if (series == QLatin1String(row.series))
            return row;
    }
    return ordinary;
}

} // namespace ChipLoom
