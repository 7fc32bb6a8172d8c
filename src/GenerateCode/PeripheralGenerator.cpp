#include "GenerateCode/PeripheralGenerator.h"

#include "GenerateCode/TextEngine.h"

namespace ChipLoom {

PeripheralGenerator::~PeripheralGenerator() = default;

bool PeripheralGenerator::GenerateCode_lm_config_h(QString &text)
{
    return GenerateCode_Handle_Function(text, codeKey() + QLatin1String(" function"), m_IPValidFlag);
}

bool PeripheralGenerator::GenerateCode_main_c(QString &text)
{
    return GenerateCode_Handle_Function(text, codeKey() + QLatin1String(" function"), m_IPValidFlag);
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
    const QString kind = kindOfInstance(instanceName);
    for (const PeripheralGeneratorRow &row : peripheralGeneratorRows()) {
        if (kind == QLatin1String(row.kind))
            return row.make(series, instanceName);
    }
    return nullptr;
}

} // namespace ChipLoom
