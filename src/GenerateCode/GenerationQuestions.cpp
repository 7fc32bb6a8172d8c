#include "GenerateCode/FunctionRank.h"
#include "GenerateCode/Generatecode_ALL.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

// What a generation asks of the design, and the lists for the builder of projects.

namespace ChipLoom {

namespace {

// Peripherals whose code the frame itself writes.
const QStringList FrameKinds{QStringLiteral("SYSTEM"), QStringLiteral("CRM"), QStringLiteral("GPIO"),
                             QStringLiteral("NVIC"),   QStringLiteral("DMA"), QStringLiteral("EDMA")};

const QString PrintfParameter = QStringLiteral("UART_Printf");

bool servesPrintf(const GenerationPeripheral &entry)
{
    const QString kind = kindOfInstance(entry.instanceName);
    const bool port = kind == QLatin1String("USART") || kind == QLatin1String("UART");
    return port && entry.valid && entry.value(PrintfParameter) == QLatin1String("TRUE");
}

} // namespace

QStringList remarksOn(const GeneratedFileRecord &file)
{
    QStringList remarks;
    if (!file.formerCopy.isEmpty())
        remarks.append(QCoreApplication::translate("GenerateCode", "the former file is kept as %1")
                           .arg(file.formerCopy.section(QLatin1Char('/'), -1)));
    for (const QString &block : file.lostBlocks)
        remarks.append(
            QCoreApplication::translate("GenerateCode", "not carried over: the user code of \"%1\"").arg(block));
    for (const QString &block : file.expandedBlocks)
        remarks.append(QCoreApplication::translate("GenerateCode", "changed: \\1 in the user code of \"%1\" stands for "
                                                                   "what the new file had there")
                           .arg(block));
    for (const QString &block : file.repeatedBlocks)
        remarks.append(QCoreApplication::translate(
                           "GenerateCode", "the marker lines of \"%1\" stand there twice: all between the first "
                                           "and the last stays as it is, generated code included")
                           .arg(block));
    if (!file.portWithoutPin.isEmpty())
        remarks.append(QCoreApplication::translate("GenerateCode", "no pin is free for the output of printf through %1")
                           .arg(file.portWithoutPin));
    for (const QString &port : file.portsWithoutPrintf)
        remarks.append(
            QCoreApplication::translate("GenerateCode", "printf is served by another port, and not by %1").arg(port));
    return remarks;
}

// ---- Questions to the design ----

const GenerationPeripheral *GenerateCode_ALL::peripheral(const QString &name) const
{
    const auto number = static_cast<size_t>(m_modules.find(name)); // behind all others where there is none
    return number < m_input.peripherals.size() ? &m_input.peripherals[number] : nullptr;
}

bool GenerateCode_ALL::IP_Is_Valid(const QString &name) const
{
    const auto number = static_cast<size_t>(m_modules.find(name));
    const size_t peripherals = m_input.peripherals.size();
    if (number < peripherals)
        return m_input.peripherals[number].valid;
    return number - peripherals < m_input.middlewares.size() && m_input.middlewares[number - peripherals].valid;
}

bool GenerateCode_ALL::anyValid(const QStringList &names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString &name) { return IP_Is_Valid(name); });
}

bool GenerateCode_ALL::anyKindValid(const QString &kind) const
{
    return std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [&](const GenerationPeripheral &entry) {
        return entry.valid && entry.instanceName.startsWith(kind) && kindOfInstance(entry.instanceName) == kind;
    });
}

bool GenerateCode_ALL::DMA_Is_Valid(const QString &channelName) const
{
    return std::any_of(
        m_lists.ValidDMAChannalList.begin(), m_lists.ValidDMAChannalList.end(),
        [&](const DMARequest *request) { return request->channelName.compare(channelName, Qt::CaseInsensitive) == 0; });
}

bool GenerateCode_ALL::dmaControllerInUse(const QString &controller) const
{
    const QString prefix = controller + QLatin1Char('_');
    const auto inUse = [&](const DmaChannelNames &channel) {
        return channel.name.startsWith(prefix) && DMA_Is_Valid(channel.name);
    };
    return std::any_of(m_plan.dmaChannels.begin(), m_plan.dmaChannels.end(), inUse) ||
           std::any_of(m_plan.edmaStreams.begin(), m_plan.edmaStreams.end(), inUse);
}

