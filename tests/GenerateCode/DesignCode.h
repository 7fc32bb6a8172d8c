#pragma once

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/IP_ModeAndConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"
#include "MadeGenerator.h"
#include "Model/SeriesHelpers.h"
#include "ScriptedPrompt.h"

#include <gtest/gtest.h>

namespace ChipLoom::Test {

/// Gives a generator what an instance of a real design has.
inline void feed(DeclaredGenerator &generator, Design &design, const QString &instance)
{
    const IP_ModeAndConfiguration &peripheral = *design.peripheral(instance);
    generator.SetIPValidFlag(peripheral.GetIPValidFlag());
    generator.SetRefParameterList(peripheral.parameters().GetRefParameterList());
    generator.SetGPIOPinDefineInfo(design.gpio()->GetGPIOPinDefineInfo());
    generator.SetAllSignalsGPIOSettingList(design.gpio()->GetAllSignalsGPIOSettingList());
    generator.SetAllNVICSettingList(design.nvic()->GetAllNVICSettingList());
    generator.SetIPSignalGroupInfoList(design.pinInfo().m_deviceIPSignalGroupInfoList);
    generator.SetClockConfig(&design.clock());
    QList<DMARequest *> requests;
    for (const DMA_Configuration *dma : design.dmaParts())
        requests.append(dma->ValidDMAChannalList());
    generator.SetValidDMARequestList(requests);
}

/// A real design, and the functions that its instances have in the configuration source.
class DesignCode
{
protected:
    DesignCode() : m_design(AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR)), m_prompt) {}

    /// `folder` is that of the templates.
    bool open(const QString &folder, const QString &series, const QString &device, const QString &package)
    {
        const TextRead source = readSourceText(":/srcode/" + folder + '/' + folder.toLower() + "_lm_config.c");
        m_source = source.text;
        m_series = MCUSerialString_To_ZV32MCUSERIALS(series);
        const bool opened = source.ok && m_design.NewDesign(series, device, package);
        m_design.scheduler().drain();
        return opened;
    }

    bool apply(const QString &setting)
    {
        const auto change = DesignChange::fromSetting(setting);
        const bool accepted = change && m_design.apply(*change).accepted();
        m_design.scheduler().drain();
        return accepted;
    }

    /// The function of an instance as the design stands; empty if the template has none.
    QString function(const QString &instance)
    {
        const auto generator = peripheralGenerator(m_series, instance);
        feed(*generator, m_design, instance);

        const SectionSpan span = findSection(m_source, instance.toLower() + " function");
        if (!span.found())
            return {};
        SectionedText section{std::string(between(m_source, span.start, span.start + span.length))};
        EXPECT_TRUE(editFunction(*generator, section, &DeclaredGenerator::GenerateCode_lm_config_c))
            << qPrintable(instance);
        return toText(section.joined());
    }

    /// A value as the window shows it; empty if it is not shown.
    QString shown(const QString &instance, const QString &parameter)
    {
        const RefParameter *entry = m_design.peripheral(instance)->parameters().parameter(parameter);
        return entry ? entry->CurrentValue : QString();
    }

    ScriptedPrompt m_prompt{0};
    Design m_design;
    ZV32MCUSERIALS m_series = ZV32ErrorMCU2;

private:
    std::string m_source;
};

} // namespace ChipLoom::Test
