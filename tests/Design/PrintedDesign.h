#pragma once

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"
#include "ScriptedPrompt.h"

#include <QStringList>

namespace ChipLoom::Test {

inline AppPaths samplePaths()
{
    return AppPaths(QStringLiteral(CHIPLOOM_BIN_DIR), QStringLiteral(CHIPLOOM_BIN_DIR));
}

// Everything that a user could tell apart: placed signals, choices and their states, parameters, tokens, the rows of
// the settings lists.
inline QStringList printed(const Design &design)
{
    QStringList lines;
    for (const MCUPinsBaseInfo &pin : design.pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &signal : pin.pinSignalsList) {
            if (signal.configStatus != Not_Config)
                lines.append(pin.pinName + ' ' + signal.signalName + ' ' + QString::number(signal.configStatus));
        }
    }
    for (const auto &part : design.parts()) {
        const auto *module = dynamic_cast<const ModuleConfiguration *>(part.get());
        if (!module)
            continue;
        const QString name = module->instanceName();
        lines.append(name + QString::number(module->GetIPStatusFlag()));
        for (const auto &control : module->controls()) {
            QString states;
            for (const ItemInfoStruct &item : control->items())
                states += QString::number(int(item.state()));
            QStringList tokens = control->receivedTokens();
            tokens.sort();
            lines.append(QStringList{name, control->modeName(), QString::number(control->index()),
                                     QString::number(control->isEnabled()), states, tokens.join(',')}
                             .join(' '));
        }
        for (const RefParameter &parameter : module->parameters().GetRefParameterList())
            lines.append(name + ' ' + parameter.Name + ' ' + parameter.CurrentValue);
        QStringList tokens = module->parameters().GetValidSemaphoreList();
        tokens.sort();
        lines.append(name + " tokens " + tokens.join(','));
    }
    for (const SignalsGPIOSetting *row : design.gpio()->GetAllSignalsGPIOSettingList()) {
        QStringList cells{row->InPinName, row->signalName, row->signalIOMode, row->signalUserLabel};
        for (const RefParameter &parameter : row->signalPinGPIOInfoList)
            cells.append(parameter.Name + '=' + parameter.CurrentValue);
        lines.append(cells.join(' '));
    }
    for (const DMA_Configuration *dma : design.dmaParts()) {
        for (const DMARequest *request : dma->dmaInfo().m_AllDMARequestList) {
            QStringList cells{request->requestName, QString::number(request->configStatus), request->channelName};
            for (const RefParameter &parameter : request->RefParameterfoList)
                cells.append(parameter.Name + '=' + parameter.CurrentValue);
            lines.append(cells.join(' '));
        }
        for (const DMA_Channel_Info *channel : dma->dmaInfo().m_ChannelInfoList)
            lines.append(channel->channelComment + ' ' + QString::number(channel->channelUseType));
    }
    lines.append(design.nvic()->GetPriorityGroupParameter().CurrentValue);
    for (const MCUNVICSetting *vector : design.nvic()->GetAllNVICSettingList()) {
        lines.append(QStringList{
            vector->ValueName, QString::number(vector->canBeSet), QString::number(vector->enabledFlag),
            QString::number(vector->preemptionPriority_Value), QString::number(vector->IRQHandler_Generate_enabledFlag)}
                         .join(' '));
    }
    return lines;
}

inline QStringList difference(const QStringList &before, const QStringList &after)
{
    QStringList lines;
    for (const QString &line : after) {
        if (!before.contains(line))
            lines.append("+ " + line);
    }
    for (const QString &line : before) {
        if (!after.contains(line))
            lines.append("- " + line);
    }
    return lines;
}

} // namespace ChipLoom::Test
