#include "GenerateCode/PeripheralDesign.h"

#include <gmock/gmock.h>

using namespace ChipLoom;

namespace {

const QMap<QString, QString> SerialPort{
    {"VirtualMode", "VM_ASYNC"},        {"BaudRate", "9600"},   {"Databitnum", "USART_DATA_9BITS"},
    {"STOPbitnum", "USART_STOP_2_BIT"}, {"Mode", "MODE_TX_RX"}, {"Parityselection", "USART_PARITY_EVEN"},
};

class SerialPortCode : public PeripheralDesign
{
protected:
    QString port(QMap<QString, QString> changed = {})
    {
        QMap<QString, QString> values = SerialPort;
        for (auto value = changed.begin(); value != changed.end(); ++value)
            values[value.key()] = value.value();
        m_parameters.clear();
        set(values);
        return function("ZV32F421", ZV32F421, "USART1");
    }
};

TEST_F(SerialPortCode, IsWrittenWithItsPinsAndLeavesNothingOfWhatIsOff)
{
    place("USART1_TX", "PA9");
    place("USART1_RX", "PA10");
    EXPECT_EQ(port(), R"(/**
  * @brief  init usart1: pins, frame, direction, events
  * @retval none
  */
void lm_usart1_init(void)
{
  /* add user code begin usart1_init 0 */

  /* add user code end usart1_init 0 */

  gpio_init_type gpio_init_struct;

  gpio_default_para_init(&gpio_init_struct);

  /* add user code begin usart1_init 1 */

  /* add user code end usart1_init 1 */

  /* transmit pin */
  gpio_init_struct.gpio_drive_strength = GPIO_DRIVE_STRENGTH_STRONGER;
  gpio_init_struct.gpio_out_type = GPIO_OUTPUT_PUSH_PULL;
  gpio_init_struct.gpio_mode = GPIO_MODE_MUX;
  gpio_init_struct.gpio_pins = GPIO_PINS_9;
  gpio_init_struct.gpio_pull = GPIO_PULL_UP;
  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE9, GPIO_MUX_1);
  gpio_init(GPIOA, &gpio_init_struct);

  /* receive pin */
  gpio_init_struct.gpio_drive_strength = GPIO_DRIVE_STRENGTH_STRONGER;
  gpio_init_struct.gpio_out_type = GPIO_OUTPUT_PUSH_PULL;
  gpio_init_struct.gpio_mode = GPIO_MODE_MUX;
  gpio_init_struct.gpio_pins = GPIO_PINS_10;
  gpio_init_struct.gpio_pull = GPIO_PULL_UP;
  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE10, GPIO_MUX_1);
  gpio_init(GPIOA, &gpio_init_struct);

  /* baud rate, data bits with the parity bit, stop bits */
  usart_init(USART1, 9600, USART_DATA_9BITS, USART_STOP_2_BIT);

  usart_transmitter_enable(USART1, TRUE);

  usart_receiver_enable(USART1, TRUE);

  usart_parity_selection_config(USART1, USART_PARITY_EVEN);

  /* add user code begin usart1_init 2 */

  /* add user code end usart1_init 2 */

  usart_enable(USART1, TRUE);

  /* add user code begin usart1_init 3 */

  /* add user code end usart1_init 3 */
}

)");
}

TEST_F(SerialPortCode, DirectionsFollowTheMode)
{
    const QString receiver = port({{"Mode", "MODE_RX"}});
    EXPECT_FALSE(receiver.contains("usart_transmitter_enable"));
    EXPECT_TRUE(receiver.contains("usart_receiver_enable(USART1, TRUE);"));
    const QString transmitter = port({{"Mode", "MODE_TX"}});
    EXPECT_TRUE(transmitter.contains("usart_transmitter_enable(USART1, TRUE);"));
    EXPECT_FALSE(transmitter.contains("usart_receiver_enable"));
}

