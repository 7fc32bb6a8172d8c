#include "GenerateCode/Generatecode_ALL.h"
#include "GenerateCode/Generatecode_DMA.h"
#include "GenerateCode/Generatecode_GPIO.h"
#include "GenerateCode/TextEngine.h"

#include <utility>

// One pair of files for each group of peripherals.

namespace ChipLoom {

bool GenerateCode_ALL::GenerateCode_Per_Instance(SectionedText &text, bool header)
{
    const InstanceEdit edit =
        header ? &PeripheralGenerator::GenerateCode_lm_config_h : &PeripheralGenerator::GenerateCode_lm_config_c;
    const QStringList groups = Get_IP_GroupName_List();
    for (const QString &group : groups) {
        QStringList sections;
        if (group == QLatin1String("GPIO")) {
            GenerateCode_GPIO gpio = gpioGenerator();
            sections.append(GenerateCode_GPIO::section());
            QString &own = text.section(sections.first());
            if (!own.isEmpty() && !(header ? gpio.GenerateCode_lm_config_h(own) : gpio.GenerateCode_lm_config_c(own)))
                return failAt(group);
        } else if (group == QLatin1String("DMA") || group == QLatin1String("EDMA")) {
            for (const GenerateCode_DMA &dma : dmaGenerators()) {
                if (dma.name() != group)
                    continue;
                sections = dma.sections();
                if (!(header ? dma.GenerateCode_header_sections(text) : dma.GenerateCode_lm_config_c(text)))
                    return failAt(group);
            }
        } else {
            for (const GenerationPeripheral &entry : m_input.peripherals) {
                if (entry.name != group || !m_dispatch.contains(entry.instanceName))
                    continue;
                if (!GenerateCode_Instance(text, entry.instanceName, edit))
                    return false;
                sections.append(functionSection(entry.instanceName));
            }
        }
        QString pieces;
        for (const QString &name : qAsConst(sections))
            pieces += std::exchange(text.section(name), QString());
        if (!writeSplitFile(group, header, pieces))
            return false;
    }
    // What has no file of its own stays here; what the device does not have stands in the templates none the less.
    for (const QString &instance : qAsConst(m_dispatch)) {
        const GenerationPeripheral *entry = m_input.peripheral(instance);
        if (!(entry && groups.contains(entry->name)) && !GenerateCode_Instance(text, instance, edit))
            return false;
    }
    return true;
}

bool GenerateCode_ALL::writeSplitFile(const QString &group, bool header, const QString &pieces)
{
    if (pieces.trimmed().isEmpty())
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
    QString text = instance.joined();
    const QString name = codeName(group);
    text.replace(QLatin1String("__LM_INSTANCE_H"), QLatin1String("__LM_") + name.toUpper() + QLatin1String("_H"));
    text.replace(QLatin1String("lm_instance"), QLatin1String("lm_") + name);
    const QString path = (header ? QLatin1String("inc/lm_") : QLatin1String("src/lm_")) + name +
                         (header ? QLatin1String(".h") : QLatin1String(".c"));
    m_tree->putKeepingUserBlocks(path, text);
    if (header)
        m_splitGroups.append(group);
    return true;
}

} // namespace ChipLoom
