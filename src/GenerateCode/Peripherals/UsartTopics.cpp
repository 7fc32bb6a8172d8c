#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &usartTopics()
{
    static const QStringList pins{"TX", "RX", "CTS", "RTS", "CK"};
    static const QStringList transmitting{"MODE_TX_RX", "MODE_TX"};
    static const QStringList receiving{"MODE_TX_RX", "MODE_RX"};
    static const PeripheralTopics topics{
        .kind = "USART",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("tx", "TX"),
                pin("rx", "RX"),
                pin("cts", "CTS").onlyWhen("flow_control"),
                pin("rts", "RTS").onlyWhen("flow_control"),
                pin("ck", "CK").onlyWhen("synchronous"),
                remap(pins),
                section("GenerateCode_USART_Uart_printf", "uart_printf", isTrue("UART_Printf")),
                call("GenerateCode_USART_usart_init", "usart_init", {Keep, "BaudRate", "Databitnum", "STOPbitnum"}),
                section("GenerateCode_USART_Data_Direction", "data direction trans", isOneOf("Mode", transmitting)),
                section("GenerateCode_USART_Data_Direction", "data direction receive", isOneOf("Mode", receiving)),
                call("GenerateCode_USART_usart_parity_selection_config", "usart_parity_selection_config",
                     {Keep, "Parityselection"}),
                section("GenerateCode_USART_clock_config", "usart clock config", isTrue("Clockenable"),
                        {call("GenerateCode_USART_clock_config", "usart_clock_config",
                              {Keep, "CLKPolarity", "CLKPhase", "Lastbitclockpulse"})})
                    .onlyWhen("synchronous"),
                section("GenerateCode_USART_single_line_halfduplex_select", "half duplex",
                        isOneOf("VirtualMode", {"VM_HALFDUPLEX"})),
                section(
                    "GenerateCode_USART_receiver_mute", "receiver mute", isOneOf("VirtualMode", {"VM_MUTE"}),
                    {call("GenerateCode_USART_receiver_mute", "usart_wakeup_mode_set", {Keep, "WakeUpMethod"}),
                     call("GenerateCode_USART_receiver_mute", "usart_wakeup_id_set", {Keep, orSample("USART_ID")})}),
                section("GenerateCode_USART_irda", "irda", isOneOf("VirtualMode", {"VM_IRDA"}),
                        {call("GenerateCode_USART_irda", "usart_irda_smartcard_division_set", {Keep, "IrDADivision"}),
                         call("GenerateCode_USART_irda", "usart_irda_low_power_enable", {Keep, "IrDALowPower"})}),
                section("GenerateCode_USART_lin", "lin", isOneOf("VirtualMode", {"VM_LIN"}),
                        {call("GenerateCode_USART_lin", "usart_break_bit_num_set", {Keep, "LINBreakLength"})}),
                section("GenerateCode_USART_smartcard", "smartcard", isOneOf("VirtualMode", {"VM_SMARTCARD"}),
                        {call("GenerateCode_USART_smartcard", "usart_irda_smartcard_division_set",
                              {Keep, "SmartcardDivision"}),
                         call("GenerateCode_USART_smartcard", "usart_smartcard_guard_time_set", {Keep, "GuardTime"}),
                         call("GenerateCode_USART_smartcard", "usart_smartcard_nack_set", {Keep, "SmartcardNACK"})})
                    .onlyWhen("smartcard"),
                section("GenerateCode_USART_DMA", "dma transmitter", isRequested({"_TX"})),
                section("GenerateCode_USART_DMA", "dma receiver", isRequested({"_RX"})),
                line("GenerateCode_USART_usart_hardware_flow_control_set", "usart_hardware_flow_control_set",
                     isGiven("HwFlowCtl"), {Keep, "HwFlowCtl"})
                    .onlyWhen("flow_control"),
                line("GenerateCode_USART_usart_transmit_receive_pin_swap", "usart_transmit_receive_pin_swap",
                     isTrue("PinsSwapping"), {Keep, "PinsSwapping"})
                    .onlyWhen("swap"),
                interruptEnable("Interrupt_RDBF"),
                interruptEnable("Interrupt_TDBE"),
                interruptEnable("Interrupt_TDC"),
                interruptEnable("Interrupt_IDLE"),
                interruptEnable("Interrupt_ERR"),
                interruptEnable("Interrupt_PERR"),
                interruptEnable("Interrupt_BF"),
                interruptEnable("Interrupt_CTSCF").onlyWhen("flow_control"),
                interruptRemarks(),
            },
        .mainCall = {section("GenerateCode_USART_Uart_printf", "uart_printf", isTrue("UART_Printf"))},
        .branches = {{"_val_rx", isTrue("Interrupt_RDBF")},
                     {"_val_tx", isTrue("Interrupt_TDBE")},
                     {"_RDBF_FLAG", isTrue("Interrupt_RDBF")},
                     {"_TDBE_FLAG", isTrue("Interrupt_TDBE")},
                     {"_TDC_FLAG", isTrue("Interrupt_TDC")},
                     {"_PERR_FLAG", isTrue("Interrupt_PERR")},
                     {"_NERR_ROERR_FERR_FLAG", isTrue("Interrupt_ERR")},
                     {"_IDLEF_FLAG", isTrue("Interrupt_IDLE")},
                     {"_BFF_FLAG", isTrue("Interrupt_BF")},
                     {"_CTSCF_FLAG", isTrue("Interrupt_CTSCF"), "flow_control"}},
    };
    return topics;
}

} // namespace ChipLoom