TEST_F(SerialPortCode, FeaturesBringTheirLinesInTheOrderOfTheReferenceManual)
{
    request("USART1_RX");
    enableVector("USART1", "USART1_IRQHandler");
    const QString text = port({{"HwFlowCtl", "USART_HARDWARE_FLOW_CTS"},
                               {"PinsSwapping", "TRUE"},
                               {"VirtualMode", "VM_SMARTCARD"},
                               {"GuardTime", "7"},
                               {"SmartcardDivision", "9"},
                               {"SmartcardNACK", "TRUE"},
                               {"Clockenable", "TRUE"},
                               {"CLKPolarity", "USART_CLOCK_POLARITY_HIGH"},
                               {"CLKPhase", "USART_CLOCK_PHASE_2EDGE"},
                               {"Lastbitclockpulse", "USART_CLOCK_LAST_BIT_OUTPUT"},
                               {"Interrupt_ERR", "TRUE"},
                               {"Interrupt_RDBF", "FALSE"}});
    EXPECT_TRUE(text.contains(R"(  usart_parity_selection_config(USART1, USART_PARITY_EVEN);

  /* clock output */
  usart_clock_config(USART1, USART_CLOCK_POLARITY_HIGH, USART_CLOCK_PHASE_2EDGE, USART_CLOCK_LAST_BIT_OUTPUT);
  usart_clock_enable(USART1, TRUE);

  /* card clock, time between two characters, answer to a parity error */
  usart_irda_smartcard_division_set(USART1, 9);
  usart_smartcard_guard_time_set(USART1, 7);
  usart_smartcard_nack_set(USART1, TRUE);
  usart_smartcard_mode_enable(USART1, TRUE);

  usart_dma_receiver_enable(USART1, TRUE);

  usart_hardware_flow_control_set(USART1, USART_HARDWARE_FLOW_CTS);

  usart_transmit_receive_pin_swap(USART1, TRUE);

  usart_interrupt_enable(USART1, USART_ERR_INT, TRUE);

  /* USART1 raises interrupts; what they do is written into the handlers of zv32f421_int.c:
   *     --void USART1_IRQHandler(void)
   */

  /* add user code begin usart1_init 2 */)"))
        << qPrintable(text);
}

TEST_F(SerialPortCode, HandlerHasABranchForEachEventThatIsEnabled)
{
    set({{"Interrupt_RDBF", "TRUE"}, {"Interrupt_TDBE", "FALSE"}, {"Interrupt_ERR", "TRUE"}});
    const QString all = composed("ZV32F421", "int.c");
    QString text = handlers(all, *generator(ZV32F421, "USART1"));
    const QString handler = text.mid(text.indexOf("void USART1_IRQHandler"));
    const QString own = handler.left(handler.indexOf("\n}"));
    EXPECT_TRUE(own.contains("uint16_t usart1_rx_data;"));
    EXPECT_TRUE(own.contains("begin USART1_USART_RDBF_FLAG */"));
    EXPECT_TRUE(own.contains("begin USART1_USART_NERR_FLAG, USART_ROERR_FLAG or USART_FERR_FLAG */"));
    EXPECT_FALSE(own.contains("tx_data"));
    EXPECT_FALSE(own.contains("TDBE"));
    EXPECT_FALSE(own.contains("[#"));

    // A port that is off takes all its branches out, whatever its parameters say.
    text = handlers(all, *generator(ZV32F421, "USART1", false));
    EXPECT_FALSE(text.contains("USART1_RDBF_FLAG"));
    EXPECT_TRUE(text.contains("[#USART2_RDBF_FLAG]"));
}

TEST_F(SerialPortCode, MainTellsThatPrintfIsServed)
{
    const QString section = composed("ZV32F421", "main.c");
    set({{"UART_Printf", "TRUE"}});
    SectionedText text(toCode(section));
    ASSERT_TRUE(editFunction(*generator(ZV32F421, "USART2"), text, &DeclaredGenerator::GenerateCode_main_c));
    EXPECT_TRUE(toText(text.joined())
                    .contains("  /* printf is served from here on by usart2 */\n\n  /* init usart2. */\n"
                              "  lm_usart2_init();\n"));
    ASSERT_TRUE(editFunction(*generator(ZV32F421, "USART1", false), text, &DeclaredGenerator::GenerateCode_main_c));
    EXPECT_FALSE(toText(text.joined()).contains("lm_usart1_init"));
}

TEST_F(SerialPortCode, RemapGroupIsChosenOnFamiliesThatRemap)
{
    IPSignalGroupInfo standard, moved;
    standard.signalGroup = {{"USART1_TX", "PA9", 0, true}, {"USART1_RX", "PA10", 0, true}};
    moved.GMUX = "USART1_MUX_01";
    moved.signalGroup = {{"USART1_TX", "PB6", 0, true}, {"USART1_RX", "PB7", 0, true}};
    m_groups = {standard, moved};
    set(SerialPort);

    place("USART1_TX", "PB6");
    place("USART1_RX", "PB7", "GPIO_MODE_INPUT");
    const QString remapped = function("ZV32F403A_407", ZV32F403A, "USART1");
    EXPECT_TRUE(remapped.contains("gpio_pin_remap_config(USART1_MUX_01, TRUE);")) << qPrintable(remapped);
    EXPECT_FALSE(remapped.contains("gpio_pin_mux_config"));

    m_settings.clear();
    place("USART1_TX", "PA9");
    place("USART1_RX", "PA10", "GPIO_MODE_INPUT");
    EXPECT_FALSE(function("ZV32F403A_407", ZV32F403A, "USART1").contains("remap"));
}

TEST_F(PeripheralDesign, ConverterWritesOneLineForEachRank)
{
    place("ADC1_IN3", "PA3", "GPIO_MODE_ANALOG", "Analog");
    request("ADC1");
    set({{"SequenceMode", "TRUE"},
         {"RepeatMode", "FALSE"},
         {"DataAlign", "ADC_RIGHT_ALIGNMENT"},
         {"ResolutionSelect", "ADC_RESOLUTION_12B"},
         {"NbrOfOrdinarySequence", "3"},
         {"Channel_OrdinarySequence_1", "ADC_CHANNEL_3"},
         {"SamplingTime_OrdinarySequence_1", "ADC_SAMPLETIME_1_5"},
         {"Channel_OrdinarySequence_2", "ADC_CHANNEL_16"},
         {"SamplingTime_OrdinarySequence_2", "ADC_SAMPLETIME_239_5"},
         {"Channel_OrdinarySequence_3", "ADC_CHANNEL_3"},
         {"SamplingTime_OrdinarySequence_3", "ADC_SAMPLETIME_7_5"},
         {"OrdinaryTriggerSource", "ADC12_ORDINARY_TRIG_TMR1CH1"},
         {"PreemptConversions", "TRUE"},
         {"NbrOfPreemptSequence", "2"},
         {"Channel_PreemptSequence_1", "ADC_CHANNEL_3"},
         {"SamplingTime_PreemptSequence_1", "ADC_SAMPLETIME_1_5"},
         {"PreemptOffset_1", "12"},
         {"Channel_PreemptSequence_2", "ADC_CHANNEL_16"},
         {"SamplingTime_PreemptSequence_2", "ADC_SAMPLETIME_1_5"},
         {"PreemptOffset_2", "0"},
         {"PreemptAutoMode", "TRUE"},
         {"TemperatureVINTRV", "TRUE"},
         {"VoltageMonitor", "ADC_VMONITOR_NONE"}});
    const QString text = function("ZV32F421", ZV32F421, "ADC1");
    for (const char *piece : {R"(  adc_ordinary_channel_set(ADC1, ADC_CHANNEL_3, 1, ADC_SAMPLETIME_1_5);
  adc_ordinary_channel_set(ADC1, ADC_CHANNEL_16, 2, ADC_SAMPLETIME_239_5);
  adc_ordinary_channel_set(ADC1, ADC_CHANNEL_3, 3, ADC_SAMPLETIME_7_5);

  adc_ordinary_conversion_trigger_set(ADC1, ADC12_ORDINARY_TRIG_TMR1CH1, TRUE);

  adc_dma_mode_enable(ADC1, TRUE);
)",
                              R"(  adc_preempt_channel_length_set(ADC1, 2);
  adc_preempt_channel_set(ADC1, ADC_CHANNEL_3, 1, ADC_SAMPLETIME_1_5);
  adc_preempt_channel_set(ADC1, ADC_CHANNEL_16, 2, ADC_SAMPLETIME_1_5);

  adc_preempt_offset_value_set(ADC1, ADC_PREEMPT_CHANNEL_1, 12);
  adc_preempt_offset_value_set(ADC1, ADC_PREEMPT_CHANNEL_2, 0);

  adc_preempt_auto_mode_enable(ADC1, TRUE);

  /* add user code begin adc1_init 2 */)",
                              "  gpio_init_type gpio_init_struct;\n  adc_base_config_type adc_base_struct;\n",
                              "  adc_base_struct.ordinary_channel_length = 3;\n",
                              "  /* channel 3 */\n  gpio_init_struct.gpio_mode = GPIO_MODE_ANALOG;\n"
                              "  gpio_init_struct.gpio_pins = GPIO_PINS_3;\n",
                              "  adc_tempersensor_vintrv_enable(TRUE);\n"})
        EXPECT_TRUE(text.contains(piece)) << piece << "\n---\n" << qPrintable(text);
    EXPECT_EQ(text.count("gpio_init("), 1);
    EXPECT_FALSE(text.contains("monitor_threshold"));
    EXPECT_FALSE(text.contains("preempt_conversion_trigger"));
}

