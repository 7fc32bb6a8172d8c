#include "GenerateCode/GenerationInput.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"

#include "Model/SeriesHelpers.h"

#include <algorithm>

namespace ChipLoom {

namespace {

const GenerationPeripheral *find(const QList<GenerationPeripheral> &list, const QString &instanceName)
{
    const auto found = std::find_if(list.begin(), list.end(), [&](const GenerationPeripheral &entry) {
        return entry.instanceName == instanceName;
    });
    return found == list.end() ? nullptr : &*found;
}

QStringList unusedPortPins(const DevicePinInfo &pins)
{
    QStringList unused;
    for (const MCUPinsBaseInfo &pin : pins.m_deviceBaseInfoList) {
        if (pin.fixedFlag || !pin.validFlag || pin.pinSignalsList.isEmpty())
            continue;
        const bool used = std::any_of(pin.pinSignalsList.begin(), pin.pinSignalsList.end(),
                                      [](const PinSignalStruct &signal) { return signal.configStatus != Not_Config; });
        if (!used)
            unused.append(pin.pinName);
    }
    return unused;
}

GenerationPeripheral moduleOf(const Design &design, const PeripheralsBaseInfo &entry)
{
    GenerationPeripheral module{entry.InstanceName, entry.Name};
    if (const ModuleConfiguration *live = design.module(entry.InstanceName)) {
        module.valid = live->GetIPValidFlag();
        module.error = (live->GetIPStatusFlag() & IPSTATUS_ERROR) != 0;
        module.parameters = live->parameters().GetRefParameterList();
    }
    return module;
}

template <typename Record> std::vector<Record> copies(const QList<Record *> &records)
{
    std::vector<Record> list;
    for (const Record *record : records)
        list.push_back(*record);
    return list;
}

} // namespace

QString GenerationPeripheral::value(const QString &parameter) const
{
    for (const RefParameter &entry : parameters) {
        if (entry.Name == parameter)
            return entry.CurrentValue;
    }
    return {};
}

const GenerationPeripheral *GenerationInput::peripheral(const QString &instanceName) const
{
    return find(peripherals, instanceName);
}

const GenerationPeripheral *GenerationInput::middleware(const QString &instanceName) const
{
    return find(middlewares, instanceName);
}

bool GenerationInput::IP_Is_Valid(const QString &instanceName) const
{
    const GenerationPeripheral *entry = peripheral(instanceName);
    if (!entry)
        entry = middleware(instanceName);
    return entry && entry->valid;
}

GenerationInput generationInput(const Design &design, const GenerationOptions &options)
{
    GenerationInput input;
    input.series = MCUSerialString_To_ZV32MCUSERIALS(design.series());
    input.clock = &design.clock();
    input.options = options;
    input.signalGroups = design.pinInfo().m_deviceIPSignalGroupInfoList;
    input.unusedPins = unusedPortPins(design.pinInfo());
    for (const PeripheralsBaseInfo &entry : design.peripherals())
        input.peripherals.append(moduleOf(design, entry));
    for (const PeripheralsBaseInfo &entry : design.middlewares())
        input.middlewares.append(moduleOf(design, entry));
    if (const GPIO_Configuration *gpio = design.gpio()) {
        input.signalSettings = copies(gpio->GetAllSignalsGPIOSettingList());
        input.pinDefines = copies(gpio->GetGPIOPinDefineInfo());
    }
    if (const NVIC_Configuration *nvic = design.nvic()) {
        input.nvicSettings = copies(nvic->GetAllNVICSettingList());
        input.priorityGroup = nvic->GetPriorityGroupParameter().CurrentValue;
    }
    for (const DMA_Configuration *dma : design.dmaParts()) {
        for (const DMARequest *request : dma->ValidDMAChannalList())
            input.dmaRequests.push_back(*request);
    }
    return input;
}

} // namespace ChipLoom
