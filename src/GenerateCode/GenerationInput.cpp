#include "GenerateCode/GenerationInput.h"

#include "Base/Fingerprint.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Design/ModuleConfiguration.h"
#include "Design/NVIC_Configuration.h"

#include "Model/SeriesHelpers.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom {

namespace {

const GenerationPeripheral *find(const std::vector<GenerationPeripheral> &list, const QString &instanceName)
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

// `live` are the modules of the design from the first of the list on.
std::vector<GenerationPeripheral> modulesOf(const QList<PeripheralsBaseInfo> &list, ModuleConfiguration *const *live)
{
    std::vector<GenerationPeripheral> modules;
    modules.reserve(static_cast<size_t>(list.size()));
    for (const PeripheralsBaseInfo &entry : list) {
        GenerationPeripheral &module = modules.emplace_back(GenerationPeripheral{entry.InstanceName, entry.Name});
        if (const ModuleConfiguration *one = *live++) {
            module.valid = one->GetIPValidFlag();
            module.error = (one->GetIPStatusFlag() & IPSTATUS_ERROR) != 0;
            module.parameters = one->parameters().GetRefParameterList();
        }
    }
    return modules;
}

template <typename Record> std::vector<Record> copies(const QList<Record *> &records)
{
    std::vector<Record> list;
    list.reserve(static_cast<size_t>(records.size()));
    for (const Record *record : records)
        list.push_back(*record);
    return list;
}

// The others have no effect on the code.
std::vector<MCUNVICSetting> enabledVectors(const QList<MCUNVICSetting *> &settings)
{
    std::vector<MCUNVICSetting> vectors;
    vectors.reserve(static_cast<size_t>(settings.size()));
    for (const MCUNVICSetting *setting : settings) {
        if (setting->enabledFlag)
            vectors.push_back(*setting);
    }
    return vectors;
}

void add(Fingerprint &sum, const QList<RefParameter> &parameters)
{
    sum.add(qint64(parameters.size()));
    for (const RefParameter &entry : parameters) {
        sum.addAll(entry.Name, entry.Comment_EN, entry.DefaultValue, entry.CurrentValue, entry.Mode,
                   entry.CurrentValueType, entry.Visible, entry.Enable);
    }
}

void add(Fingerprint &sum, const std::vector<GenerationPeripheral> &modules)
{
    sum.add(qint64(modules.size()));
    for (const GenerationPeripheral &module : modules) {
        sum.addAll(module.instanceName, module.name, module.valid, module.error);
        add(sum, module.parameters);
    }
}

void addPins(Fingerprint &sum, const GenerationInput &input)
{
    for (const SignalsGPIOSetting &setting : input.signalSettings) {
        sum.addAll(setting.signalInPinNum, setting.signalInPinName, setting.InPinName, setting.signalName,
                   setting.signalIOMode, setting.signalUserLabel, setting.validFlag);
        add(sum, setting.signalPinGPIOInfoList);
    }
    for (const GPIO_Pin_Define_Info *define : input.pinDefines) {
        sum.addAll(define->Name, define->PortName, define->GPIO_x, define->GPIO_Pin_x, define->GPIO_PinSource_x,
                   define->EXINT_LINE_x, define->SCFG_GPIO_x, define->SCFG_PINS_SOURCE_x);
        for (const GPIO_PinSignal_Mux_Info &mux : define->pinSignalMuxInfoList)
            sum.addAll(mux.SignalName, mux.GPIO_Mux_x);
    }
    sum.add(input.unusedPins);
    for (const IPSignalGroupInfo &group : input.signalGroups) {
        sum.addAll(group.IPName, group.GMUX, group.GroupNum);
        for (const IPSignal &signal : group.signalGroup)
            sum.addAll(signal.signalName, signal.signalInPinName, signal.TMRIPCanUseFlag);
    }
}

void addInterrupts(Fingerprint &sum, const GenerationInput &input)
{
    sum.add(input.priorityGroup);
    for (const MCUNVICSetting &setting : input.nvicSettings) {
        sum.addAll(setting.NVICName, setting.ValueName, setting.HandlerName, setting.relatedIPNameList,
                   setting.core_IRQFlag, setting.preemptionPriority_Value, setting.subPriority_Value,
                   setting.FREERTOS_Func_canBeSet, setting.FREERTOS_Func_enabledFlag,
                   setting.IRQHandler_Generate_canBeSet, setting.IRQHandler_Generate_enabledFlag);
    }
}

void addDma(Fingerprint &sum, const GenerationInput &input)
{
    for (const DMARequest &request : input.dmaRequests) {
        sum.addAll(request.requestName, request.InstanceName, request.DMAHandle, request.channelName,
                   request.channelNameValue, request.DMAType, request.configStatus);
        add(sum, request.RefParameterfoList);
    }
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

bool GenerationInput::IP_Is_Valid(const QString &instanceName) const
{
    const GenerationPeripheral *entry = find(peripherals, instanceName);
    if (!entry)
        entry = find(middlewares, instanceName);
    return entry && entry->valid;
}

quint64 fingerprintOf(const GenerationInput &input)
{
    Fingerprint sum;
    sum.add(input.series);
    add(sum, input.peripherals);
    add(sum, input.middlewares);
    addPins(sum, input);
    addInterrupts(sum, input);
    addDma(sum, input);
    QByteArray clock;
    QXmlStreamWriter writer(&clock);
    if (input.clock)
        input.clock->SaveToFile(&writer);
    sum.add(clock);
    const GenerationOptions &options = input.options;
    sum.addAll(options.keepUserCode, options.notUsedPinAnalog, options.addNecessaryFileFlag, options.splitIP,
               options.ideType, options.armCompiler);
    return sum.value();
}

quint64 fingerprintOf(const QList<MainFuncNameForRank> &rank)
{
    Fingerprint sum;
    for (const MainFuncNameForRank &entry : rank) {
        sum.addAll(entry.FuncName, entry.InstanceName, entry.CodeSection, entry.RankNum, entry.FixPosFlag,
                   entry.MainDoNotCallFlag);
    }
    return sum.value();
}

GenerationInput generationInput(const Design &design, const GenerationOptions &options)
{
    GenerationInput input;
    input.series = MCUSerialString_To_ZV32MCUSERIALS(design.series());
    input.clock = &design.clock();
    input.options = options;
    input.signalGroups = design.pinInfo().m_deviceIPSignalGroupInfoList;
    if (options.notUsedPinAnalog)
        input.unusedPins = unusedPortPins(design.pinInfo());
    input.peripherals = modulesOf(design.peripherals(), design.modules().data());
    input.middlewares = modulesOf(design.middlewares(), design.modules().data() + design.peripherals().size());
    if (const GPIO_Configuration *gpio = design.gpio()) {
        input.signalSettings = copies(gpio->GetAllSignalsGPIOSettingList());
        input.pinDefines = gpio->GetGPIOPinDefineInfo();
        input.pinDefinesOwner = gpio->pinDefinesOwner();
    }
    if (const NVIC_Configuration *nvic = design.nvic()) {
        input.nvicSettings = enabledVectors(nvic->GetAllNVICSettingList());
        input.priorityGroup = nvic->GetPriorityGroupParameter().CurrentValue;
    }
    for (const DMA_Configuration *dma : design.dmaParts()) {
        for (const DMARequest *request : dma->ValidDMAChannalList())
            input.dmaRequests.push_back(*request);
    }
    return input;
}

} // namespace ChipLoom
