#include "GenerateCode/ClockCode.h"
#include "GenerationFixture.h"

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

const QString Source = "src/zv32f421_lm_config.c";

class ClockGeneration : public GenerationFixture
{
};

TEST_F(ClockGeneration, FollowsTheClockTree)
{
    openSmall();
    struct Case
    {
        const char *sclk;
        bool steps;
        const char *wait;
    };
    for (const Case &one : {Case{"108", false, "3"}, Case{"112", true, "3"}, Case{"96", false, "2"}}) {
        set({QString("clock/sclk=") + one.sclk});
        ASSERT_TRUE(generate().ok);
        const QString source = text(Source);
        EXPECT_EQ(source.count("crm_auto_step_mode_enable("), one.steps ? 2 : 0) << one.sclk;
        EXPECT_TRUE(source.contains(QString("flash_psr_set(FLASH_WAIT_CYCLE_%1);").arg(one.wait))) << one.sclk;
        EXPECT_TRUE(source.contains(QString("- sclk                = ") + one.sclk + "000000\n")) << one.sclk;
    }
    const QString failure = "/* add user code begin CRM_CLOCK_FAILURE_INT_FLAG */\n";
    EXPECT_FALSE(text("src/zv32f421_int.c").contains(failure));

    set({"mode/CRM/HEXT=HEXT-Bypass", "clock/hext=12", "clock/sclkselect=hext", "mode/CRM/Clock-out=TRUE",
         "gpio/PA8/GPIO_PullType=GPIO_PULL_UP"});
    ASSERT_TRUE(generate().ok);
    const QString source = text(Source);
    EXPECT_TRUE(source.contains("crm_hext_bypass(TRUE);"));
    EXPECT_TRUE(source.contains("crm_sysclk_switch(CRM_SCLK_HEXT);"));
    EXPECT_FALSE(source.contains("crm_pll_config"));
    EXPECT_TRUE(source.contains("void lm_clkout_init(void)"));
    EXPECT_TRUE(source.contains("  gpio_init_struct.gpio_pull = GPIO_PULL_UP;\n"
                                "  gpio_pin_mux_config(GPIOA, GPIO_PINS_SOURCE8, GPIO_MUX_0);\n"
                                "  gpio_init(GPIOA, &gpio_init_struct);"));
    EXPECT_TRUE(text("src/main.c").contains("lm_clkout_init();"));
    EXPECT_TRUE(text("inc/zv32f421_conf.h").contains("((uint32_t)12000000)"));
    EXPECT_TRUE(text("src/zv32f421_int.c").contains(failure));
}

