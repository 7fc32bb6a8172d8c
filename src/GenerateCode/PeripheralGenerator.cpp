#include "GenerateCode/PeripheralGenerator.h"

#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <utility>

namespace ChipLoom {

PeripheralGenerator::~PeripheralGenerator() = default;

QString functionSection(const QString &instanceName)
{
    return instanceName.toLower() + QLatin1String(" function");
}

QString kindOfInstance(const QString &instanceName)
{
    int size = instanceName.size();
    while (size > 0 && instanceName.at(size - 1).isDigit())
        --size;
    while (size > 0 && instanceName.at(size - 1) == QLatin1Char('_'))
        --size;
    return instanceName.left(size);
}

std::unique_ptr<PeripheralGenerator> peripheralGenerator(ZV32MCUSERIALS series, const QString &instanceName)
{
    GeneratorParts parts = generatorParts(series, instanceName);
    return parts.questions ? std::make_unique<DeclaredGenerator>(series, *parts.questions, std::move(parts.features))
                           : nullptr;
}

} // namespace ChipLoom
