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

} // namespace

QStringList remarksOn(const GeneratedFileRecord &file)
{
    QStringList remarks;
    for (const QString &block : file.lostBlocks)
        remarks.append(
            QCoreApplication::translate("GenerateCode", "not carried over: the user code of \"%1\"").arg(block));
    for (const QString &block : file.expandedBlocks)
        remarks.append(QCoreApplication::translate("GenerateCode", "changed: \\1 in the user code of \"%1\" stands for "
                                                                   "what the new file had there")
                           .arg(block));
    if (!file.portWithoutPin.isEmpty())
        remarks.append(QCoreApplication::translate("GenerateCode", "no pin is free for the output of printf through %1")
                           .arg(file.portWithoutPin));
    return remarks;
}

// ---- Questions to the design ----

bool GenerateCode_ALL::anyValid(const QStringList &names) const
{
    return std::any_of(names.begin(), names.end(), [this](const QString &name) { return IP_Is_Valid(name); });
}

bool GenerateCode_ALL::anyKindValid(const QString &kind) const
{
    return std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [&](const GenerationPeripheral &entry) {
        return entry.valid && kindOfInstance(entry.instanceName) == kind;
    });
}

bool GenerateCode_ALL::DMA_Is_Valid(const QString &channelName) const
{
    return std::any_of(m_ValidDMAChannalList.begin(), m_ValidDMAChannalList.end(), [&](const DMARequest *request) {
        return request->channelName.compare(channelName, Qt::CaseInsensitive) == 0;
    });
}

bool GenerateCode_ALL::dmaControllerInUse(const QString &controller) const
{
    const QString prefix = controller + QLatin1Char('_');
    const QStringList channels = m_dmaChannels + m_edmaStreams;
    return std::any_of(channels.begin(), channels.end(),
                       [&](const QString &channel) { return channel.startsWith(prefix) && DMA_Is_Valid(channel); });
}

bool GenerateCode_ALL::GPIO_x_Used(const QString &port) const
{
    const QString prefix = QLatin1Char('P') + port.mid(4, 1).toUpper();
    const auto names = [&](const QString &pin) { return pin.contains(prefix); };
    if (m_input.options.notUsedPinAnalog && std::any_of(m_input.unusedPins.begin(), m_input.unusedPins.end(), names))
        return true;
    return std::any_of(m_input.signalSettings.begin(), m_input.signalSettings.end(),
                       [&](const SignalsGPIOSetting &setting) { return names(setting.signalInPinName); });
}

bool GenerateCode_ALL::TimeBase_TMRn_Used(const QString &name) const
{
    const GenerationPeripheral *system = m_input.peripheral(QStringLiteral("SYSTEM"));
    return system && system->valid && system->value(QStringLiteral("Time_Base")) == name;
}

bool GenerateCode_ALL::TimeBase_USARTn_Used(const QString &name) const
{
    const GenerationPeripheral *system = m_input.peripheral(QStringLiteral("SYSTEM"));
    return system && system->valid && system->value(QStringLiteral("UART_Printf")) == name;
}

// The debug port, switched off, gives its pins back.
bool GenerateCode_ALL::debugHasCode() const
{
    const QString name = QStringLiteral("DEBUG");
    if (!m_dispatch.contains(name) || !m_input.peripheral(name))
        return false;
    const PeripheralGenerator *generator = generatorOf(name);
    return generator && generator->HaveCode();
}

bool GenerateCode_ALL::clockIsNeeded(const QString &section) const
{
    if (section.startsWith(QLatin1String("gpio")))
        return GPIO_x_Used(section);
    if (section.startsWith(QLatin1String("dma")) || section == QLatin1String("edma"))
        return dmaControllerInUse(section.toUpper());
    // Pins move in groups, and lines of EXINT are routed, by a block of their own.
    if (section == QLatin1String("iomux"))
        return !m_input.signalSettings.empty() || anyValid({QStringLiteral("EXINT")}) || debugHasCode();
    if (section == QLatin1String("scfg"))
        return anyValid({QStringLiteral("SCFG"), QStringLiteral("EXINT"), QStringLiteral("IRTMR")}) ||
               dmaControllerInUse(QStringLiteral("DMA1"));
    // What the converters have in common stands in the registers of the first.
    if (section == QLatin1String("adc1"))
        return anyValid({QStringLiteral("ADC1"), QStringLiteral("ADC-Common")});
    if (section == QLatin1String("cmp"))
        return anyValid({QStringLiteral("CMP1"), QStringLiteral("CMP2")});
    // The clock of the battery powered domain is set behind the power controller.
    if (section == QLatin1String("pwc"))
        return anyValid({QStringLiteral("PWC"), QStringLiteral("ERTC"), QStringLiteral("RTC")});
    if (section == QLatin1String("bpr"))
        return IP_Is_Valid(QStringLiteral("RTC"));
    if (section == QLatin1String("usb"))
        return IP_Is_Valid(QStringLiteral("USBFS"));
    if (section.startsWith(QLatin1String("otg")))
        return IP_Is_Valid(QLatin1String("USB_") + section.toUpper());
    if (section == QLatin1String("xmc"))
        return std::any_of(m_input.peripherals.begin(), m_input.peripherals.end(), [](const GenerationPeripheral &one) {
            return one.valid && one.instanceName.startsWith(QLatin1String("XMC_"));
        });
    const QString instance = section.toUpper();
    if (section.startsWith(QLatin1String("spi")))
        return anyValid({instance, QLatin1String("I2S") + section.mid(3)});
    return IP_Is_Valid(instance) || TimeBase_TMRn_Used(instance) || TimeBase_USARTn_Used(instance);
}