// A port by the name of its clock line, "gpioa", or by its define.
bool GenerateCode_ALL::GPIO_x_Used(const QString &port) const
{
    return (m_ports >> (port.at(4).toUpper().unicode() - 'A') & 1U) != 0;
}

quint32 GenerateCode_ALL::portsInUse() const
{
    quint32 ports = 0;
    const auto add = [&](const QString &pin) {
        for (int at = 1; at < pin.size(); ++at) {
            const int port = pin.at(at).unicode() - 'A';
            if (pin.at(at - 1) == QLatin1Char('P') && port >= 0 && port < 26)
                ports |= 1U << port;
        }
    };
    for (const SignalsGPIOSetting &setting : m_input.signalSettings)
        add(setting.signalInPinName);
    if (m_input.options.notUsedPinAnalog)
        std::for_each(m_input.unusedPins.begin(), m_input.unusedPins.end(), add);
    return ports;
}

bool GenerateCode_ALL::TimeBase_TMRn_Used(const QString &name) const
{
    const GenerationPeripheral *system = peripheral(QStringLiteral("SYSTEM"));
    return system && system->valid && system->value(QStringLiteral("Time_Base")) == name;
}

bool GenerateCode_ALL::TimeBase_USARTn_Used(const QString &name) const
{
    const GenerationPeripheral *system = peripheral(QStringLiteral("SYSTEM"));
    return system && system->valid && system->value(PrintfParameter) == name;
}

// The debug port, switched off, gives its pins back.
bool GenerateCode_ALL::debugHasCode() const
{
    const QString name = QStringLiteral("DEBUG");
    const int instance = m_plan.numberOf(name);
    if (instance < 0 || !peripheral(name))
        return false;
    const DeclaredGenerator *generator = generatorOf(static_cast<size_t>(instance));
    return generator && generator->HaveCode();
}

bool GenerateCode_ALL::clockIsNeeded(const SeriesPlan::Clock &clock) const
{
    using Need = SeriesPlan::Clock::Need;
    switch (clock.need) {
    case Need::Port:
        return GPIO_x_Used(clock.name);
    case Need::Channels:
        return dmaControllerInUse(clock.name.toUpper());
    case Need::Pins: // they move in groups, and lines of EXINT are routed, by a block of their own
        return !m_input.signalSettings.empty() || IP_Is_Valid(QStringLiteral("EXINT")) || debugHasCode();
    case Need::Router:
        return anyValid(clock.instances) || dmaControllerInUse(QStringLiteral("DMA1"));
    case Need::Banks:
        return std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [](const GenerationPeripheral &one) {
            return one.valid && one.instanceName.startsWith(QLatin1String("XMC_"));
        });
    case Need::Instances:
        return anyValid(clock.instances);
    case Need::OwnInstance:
        return anyValid(clock.instances) || TimeBase_TMRn_Used(clock.instances.first()) ||
               TimeBase_USARTn_Used(clock.instances.first());
    }
    return false;
}

bool GenerateCode_ALL::Periph_clock_Is_Enable() const
{
    return std::find(m_clockNeeds.begin(), m_clockNeeds.end(), true) != m_clockNeeds.end();
}

bool GenerateCode_ALL::moduleIsNeeded(const QString &module) const
{
    if (isAlwaysNeeded(module))
        return true;
    const QString kind = module.toUpper();
    // A module is on if a clock of its kind is; what has none, or serves others too, is told here.
    const auto clockOf = [&](const QString &name) {
        for (size_t i = 0; i < m_plan.clocks.size(); ++i) {
            if (m_clockNeeds[i] && m_plan.clocks[i].kind == name)
                return true;
        }
        return false;
    };
    if (module == QLatin1String("gpio"))
        return m_ports != 0 || !printfOfSystem().isEmpty() ||
               anyValid({QStringLiteral("DEBUG"), QStringLiteral("EXINT")}) || debugHasCode();
    if (module == QLatin1String("usart"))
        return clockOf(QStringLiteral("USART")) || clockOf(QStringLiteral("UART"));
    if (module == QLatin1String("exint"))
        return anyValid({QStringLiteral("EXINT"), QStringLiteral("ERTC"), QStringLiteral("RTC"), QStringLiteral("PWC"),
                         QStringLiteral("CMP1"), QStringLiteral("CMP2"), QStringLiteral("USBFS"),
                         QStringLiteral("EMAC")});
    if (module == QLatin1String("usb"))
        return clockOf(QStringLiteral("USB")) || clockOf(QStringLiteral("OTGFS")) || clockOf(QStringLiteral("OTGHS"));
    return clockOf(kind) || (anyKindValid(kind) && !m_plan.row.withoutCodeList().contains(kind));
}