TEST_F(ClockGeneration, PutsTwoClocksOnTheirPinsAndRaisesTheVoltageWithTheClock)
{
    open("ZV32F437", "ZV32F437ZMT7", "LQFP144");
    const QString path = "src/zv32f435_437_lm_config.c";
    ASSERT_TRUE(generate().ok);
    EXPECT_FALSE(text(path).contains("clkout"));
    EXPECT_TRUE(text(path).contains("pwc_ldo_output_voltage_set(PWC_LDO_OUTPUT_1V3);"));
    EXPECT_TRUE(text(path).contains("crm_pll_config(CRM_PLL_SOURCE_HICK, 144, 1, CRM_PLL_FR_4);"));

    set({"pin/PE4=CRM_CLKOUT1", "mode/CRM/Clock-out2=TRUE", "mode/CRM/LEXT=LEXT-Bypass", "clock/clkout1=LEXT",
         "clock/clkout1div1=5", "clock/clkout1div2=64", "clock/clkout2=LICK", "clock/clkout2div2=2", "clock/sclk=144"});
    ASSERT_TRUE(generate().ok);
    const QString source = text(path);
    const int second = source.indexOf("void lm_clkout2_init(void)");
    const QString one = source.left(second), two = source.mid(second);
    EXPECT_TRUE(one.contains("void lm_clkout1_init(void)"));
    EXPECT_TRUE(one.contains("gpio_pin_mux_config(GPIOE, GPIO_PINS_SOURCE4, GPIO_MUX_0);"));
    EXPECT_TRUE(one.contains("crm_clock_out1_set(CRM_CLKOUT1_LEXT);"));
    EXPECT_TRUE(one.contains("crm_clkout1_div_set(CRM_CLKOUT_DIV1_5, CRM_CLKOUT_DIV2_64);"));
    EXPECT_TRUE(two.contains("gpio_init(GPIOC, &gpio_init_struct);"));
    EXPECT_TRUE(two.contains("crm_clock_out2_set(CRM_CLKOUT2_LICK);"));
    EXPECT_TRUE(two.contains("crm_clkout2_div_set(CRM_CLKOUT_DIV1_1, CRM_CLKOUT_DIV2_2);"));
    EXPECT_TRUE(source.contains("crm_clock_source_enable(CRM_CLOCK_SOURCE_LICK, TRUE);")) << "only the output needs it";
    EXPECT_TRUE(source.contains("pwc_ldo_output_voltage_set(PWC_LDO_OUTPUT_1V1);"));
    EXPECT_TRUE(text("inc/zv32f435_437_lm_config.h").contains("void lm_clkout2_init(void);"));
    EXPECT_TRUE(text("src/main.c").contains("  lm_clkout1_init();\n"));

    set({"pin/PE4=", "mode/CRM/Clock-out2=FALSE"});
    ASSERT_TRUE(generate().ok);
    EXPECT_FALSE(text(path).contains("clkout"));
}

TEST_F(ClockGeneration, GivesPadsExtraDriveAndTheRealTimeClockADividedCrystal)
{
    open("ZV32F435", "ZV32F435VGT7", "LQFP100");
    set({"mode/SCFG/PB10 ultra=TRUE", "mode/CRM/HEXT=HEXT-External-Oscillator", "mode/ERTC/Activate Clock Source=TRUE",
         "clock/rtcsel=2", "clock/rtcdiv=25"});
    ASSERT_TRUE(generate().ok);
    const QString source = text("src/zv32f435_437_lm_config.c");
    EXPECT_EQ(source.count("scfg_pins_ultra_driven_enable("), 1);
    EXPECT_TRUE(source.contains("scfg_pins_ultra_driven_enable(SCFG_ULTRA_DRIVEN_PB10, TRUE);"));
    EXPECT_TRUE(source.contains("crm_ertc_clock_select(CRM_ERTC_CLOCK_HEXT_DIV_25);"));
    const DesignChange noSuchPad = DesignChange::fromSetting("mode/SCFG/PF14 ultra=TRUE").value();
    EXPECT_FALSE(design.apply(noSuchPad).accepted()) << "the package has no PF14";
}

TEST(ClockCodeTest, NeedsMoreWaitCyclesAndVoltageAboveEachLimitOnly)
{
    GenerationInput input;
    ZV32ConfigCLK clock(ZV32F403A);
    const ClockCode code(clock, input);
    for (const auto &[sclk, cycles] :
         {std::pair(32.0, 0), std::pair(32.1, 1), std::pair(160.0, 4), std::pair(216.0, 6), std::pair(240.0, 7)}) {
        clock.Set_SYSCLKValue(sclk);
        EXPECT_EQ(code.GetOutPutString_OscInitType_FlashPsr(), QString("FLASH_WAIT_CYCLE_%1").arg(cycles)) << sclk;
    }
    for (const auto &[sclk, voltage] : {std::pair(144.0, "1V1"), std::pair(144.1, "1V2"), std::pair(240.0, "1V2"),
                                        std::pair(240.1, "1V3"), std::pair(288.0, "1V3")}) {
        clock.Set_SYSCLKValue(sclk);
        EXPECT_EQ(code.GetOutPutString_PWC_LDO_OUTPUT(), QString("PWC_LDO_OUTPUT_") + voltage) << sclk;
    }
}

} // namespace