bool GenerateCode_ALL::Periph_clock_Is_Enable() const
{
    return std::any_of(m_clocks.begin(), m_clocks.end(), [](const ClockLine &clock) { return clock.needed; });
}

bool GenerateCode_ALL::moduleIsNeeded(const QString &module) const
{
    if (isAlwaysNeeded(module))
        return true;
    const QString kind = module.toUpper();
    // A module is on if a clock of its kind is; what has none, or serves others too, is told here.
    const auto clockOf = [&](const QString &prefix) {
        return std::any_of(m_clocks.begin(), m_clocks.end(),
                           [&](const ClockLine &clock) { return clock.needed && clock.kind == prefix; });
    };
    if (module == QLatin1String("gpio")) {
        const auto port = [](const ClockLine &clock) {
            return clock.needed && clock.section.startsWith(QLatin1String("gpio"));
        };
        return std::any_of(m_clocks.begin(), m_clocks.end(), port) || !printfOfSystem().isEmpty() ||
               anyValid({QStringLiteral("DEBUG"), QStringLiteral("EXINT")}) || debugHasCode();
    }
    if (module == QLatin1String("usart"))
        return clockOf(QStringLiteral("USART")) || clockOf(QStringLiteral("UART"));
    if (module == QLatin1String("exint"))
        return anyValid({QStringLiteral("EXINT"), QStringLiteral("ERTC"), QStringLiteral("RTC"), QStringLiteral("PWC"),
                         QStringLiteral("CMP1"), QStringLiteral("CMP2"), QStringLiteral("USBFS"),
                         QStringLiteral("EMAC")});
    if (module == QLatin1String("usb"))
        return clockOf(QStringLiteral("USB")) || clockOf(QStringLiteral("OTGFS")) || clockOf(QStringLiteral("OTGHS"));
    return clockOf(kind) || (anyKindValid(kind) && !m_row.withoutCodeList().contains(kind));
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
    const GenerationPeripheral *system = m_input.peripheral(QStringLiteral("SYSTEM"));
    const QString port = system && system->valid ? system->value(QStringLiteral("UART_Printf")) : QString();
    return port == QLatin1String("NONE") ? QString() : port;
}

QString GenerateCode_ALL::printfOfPeripheral() const
{
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        const QString kind = kindOfInstance(entry.instanceName);
        const bool port = kind == QLatin1String("USART") || kind == QLatin1String("UART");
        if (port && entry.valid && entry.value(QStringLiteral("UART_Printf")) == QLatin1String("TRUE"))
            return entry.instanceName;
    }
    return {};
}

QStringList GenerateCode_ALL::withoutGenerator() const
{
    QStringList names;
    const QStringList withoutCode = m_row.withoutCodeList();
    for (const GenerationPeripheral &entry : m_input.peripherals) {
        if (entry.valid && !FrameKinds.contains(entry.instanceName) && !withoutCode.contains(entry.instanceName) &&
            !(m_dispatch.contains(entry.instanceName) && generatorOf(entry.instanceName)))
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
    for (const QString &module : m_row.moduleList())
        names.append(m_prefix + QLatin1Char('_') + module);
    return names;
}

QStringList GenerateCode_ALL::GenerateCode_Get_Valid_IP_FileNameList() const
{
    QStringList names;
    for (const QString &module : m_row.moduleList()) {
        if (moduleIsNeeded(module))
            names.append(m_prefix + QLatin1Char('_') + module);
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
        return entry.name == group && entry.valid && m_dispatch.contains(entry.instanceName);
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
    for (const DMARequest *request : m_ValidDMAChannalList)
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
            const PeripheralGenerator *generator = generatorOf(entry.instanceName);
            if (m_dispatch.contains(entry.instanceName) && (!generator || generator->HaveCode()))
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

} // namespace ChipLoom