bool GenerateCode_ALL::needsSystemFiles() const
{
    switch (m_input.options.ideType) {
    case IDE_MAKEFILE:
    case IDE_CMAKE:
        return true;
    case IDE_ZV32_IDE:
    case IDE_ECLIPSE_GCC:
        return IP_Is_Valid(QStringLiteral("CMSIS_DSP"));
    default:
        return false;
    }
}

QString GenerateCode_ALL::printfOfSystem() const
{
    const GenerationPeripheral *system = peripheral(QStringLiteral("SYSTEM"));
    const QString port = system && system->valid ? system->value(PrintfParameter) : QString();
    return port == QLatin1String("NONE") ? QString() : port;
}

QString GenerateCode_ALL::printfOfPeripheral() const
{
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        if (servesPrintf(entry))
            return entry.instanceName;
    }
    return {};
}

QStringList GenerateCode_ALL::leavePrintfToOnePort()
{
    QStringList others;
    bool served = !printfOfSystem().isEmpty();
    for (GenerationPeripheral &entry : m_input.peripherals) {
        if (!servesPrintf(entry) || !std::exchange(served, true))
            continue;
        others.append(entry.instanceName);
        for (RefParameter &parameter : entry.parameters) {
            if (parameter.Name == PrintfParameter)
                parameter.CurrentValue = QStringLiteral("FALSE");
        }
    }
    return others;
}

QStringList GenerateCode_ALL::withoutGenerator() const
{
    QStringList names;
    const QStringList withoutCode = m_plan.row.withoutCodeList();
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        const int instance = m_plan.numberOf(entry.instanceName);
        const bool hasGenerator = instance >= 0 && m_plan.instances[static_cast<size_t>(instance)].questions;
        if (entry.valid && !hasGenerator && !FrameKinds.contains(entry.instanceName) &&
            !withoutCode.contains(entry.instanceName))
            names.append(entry.instanceName);
    }
    for (const GenerationPeripheral &entry : m_input.middlewares) {
        if (entry.valid)
            names.append(entry.instanceName);
    }
    return names;
}

// ---- Lists ----

QStringList GenerateCode_ALL::GenerateCode_Get_All_IP_FileNameList() const
{
    QStringList names;
    for (const QString &module : m_plan.row.moduleList())
        names.append(m_plan.prefix + QLatin1Char('_') + module);
    return names;
}

QStringList GenerateCode_ALL::GenerateCode_Get_Valid_IP_FileNameList() const
{
    QStringList names;
    for (const QString &module : m_plan.row.moduleList()) {
        if (moduleIsNeeded(module))
            names.append(m_plan.prefix + QLatin1Char('_') + module);
    }
    return names;
}

QStringList GenerateCode_ALL::GenerateCode_Get_Valid_Mid_NameList() const
{
    QStringList names;
    for (const GenerationPeripheral &entry : m_input.middlewares) {
        if (entry.valid)
            names.append(entry.instanceName);
    }
    return names;
}

QStringList GenerateCode_ALL::GenerateCode_Get_Delete_ProjectFilesList() const
{
    QStringList files;
    for (const QString &group : Get_IP_GroupName_List()) {
        const bool applies = m_input.options.splitIP && groupHasCode(group);
        if (!applies)
            files += {QLatin1String("lm_") + codeName(group) + QLatin1String(".c"),
                      QLatin1String("lm_") + codeName(group) + QLatin1String(".h")};
    }
    return files;
}

