#include "GenerateCode/PeripheralGenerator.h"

#include "GenerateCode/SectionedText.h"

#include <QHash>

namespace ChipLoom {

PeripheralGenerator::~PeripheralGenerator() = default;

bool PeripheralGenerator::GenerateCode_lm_config_h(SectionedText &text)
{
    return GenerateCode_Handle_Function(text, functionSection(), m_IPValidFlag);
}

bool PeripheralGenerator::GenerateCode_main_c(SectionedText &text)
{
    return GenerateCode_Handle_Function(text, functionSection(), m_IPValidFlag);
}

bool PeripheralGenerator::GenerateCode_interrupt_int_c(SectionedText &)
{
    return true;
}

QString kindOfInstance(const QString &instanceName)
{
    QString kind = instanceName;
    while (!kind.isEmpty() && kind.back().isDigit())
        kind.chop(1);
    while (kind.endsWith(QLatin1Char('_')))
        kind.chop(1);
    return kind;
}

std::unique_ptr<PeripheralGenerator> peripheralGenerator(ZV32MCUSERIALS series, const QString &instanceName)
{
    static const QHash<QString, const PeripheralGeneratorRow *> byKind = [] {
        QHash<QString, const PeripheralGeneratorRow *> rows;
        for (const PeripheralGeneratorRow &row : peripheralGeneratorRows())
            rows.insert(QLatin1String(row.kind), &row);
        return rows;
    }();
    const PeripheralGeneratorRow *row = byKind.value(kindOfInstance(instanceName));
    return row ? row->make(series, instanceName) : nullptr;
}

} // namespace ChipLoom
