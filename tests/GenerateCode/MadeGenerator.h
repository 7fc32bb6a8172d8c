#pragma once

#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <memory>

namespace ChipLoom {

/// The generator of an instance, or null where its kind has none.
inline std::unique_ptr<DeclaredGenerator> peripheralGenerator(ZV32MCUSERIALS series, const QString &instanceName)
{
    const GeneratorParts parts = generatorParts(series, instanceName);
    return parts.questions ? std::make_unique<DeclaredGenerator>(series, *parts.questions, parts.features) : nullptr;
}

/// Lets it edit the section of its function in a text.
template <typename Edit> bool editFunction(DeclaredGenerator &generator, SectionedText &text, Edit edit)
{
    return (generator.*edit)(text, text.spotOf(functionSection(generator.instanceName())));
}

} // namespace ChipLoom
