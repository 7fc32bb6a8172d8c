#include "GenerateCode/Generatecode_IP.h"
#include "GenerateCode/SectionedText.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

using namespace ChipLoom;

namespace {

const char *const PinBlock = "[#tx pin]\n"
                             "  gpio_init_struct.gpio_drive_strength = GPIO_DRIVE_STRENGTH_MODERATE;\n"
                             "  gpio_init_struct.gpio_out_type = GPIO_OUTPUT_PUSH_PULL;\n"
                             "  gpio_init_struct.gpio_mode = GPIO_MODE_MUX;\n"
                             "  gpio_init_struct.gpio_pins = GPIO_PINS_0;\n"
                             "  gpio_init_struct.gpio_pull = GPIO_PULL_NONE;\n"
                             "  gpio_init(GPIOA, &gpio_init_struct);\n"
                             "  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE0, GPIO_MUX_0);\n"
                             "[/#tx pin]\n\nrest\n";

class PinBlocks : public testing::Test
{
protected:
    /// Lets a generator write the only section of a text; a failure leaves the text alone.
    template <typename Edit> static bool edit(std::string &text, Edit edit)
    {
        SectionedText cut(text);
        const QString name = cut.names().first();
        std::string written;
        if (!edit(*cut.keptBody(name), written))
            return false;
        cut.replaceSection(name, written);
        text = cut.joined();
        return true;
    }

    void place(const QString &signal, const QString &pin, const QString &ioMode = {}, const QString &label = {})
    {
        auto setting = std::make_unique<SignalsGPIOSetting>();
        setting->signalName = signal;
        setting->signalInPinName = pin;
        setting->InPinName = pin;
        setting->signalIOMode = ioMode;
        setting->signalUserLabel = label;
        setting->signalUserLabel_EXT = label;
        RefParameter mode;
        mode.Comment_EN = "GPIO mode";
        mode.CurrentValue = "GPIO_MODE_MUX";
        RefParameter pull;
        pull.Comment_EN = "Pull type";
        pull.CurrentValue = "GPIO_PULL_UP";
        setting->signalPinGPIOInfoList = {mode, pull};
        m_settings.push_back(std::move(setting));
    }

    GenerateCode_IP generator(ZV32MCUSERIALS series, const QString &name)
    {
        GenerateCode_IP ip(series, name);
        QList<SignalsGPIOSetting *> all;
        for (const auto &setting : m_settings)
            all.append(setting.get());
        m_pinA9.Name = "PA9";
        m_pinA9.GPIO_x = "GPIOA";
        m_pinA9.GPIO_Pin_x = "GPIO_PINS_9";
        m_pinA9.GPIO_PinSource_x = "GPIO_PINS_SOURCE9";
        m_pinA9.pinSignalMuxInfoList = {{"USART1_TX", "GPIO_MUX_1"}};
        ip.SetGPIOPinDefineInfo({&m_pinA9});
        ip.SetIPSignalGroupInfoList(m_groups);
        ip.SetAllSignalsGPIOSettingList(all);
        return ip;
    }

    std::vector<std::unique_ptr<SignalsGPIOSetting>> m_settings;
    GPIO_Pin_Define_Info m_pinA9;
    QList<IPSignalGroupInfo> m_groups;
};

TEST_F(PinBlocks, TakeTheValuesOfThePin)
{
    place("USART1_TX", "PA9");
    std::string text = PinBlock;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F421, "USART1").GenerateCode_SignalPIN("USART1_TX", block, written);
    }));
    EXPECT_EQ(text, "  gpio_init_struct.gpio_drive_strength = GPIO_DRIVE_STRENGTH_MODERATE;\n"
                    "  gpio_init_struct.gpio_out_type = GPIO_OUTPUT_PUSH_PULL;\n"
                    "  gpio_init_struct.gpio_mode = GPIO_MODE_MUX;\n"
                    "  gpio_init_struct.gpio_pins = GPIO_PINS_9;\n"
                    "  gpio_init_struct.gpio_pull = GPIO_PULL_UP;\n"
                    "  gpio_init(GPIOA, &gpio_init_struct);\n"
                    "  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE9, GPIO_MUX_1);\n"
                    "\nrest\n");
}

