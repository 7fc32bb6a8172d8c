#include "Design/PinSeries.h"

namespace ChipLoom {

const PinSeriesRules &pinSeriesRules(const QString &series)
{
    static constexpr PinSeriesRules rows[] = {{"ZV32F403E", true}, {"ZV32F407E", true}};
    static constexpr PinSeriesRules ordinary = {"", false};
    for (const PinSeriesRules &row : rows) {
        if (series == QLatin1String(row.series))
            return row;
    }
    return ordinary;
}

} // namespace ChipLoom
