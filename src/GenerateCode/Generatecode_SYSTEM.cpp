#include "GenerateCode/Generatecode_SYSTEM.h"

#include "ClockConfig/ZV32PLLConfig.h"
#include "GenerateCode/SectionedText.h"
#include "GenerateCode/TextEngine.h"

namespace ChipLoom {

namespace {

const QString True = QStringLiteral("TRUE");
const QString None = QStringLiteral("NONE");

} // namespace

GenerateCode_SYSTEM::GenerateCode_SYSTEM(ZV32MCUSERIALS series) : GenerateCode_IP(series, QStringLiteral("SYSTEM")) {}

bool GenerateCode_SYSTEM::usesTimeBase() const
{
    return m_IPValidFlag && !timeBase().isEmpty() && timeBase() != None;
}

bool GenerateCode_SYSTEM::interrupts() const
{
    return m_IPValidFlag && Get_DefineString_Param(QStringLiteral("SysTick_Interrupt")) == True;
}

bool GenerateCode_SYSTEM::timeBaseIsTimer() const
{
    return usesTimeBase() && timeBase().startsWith(QLatin1String("TMR"));
}

QString GenerateCode_SYSTEM::ownPrintfPort() const
{
    const QString port = m_IPValidFlag ? Get_DefineString_Param(QStringLiteral("UART_Printf")) : QString();
    return port == None ? QString() : port;
}

QString GenerateCode_SYSTEM::printfPort() const
{
    return ownPrintfPort().isEmpty() ? m_printfPeripheral : ownPrintfPort();
}

bool GenerateCode_SYSTEM::keep(std::string &text, const char *section, bool kept) const
{
    return GenerateCode_Handle_Function(text, QLatin1String(section), kept);
}

// The two ways of reading the frequency stand side by side wherever a clock is read.
bool GenerateCode_SYSTEM::chooseDivision(std::string &text, bool divided) const
{
    return keep(text, "div_1", !divided) && keep(text, "div_other", divided);
}

bool GenerateCode_SYSTEM::writeTimeBase(std::string &text) const
{
    const bool systick = usesTimeBase() && !timeBaseIsTimer();
    const bool loop = usesTimeBase() && !interrupts();
    if (!keep(text, "systick_interrupt", interrupts()) ||
        !keep(text, "timebase_init", usesTimeBase() && interrupts()) || !keep(text, "timebase_init_loop", loop) ||
        !keep(text, "delay", usesTimeBase()))
        return false;
    if (loop && (!keep(text, "systick_timebase", systick) || !keep(text, "tmr_timebase", timeBaseIsTimer())))
        return false;
    if (interrupts() || (loop && systick)) {
        if (!keep(text, "systick_timebase_clock", true))
            return false;
        return chooseDivision(text, m_clockConfigForm && m_clockConfigForm->Get_SysticDiv() != 1);
    }
    if (!loop)
        return true;

    const ClockSeries *series = clockSeries(m_MCUSerial);
    const bool apb1 = series && clockBranchOf(*series, timeBase()) == ClockBranch::Apb1Timer;
    if (!keep(text, "apb1tmr_timebase_clock", apb1) || !keep(text, "apb2tmr_timebase_clock", !apb1))
        return false;
    const int divider = !m_clockConfigForm ? 1
                        : apb1             ? m_clockConfigForm->Get_APB1Div()
                                           : m_clockConfigForm->Get_APB2Div();
    return chooseDivision(text, divider != 1) && rewriteWord(text, QStringLiteral("TMR1"), timeBase());
}

// The pin of a port that no page places: the first free one that offers its transmitter.
GenerateCode_SYSTEM::PrintfPin GenerateCode_SYSTEM::printfPin() const
{
    const QString signal = ownPrintfPort() + QLatin1String("_TX");
    const auto isFree = [this](const QString &pin) {
        for (const SignalsGPIOSetting *setting : lists().AllSignalsGPIOSettingList) {
            if (IsPinNameSame(setting->signalInPinName, pin))
                return false;
        }
        return true;
    };
    const auto defineOf = [this](const QString &pin) -> const GPIO_Pin_Define_Info * {
        for (const GPIO_Pin_Define_Info *define : lists().GPIOPinDefineInfo) {
            if (IsPinNameSame(define->Name, pin))
                return define;
        }
        return nullptr;
    };
    for (const GPIO_Pin_Define_Info *define : lists().GPIOPinDefineInfo) {
        for (const GPIO_PinSignal_Mux_Info &info : define->pinSignalMuxInfoList) {
            if (info.SignalName == signal && isFree(define->Name))
                return {define, info.GPIO_Mux_x, {}};
        }
    }
    // Where functions move in groups, the first is the place after reset.
    for (const IPSignalGroupInfo &group : lists().deviceIPSignalGroupInfoList) {
        for (const IPSignal &member : group.signalGroup) {
            if (member.signalName != signal || !isFree(member.signalInPinName))
                continue;
            if (const GPIO_Pin_Define_Info *define = defineOf(member.signalInPinName))
                return {define, {}, group.GMUX};
        }
    }
    return {};
}

QString GenerateCode_SYSTEM::portWithoutPin() const
{
    const QString port = ownPrintfPort();
    return port.isEmpty() || printfPin().define ? QString() : port;
}

bool GenerateCode_SYSTEM::writePrintfPort(std::string &text) const
{
    const QString own = ownPrintfPort();
    if (!keep(text, "uart_printf", !own.isEmpty()))
        return false;
    if (own.isEmpty())
        return true;
    const PrintfPin place = printfPin();
    const SectionSpan span = findSection(text, QStringLiteral("tx pin"));
    if (!span.found())
        return false;
    std::string work;
    if (const GPIO_Pin_Define_Info *pin = place.define) {
        work = keptBody(text, span);
        const bool written =
            rewriteCall(work, QStringLiteral("crm_periph_clock_enable"),
                        {QLatin1String("CRM_") + pin->GPIO_x + QLatin1String("_PERIPH_CLOCK"), True}) &&
            rewriteAssignments(work, QStringLiteral("gpio_init_struct.gpio_pins"), pin->GPIO_Pin_x) &&
            rewriteCall(work, QStringLiteral("gpio_init"), {pin->GPIO_x, QStringLiteral("&gpio_init_struct")});
        if (!written)
            return false;
        // A series has the one of these or the other.
        rewriteCall(work, QStringLiteral("gpio_pin_mux_config"), {pin->GPIO_x, pin->GPIO_PinSource_x, place.mux});
        if (findSection(work, QStringLiteral("tx gmux")).found() && !keep(work, "tx gmux", !place.group.isEmpty()))
            return false;
        rewriteCall(work, QStringLiteral("gpio_pin_remap_config"), {place.group, True});
    }
    replaceSection(text, span, work);
    return true;
}

bool GenerateCode_SYSTEM::GenerateCode_lm_system_c(std::string &text) const
{
    const bool printf = !printfPort().isEmpty();
    if (!writeTimeBase(text) || !keep(text, "printf_include", printf) || !writePrintfPort(text) ||
        !keep(text, "printf_output", printf))
        return false;
    if (printf && !rewriteWord(text, QStringLiteral("USART1"), printfPort()))
        return false;
    return GenerateCode_DeleteBlankLine_FunctionEnd(text);
}

bool GenerateCode_SYSTEM::GenerateCode_lm_system_h(std::string &text) const
{
    return keep(text, "systick_interrupt", interrupts()) &&
           keep(text, "timebase_init", usesTimeBase() && interrupts()) &&
           keep(text, "timebase_init_loop", usesTimeBase() && !interrupts()) && keep(text, "delay", usesTimeBase()) &&
           keep(text, "uart_printf", !ownPrintfPort().isEmpty());
}

bool GenerateCode_SYSTEM::GenerateCode_main_c(SectionedText &text) const
{
    const QString printf = QStringLiteral("uart_printf_init");
    const QString port = ownPrintfPort();
    if (!GenerateCode_Handle_Function(text, QStringLiteral("systick_interrupt"), interrupts()) ||
        !GenerateCode_Handle_Function(text, QStringLiteral("timebase_init"), usesTimeBase()) ||
        !GenerateCode_Handle_Function(text, printf, !port.isEmpty()))
        return false;
    if (port.isEmpty())
        return true;
    return rewriteCall(text.section(printf), QStringLiteral("lm_uart_printf_init"),
                       {Get_DefineString_Param(QStringLiteral("Printf_BaudRate"))});
}

bool GenerateCode_SYSTEM::GenerateCode_interrupt_int_c(SectionedText &text) const
{
    return GenerateCode_Handle_Function(text, QStringLiteral("systick_timebase_handler"), interrupts());
}

} // namespace ChipLoom