QStringList GenerateCode_ALL::Get_IP_GroupName_List() const
{
    QStringList groups;
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        if (entry.name != QLatin1String("DEBUG") && entry.name != QLatin1String("SYSTEM") &&
            !groups.contains(entry.name))
            groups.append(entry.name);
    }
    if (!groups.contains(QLatin1String("GPIO")))
        groups.append(QStringLiteral("GPIO"));
    return groups;
}

bool GenerateCode_ALL::groupHasCode(const QString &group) const
{
    if (group == QLatin1String("GPIO"))
        return gpioGenerator().GenerateCode_GPIO_have_valid();
    for (const GenerateCode_DMA &dma : dmaGenerators()) {
        if (dma.name() == group)
            return dma.isUsed();
    }
    return std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [&](const GenerationPeripheral &entry) {
        return entry.name == group && entry.valid && m_plan.numberOf(entry.instanceName) >= 0;
    });
}

QStringList GenerateCode_ALL::GenerateCode_Get_Valid_PeripheralsAndMid_NameList_ForRank() const
{
    QStringList names{QStringLiteral("lm_system_clock_config")};
    if (Periph_clock_Is_Enable())
        names.append(QStringLiteral("lm_periph_clock_config"));
    names.append(QStringLiteral("NVIC"));
    if (gpioGenerator().GenerateCode_GPIO_have_valid())
        names.append(QStringLiteral("GPIO"));
    for (const DMARequest *request : m_lists.ValidDMAChannalList)
        names.append(request->channelName);
    const auto addOnce = [&](const QString &name) {
        if (!names.contains(name))
            names.append(name);
    };
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        const bool putAway = entry.instanceName == QLatin1String("DEBUG") && debugHasCode();
        static const QStringList WithoutCall{QStringLiteral("GPIO"), QStringLiteral("DMA"), QStringLiteral("EDMA"),
                                             QStringLiteral("NVIC")};
        if (!(entry.valid || putAway) || WithoutCall.contains(entry.instanceName))
            continue;
        if (entry.instanceName.startsWith(QLatin1String("XMC"))) {
            addOnce(QStringLiteral("XMC"));
            names.append(entry.instanceName);
        } else if (entry.instanceName == QLatin1String("CRM")) {
            for (const auto &[parameter, function] :
                 {std::pair("Clock-out", "lm_clkout_init"), std::pair("Clock-out1", "lm_clkout1_init"),
                  std::pair("Clock-out2", "lm_clkout2_init")}) {
                if (entry.value(QLatin1String(parameter)) == QLatin1String("CLKOUT_ENABLE"))
                    names.append(QLatin1String(function));
            }
        } else if (entry.instanceName == QLatin1String("SYSTEM")) {
            const QString timeBase = entry.value(QStringLiteral("Time_Base"));
            if (!timeBase.isEmpty() && timeBase != QLatin1String("NONE"))
                names.append(QStringLiteral("lm_timebase_init"));
            if (entry.value(QStringLiteral("SysTick_Interrupt")) == QLatin1String("TRUE"))
                names.append(QStringLiteral("systick_interrupt_config"));
            if (!printfOfSystem().isEmpty())
                names.append(QStringLiteral("lm_uart_printf_init"));
        } else {
            const int instance = m_plan.numberOf(entry.instanceName);
            const DeclaredGenerator *generator = instance >= 0 ? generatorOf(static_cast<size_t>(instance)) : nullptr;
            if (instance >= 0 && (!generator || generator->HaveCode()))
                names.append(entry.instanceName);
        }
    }
    for (const GenerationPeripheral &entry : m_input.middlewares) {
        if (!entry.valid || entry.instanceName == QLatin1String("FREERTOS") ||
            entry.instanceName == QLatin1String("RT-Thread_Nano"))
            continue;
        if (entry.instanceName == QLatin1String("USB_DEVICE") || entry.instanceName == QLatin1String("USB_HOST"))
            addOnce(QStringLiteral("lm_usb_app_init"));
        else
            names.append(entry.instanceName);
    }
    return names;
}

const QList<MainFuncNameForRank> &GenerateCode_ALL::functionRank() const
{
    if (!m_rank)
        m_rank = Set_Valid_PeripheralsAndMid_NameList_ForRank(
            m_plan.calls, m_input.options.rank, GenerateCode_Get_Valid_PeripheralsAndMid_NameList_ForRank());
    return *m_rank;
}

} // namespace ChipLoom