TEST_F(PinBlocks, AnUnplacedSignalLeavesNoTraceAndALabelNamesThePin)
{
    std::string text = PinBlock;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F421, "USART1").GenerateCode_SignalPIN("USART1_TX", block, written);
    }));
    EXPECT_EQ(text, "rest\n");

    place("USART1_TX", "PA9", {}, "CONSOLE");
    text = PinBlock;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F421, "USART1").GenerateCode_SignalPIN("USART1_TX", block, written);
    }));
    EXPECT_TRUE(toText(text).contains("gpio_pins = CONSOLE_PIN;"));
    EXPECT_TRUE(toText(text).contains("gpio_init(CONSOLE_GPIO_PORT, &gpio_init_struct);"));
}

TEST_F(PinBlocks, AMultiplexerLineIsAskedForOnlyWherePinsHaveOne)
{
    place("USART1_TX", "PA9");
    std::string withoutMux = PinBlock;
    ASSERT_TRUE(replaceAll(withoutMux, "  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE0, GPIO_MUX_0);\n", {}));
    std::string text = withoutMux;
    EXPECT_FALSE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F421, "USART1").GenerateCode_SignalPIN("USART1_TX", block, written);
    }));
    EXPECT_EQ(text, withoutMux) << "a failure leaves the text alone";
    EXPECT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F407, "USART1").GenerateCode_SignalPIN("USART1_TX", block, written);
    }));
}

TEST_F(PinBlocks, TheFirstGroupThatHoldsAllPinsAndNoTimerOutputIsSelected)
{
    const std::string gmux = "[#gpio gmux]\n  gpio_pin_remap_config(SAMPLE, TRUE);\n[/#gpio gmux]\n";
    IPSignalGroupInfo low{"SPI1", 0, {}, {{"SPI1_SCK", "PA5", 5, true}, {"SPI1_MOSI", "PA7", 7, true}}};
    IPSignalGroupInfo timer{
        "SPI1", 1, "SPI1_GMUX_0001", {{"SPI1_SCK", "PB3", 3, true}, {"SPI1_NSS", "PA15", 8, false}}};
    IPSignalGroupInfo high{"SPI1", 2, "SPI1_GMUX_0010", {{"SPI1_SCK", "PB3", 3, true}}};
    m_groups = {low, timer, high};

    std::string text = gmux;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F407, "SPI1").GenerateCode_GPIOGMUX({"SPI1_SCK"}, block, written);
    }));
    EXPECT_EQ(text, "") << "nothing placed selects no group";

    place("SPI1_SCK", "PB3");
    text = gmux;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F407, "SPI1").GenerateCode_GPIOGMUX({"SPI1_SCK"}, block, written);
    }));
    EXPECT_EQ(text, "  gpio_pin_remap_config(SPI1_GMUX_0001, TRUE);\n\n");

    place("TMR2_CH1", "PA15", "MuxOutputPushPull");
    text = gmux;
    ASSERT_TRUE(edit(text, [&](const TextCut &block, std::string &written) {
        return generator(ZV32F407, "SPI1").GenerateCode_GPIOGMUX({"SPI1_SCK"}, block, written);
    }));
    EXPECT_EQ(text, "  gpio_pin_remap_config(SPI1_GMUX_0010, TRUE);\n\n");
}

TEST_F(PinBlocks, InterruptRemarksNameTheHandlersOfTheSharedVector)
{
    MCUNVICSetting vector;
    vector.enabledFlag = true;
    vector.relatedIPNameList = QStringList{"SPI2"};
    vector.HandlerName = "SPI2_I2S2_IRQHandler";
    GenerateCode_IP ip = generator(ZV32F421, "I2S2");
    ip.SetAllNVICSettingList({&vector});
    const std::string body = "  /**\n   * in these handlers:\n  */\n";
    std::string text;
    ip.GenerateCode_Peripheral_interrupt_remarks("I2S2", body, text);
    EXPECT_EQ(text, "  /**\n   * in these handlers:\n   *     --void SPI2_I2S2_IRQHandler(void)\n   */\n\n");
}

TEST(Numbers, ReadAndWriteInTheirBase)
{
    bool ok = false;
    EXPECT_EQ(GenerateCode_IP::QStringToUInt(ok, "0xff"), 255u);
    EXPECT_TRUE(ok);
    EXPECT_EQ(GenerateCode_IP::QStringToInt(ok, "-12"), -12);
    GenerateCode_IP::QStringToUInt(ok, "ff");
    EXPECT_FALSE(ok);
    EXPECT_EQ(GenerateCode_IP::UIntToQString(255, CURRENTVALUETYPE_HEX), "0xFF");
    EXPECT_EQ(GenerateCode_IP::UIntToQString(255, CURRENTVALUETYPE_DEC), "255");
}

} // namespace
