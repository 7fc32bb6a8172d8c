// What the peripherals of the design use of the clock tree.

#include "ClockConfig/ZV32MCUPLL.h"

namespace ChipLoom {

void ZV32MCUPLL::Set_lext_enable_flag(bool enable)
{
    m_state.clock.Set_LEXT_Enable(enable);
    leaveCrystal(ClockRefusal::LextOff);
    UpdateResultControls();
}

void ZV32MCUPLL::Set_hext_enable_flag(bool enable, bool third)
{
    ZV32ConfigCLK &clock = m_state.clock;
    const bool comesBack = enable && !clock.Get_HEXT_Enable();
    clock.Set_HEXT_Enable(enable);
    leaveCrystal(ClockRefusal::HextOff);
    // Whatever was still to be entered when the crystal went off: it comes back with what was good before.
    if (comesBack && !hextTextIsValid()) {
        if (clock.Get_HEXT_Value() < HEXT_INPUT_MIN_VALUE || clock.Get_HEXT_Value() > HEXT_INPUT_MAX_VALUE)
            clock.Set_HEXT_Value(series().startHext);
        m_state.hextText = QString::number(clock.Get_HEXT_Value());
    }
    if (enable && third) {
        // The PLL must not run from a frequency that nobody has given.
        if (!m_state.hextEntered)
            m_state.hextText = QStringLiteral("0");
        clock.Set_PLLRC(PLLRC_HEXT);
    }
    UpdateParam_From_ResultCLK();
}

void ZV32MCUPLL::Set_lextbypass_Flag(bool bypass)
{
    m_state.clock.Set_LEXT_Bypass(bypass);
    emit refreshed();
}

void ZV32MCUPLL::Set_hextbypass_Flag(bool bypass)
{
    m_state.clock.Set_HEXT_Bypass(bypass);
    emit refreshed();
}

void ZV32MCUPLL::setUsbFlag(bool &flag, bool on)
{
    if (flag == on)
        return;
    flag = on;
    ZV32ConfigCLK &clock = m_state.clock;
    const bool inUse = m_state.usb || m_state.usbfs || m_state.usbfs1 || m_state.usbfs2 || m_state.usbhs;
    if (!series().hasUsb() || clock.Get_TO_USB_Switch() == inUse)
        return;
    clock.Set_TO_USB_Switch(inUse);
    markChanged(&Flags::usb);
    if (!chooseUsbDivider().ok())
        recalculate();
}

void ZV32MCUPLL::setAdcFlag(bool &flag, bool on)
{
    flag = on;
    m_state.clock.Set_TO_ADC_Switch(m_state.adc1 || m_state.adc2 || m_state.adc3);
    recalculate();
}

void ZV32MCUPLL::Set_ADC_Divider(int divider)
{
    if (series().adcDivider || divider < 1 || divider == clock().Get_ADCDIV())
        return;
    m_state.clock.Set_ADCDIV(divider);
    recalculate();
}

void ZV32MCUPLL::Set_USART1_Flag(bool on)
{
    m_state.clock.Set_USART1_Switch(on);
    emit refreshed();
}

void ZV32MCUPLL::Set_USART2_Flag(bool on)
{
    m_state.clock.Set_USART2_Switch(on);
    emit refreshed();
}

void ZV32MCUPLL::Set_USART3_Flag(bool on)
{
    m_state.clock.Set_USART3_Switch(on);
    emit refreshed();
}

void ZV32MCUPLL::Set_I2C1_Flag(bool on)
{
    m_state.clock.Set_I2C_Switch(on);
    emit refreshed();
}

void ZV32MCUPLL::Set_I2SF5_Flag(bool on)
{
    if (!series().i2sf5 || clock().Get_I2SF5_Switch() == on)
        return;
    m_state.clock.Set_I2SF5_Switch(on);
    markChanged(&Flags::i2sf5);
    recalculate();
}

void ZV32MCUPLL::Set_CAN1_Flag(bool on)
{
    m_state.clock.Set_CAN1_Switch(on);
    recalculate();
}

void ZV32MCUPLL::Set_CAN2_Flag(bool on)
{
    m_state.clock.Set_CAN2_Switch(on);
    recalculate();
}

void ZV32MCUPLL::Set_CAN3_Flag(bool on)
{
    m_state.clock.Set_CAN3_Switch(on);
    recalculate();
}

void ZV32MCUPLL::Set_FREERTOSEnable_Flag(bool on)
{
    if (m_state.freertos == on)
        return;
    m_state.freertos = on;
    if (on)
        m_state.clock.Set_SysticDIV(1);
    UpdateResultControls();
}

void ZV32MCUPLL::setPinIndex(ClockField field, int index)
{
    if (!hasClockField(series(), field))
        return;
    const std::vector<ClockOption> pins = clockOptions(clock(), field);
    if (index < 0 || std::size_t(index) >= pins.size())
        return;
    setClockFieldValue(m_state.clock, field, pins[std::size_t(index)].value);
    recalculate();
}

void ZV32MCUPLL::Set_clockoutPinSelectComboBox(int index)
{
    setPinIndex(ClockField::ClkoutPin, index);
}

void ZV32MCUPLL::Set_clockout1PinSelectComboBox(int index)
{
    setPinIndex(ClockField::Clkout1Pin, index);
}

void ZV32MCUPLL::Set_clockout2PinSelectComboBox(int index)
{
    setPinIndex(ClockField::Clkout2Pin, index);
}

} // namespace ChipLoom