TEST_F(PeripheralDesign, LineIsConnectedWithThePortOfItsPin)
{
    place("EXINT4", "PB4", "GPIO_MODE_INPUT", "Input");
    set({{"InterruptEvent_EXINT4", "EXINT_LINE_EVENT"},
         {"Polarity_EXINT4", "EXINT_TRIGGER_BOTH_EDGE"},
         {"InterruptEvent_EXINT17", "EXINT_LINE_INTERRUPT"},
         {"Polarity_EXINT17", "EXINT_TRIGGER_RISING_EDGE"}});
    const QString text = function("ZV32F421", ZV32F421, "EXINT");
    EXPECT_TRUE(text.contains(R"(  scfg_exint_line_config(SCFG_PORT_SOURCE_GPIOB, SCFG_PINS_SOURCE4);

  /* line 4 */
  exint_init_struct.line_mode = EXINT_LINE_EVENT;
  exint_init_struct.line_select = EXINT_LINE_4;
  exint_init_struct.line_polarity = EXINT_TRIGGER_BOTH_EDGE;
)")) << qPrintable(text);
    EXPECT_EQ(text.count("exint_init(&"), 2);

    const QString handled = handlers(composed("ZV32F421", "int.c"), *generator(ZV32F421, "EXINT"));
    EXPECT_FALSE(handled.contains("EXINT_LINE_4)")); // an event has no handler
    EXPECT_EQ(handled.count("exint_interrupt_flag_get(EXINT_LINE_17)"), 1);
}

TEST_F(PeripheralDesign, RealTimeClockOpensTheLinesOfItsInterrupts)
{
    set({{"DivA", "127"}, {"DivB", "255"}, {"WakeUpClock", "ERTC_WAT_CLK_CK_B_16BITS"}, {"Interrupt_WAT", "TRUE"}});
    const QString text = function("ZV32F421", ZV32F421, "ERTC");
    EXPECT_TRUE(
        text.contains("  exint_init_struct.line_enable = TRUE;\n  exint_init_struct.line_select = EXINT_LINE_20;\n"
                      "  exint_init(&exint_init_struct);\n"))
        << qPrintable(text);
    EXPECT_EQ(text.count("exint_init(&"), 1);

    // Otherwise the handler would be called again and again.
    const QString handled = handlers(composed("ZV32F421", "int.c"), *generator(ZV32F421, "ERTC"));
    EXPECT_TRUE(handled.contains("    ertc_flag_clear(ERTC_WATF_FLAG);\n    exint_flag_clear(EXINT_LINE_20);\n"));
    EXPECT_FALSE(handled.contains("ERTC_ALAF_FLAG"));
}

TEST_F(PeripheralDesign, SignalsWithoutTheInstanceInTheirNameFindTheirPins)
{
    place("IR_OUT", "PB9");
    place("WKUP2", "PC13", "GPIO_MODE_INPUT", "Input");
    set({{"IR_Source", "SCFG_IR_SOURCE_USART1"}, {"IR_Polarity", "SCFG_IR_POLARITY_REVERSE"}, {"WakeUpPin_2", "TRUE"}});
    const QString infrared = function("ZV32F421", ZV32F421, "IRTMR");
    EXPECT_TRUE(infrared.contains("gpio_pin_mux_config(GPIOB, GPIO_PINS_SOURCE9, GPIO_MUX_1);"));
    EXPECT_TRUE(infrared.contains("scfg_infrared_config(SCFG_IR_SOURCE_USART1, SCFG_IR_POLARITY_REVERSE);"));
    const QString power = function("ZV32F421", ZV32F421, "PWC");
    EXPECT_TRUE(power.contains("gpio_init(GPIOC, &gpio_init_struct);"));
    EXPECT_TRUE(power.contains("pwc_wakeup_pin_enable(PWC_WAKEUP_PIN_2, TRUE);"));
    EXPECT_FALSE(power.contains("PIN_1"));
    EXPECT_FALSE(power.contains("pvm"));
}

TEST_F(PeripheralDesign, ComputedArgumentsFollowTheirParameters)
{
    const auto contains = [this](const QString &folder, ZV32MCUSERIALS series, const QString &instance,
                                 const QMap<QString, QString> &values, const QString &line) {
        m_parameters.clear();
        set(values);
        const QString text = function(folder, series, instance);
        EXPECT_TRUE(text.contains(line)) << qPrintable(line + "\n---\n" + text);
    };
    // fewer than no masked pulses are 512 more and the rest masked
    contains("ZV32F421", ZV32F421, "ERTC", {{"SmoothCalibration", "TRUE"}, {"CalibrationPulses", "-1"}},
             "ertc_smooth_calibration_config(ERTC_SMOOTH_CAL_CLK_ADD_512, 511);");
    contains("ZV32F421", ZV32F421, "ERTC", {{"SmoothCalibration", "TRUE"}, {"CalibrationPulses", "511"}},
             "ertc_smooth_calibration_config(ERTC_SMOOTH_CAL_CLK_ADD_0, 511);");
    contains("ZV32F421", ZV32F421, "ERTC",
             {{"AlarmMask_A", "ERTC_ALARM_MASK_NONE"},
              {"AlarmDateMode_A", "ERTC_SLECT_WEEK"},
              {"AlarmWeek_A", "5"},
              {"AlarmHour_A", "11"},
              {"AlarmAMPM_A", "ERTC_PM"}},
             "ertc_alarm_set(5, 11, 0, 0, ERTC_PM);");
    contains("ZV32F403A_407", ZV32F403A, "RTC", {{"AlarmSeconds", "4294967295"}},
             "rtc_alarm_set(rtc_counter_get() + 4294967295);");
    contains("ZV32F421", ZV32F421, "SPI1", {{"CSMode", "SPI_CS_SOFTWARE_MODE"}, {"MasterSlaveMode", "SPI_MODE_MASTER"}},
             "spi_software_cs_internal_level_set(SPI1, SPI_SWCS_INTERNAL_LEVEL_HIGH);");
    contains("ZV32F421", ZV32F421, "SPI1", {{"CSMode", "SPI_CS_SOFTWARE_MODE"}, {"MasterSlaveMode", "SPI_MODE_SLAVE"}},
             "spi_software_cs_internal_level_set(SPI1, SPI_SWCS_INTERNAL_LEVEL_LOW);");
    // in standard mode there is no ratio to choose
    contains("ZV32F421", ZV32F421, "I2C1", {{"ClockSpeed", "50000"}}, "i2c_init(I2C1, I2C_FSMODE_DUTY_2_1, 50000);");
    // an audio interface writes the registers of its serial interface
    contains("ZV32F421", ZV32F421, "I2S2", {{"Interrupt_ERR", "TRUE"}},
             "spi_i2s_interrupt_enable(SPI2, SPI_I2S_ERROR_INT, TRUE);");
}

TEST_F(PeripheralDesign, DebugPortIsWrittenOnlyWhereItGivesPinsBack)
{
    set({{"DebugPort", "SWJTAG_MUX_000"}});
    EXPECT_EQ(function("ZV32F403A_407", ZV32F403A, "DEBUG"), "");
    EXPECT_FALSE(generator(ZV32F403A, "DEBUG")->HaveCode());
    EXPECT_TRUE(generator(ZV32F403A, "DEBUG", false)->HaveCode()); // all pins are given back
    m_parameters.clear();
    set({{"DebugPort", "SWJTAG_MUX_010"}});
    EXPECT_TRUE(function("ZV32F403A_407", ZV32F403A, "DEBUG").contains("gpio_pin_remap_config(SWJTAG_MUX_010, TRUE);"));
    m_parameters.clear(); // serial wire alone: no function, and none is missed
    SectionedText none("text\n");
    EXPECT_TRUE(editFunction(*generator(ZV32F421, "DEBUG"), none, &DeclaredGenerator::GenerateCode_lm_config_c));
    EXPECT_EQ(none.joined(), "text\n");
}

TEST_F(PeripheralDesign, TemplateOutOfStepIsRefusedAndLeftAsItWas)
{
    set(SerialPort);
    QString before = composed("ZV32F421", "lm_config.c");
    before.replace("usart_parity_selection_config(USART1, ", "usart_parity(USART1, ");
    SectionedText text(toCode(before));
    EXPECT_FALSE(editFunction(*generator(ZV32F421, "USART1"), text, &DeclaredGenerator::GenerateCode_lm_config_c));
    EXPECT_EQ(toText(text.joined()), before);
    EXPECT_EQ(generatorParts(ZV32F421, "NOTHING7").questions, nullptr);
}

} // namespace
