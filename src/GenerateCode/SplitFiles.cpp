#include "GenerateCode/Generatecode_ALL.h"

#include <algorithm>
#include <utility>

// One pair of files for each group of peripherals: its sections, complete, move there. What has no file of its own
// stays where it is.

namespace ChipLoom {

QStringList GenerateCode_ALL::sectionsOfGroup(const QString &group) const
{
    if (group == QLatin1String("GPIO"))
        return {GenerateCode_GPIO::section()};
    for (const GenerateCode_DMA &dma : dmaGenerators()) {
        if (dma.name() == group)
            return dma.sections();
    }
    QStringList sections;
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        if (entry.name == group && m_plan.numberOf(entry.instanceName) >= 0)
            sections.append(functionSection(entry.instanceName));
    }
    return sections;
}

bool GenerateCode_ALL::GenerateCode_Per_Instance(SectionedText &text, bool header)
{
    for (const QString &group : Get_IP_GroupName_List()) {
        std::string pieces;
        for (const QString &name : sectionsOfGroup(group))
            pieces += std::exchange(text.section(name), {});
        if (!writeSplitFile(group, header, pieces))
            return false;
    }
    return true;
}

bool GenerateCode_ALL::writeSplitFile(const QString &group, bool header, const std::string &pieces)
{
    if (std::all_of(pieces.begin(), pieces.end(), &isSpace))
        return true;
    const SectionedText *sample =
        readTemplate(header ? QStringLiteral("lm_instance.h") : QStringLiteral("lm_instance.c"));
    const QString place = QStringLiteral("instance function");
    if (!sample)
        return false;
    if (!sample->contains(place))
        return failAt(place);
    SectionedText instance = *sample;
    instance.section(place) = pieces;
    std::string text = instance.joined();
    const QString name = codeName(group);
    replaceAll(text, "__LM_INSTANCE_H", "__LM_" + toCode(name.toUpper()) + "_H");
    replaceAll(text, "lm_instance", "lm_" + toCode(name));
    const QString path = (header ? QLatin1String("inc/lm_") : QLatin1String("src/lm_")) + name +
                         (header ? QLatin1String(".h") : QLatin1String(".c"));
    m_tree->putKeepingUserBlocks(path, text, SectionedText(text));
    if (header)
        m_splitGroups.append(group);
    return true;
}

} // namespace ChipLoom
