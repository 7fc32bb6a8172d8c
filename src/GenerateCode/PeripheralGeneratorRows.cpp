#include "GenerateCode/PeripheralGenerator.h"

namespace ChipLoom {

std::span<const PeripheralGeneratorRow> peripheralGeneratorRows()
{
    // One row for each kind, as {"USART", &make...}.
    static constexpr std::span<const PeripheralGeneratorRow> rows{};
    return rows;
}

} // namespace ChipLoom
