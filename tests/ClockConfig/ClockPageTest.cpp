#include "ClockConfig/ClockTexts.h"
#include "ClockPageFixture.h"

#include <random>

namespace ChipLoom::Test {

namespace {

TEST(ClockPage, EverySeriesStartsInRangeAndPassesItsCheck)
{
    for (const ClockSeries &series : allClockSeries()) {
        SCOPED_TRACE(nameOf(series.code));
        Page page(series.code);
        EXPECT_TRUE(page.state.problems().empty());
        EXPECT_FALSE(page.state.hasError());
        const double sclk = page.state.Get_SYSCLK();
        EXPECT_TRUE(page.state.GenerateCodeCheck());
        EXPECT_EQ(page.prompt.takeTexts(), QStringList());
        EXPECT_EQ(page.state.Get_SYSCLK(), sclk);
        expectConsistent(page.state);
    }
}

TEST(ClockPage, RandomEditsNeverLeaveValuesAndControlsApart)
{
    std::mt19937 random(4);
    const QStringList texts{"8", "12", "25", "4", "26", "0", "", "x", "120", "96.5", "/3", "*300", "*20", "7.9", "1e9"};
    for (const ClockSeries &series : allClockSeries()) {
        SCOPED_TRACE(nameOf(series.code));
        Page page(series.code);
        page.state.Set_hext_enable_flag(true, false);
        page.state.Set_USB_Flag(true);
        page.state.Set_ADC1_Flag(true);
        bool sclkTextRefused = false;
        for (int step = 0; step < 400; ++step) {
            const ClockField field = allClockFields()[random() % allClockFields().size()];
            page.prompt.answers = {int(random() % 2), int(random() % 2)};
            ClockChange change{field, 0.0, texts[int(random() % unsigned(texts.size()))], Change::Step::Accept};
            const std::vector<ClockOption> options = clockOptions(page.clock(), field);
            if (!options.empty())
                change.value = options[random() % options.size()].value;
            const ClockOutcome outcome = page.state.apply(change);
            if (!hasClockField(series, field)) {
                EXPECT_EQ(outcome.refusal, ClockRefusal::NotOnThisSeries);
            }
            if (outcome.ok())
                sclkTextRefused = false;
            else if (field == ClockField::Sclk)
                sclkTextRefused = true; // and stays in the box until something is calculated
            expectConsistent(page.state, sclkTextRefused);
            if (testing::Test::HasFailure()) {
                ADD_FAILURE() << "step " << step << " " << clockFieldName(series, field).toStdString() << " "
                              << change.value << " " << change.text.toStdString();
                return;
            }
        }
    }
}

TEST(ClockPage, GeneratorsAskForTheDriversLiterals)
{
    Scheduler scheduler;
    ScriptedPrompt prompt{ScriptedPrompt::Last};
    ZV32PLLConfig config(scheduler, prompt);
    EXPECT_EQ(config.GenerateCode_Get_USB_Div(), "");
    EXPECT_EQ(config.GenerateCode_Get_Hext_Value(), 0);

    config.newConfig(ZV32F403A);
    EXPECT_EQ(config.GenerateCode_Get_ERTC_ClockSource(), "CRM_RTC_CLOCK_LICK");
    EXPECT_EQ(config.GenerateCode_Get_USB_ClockSource(), "CRM_USB_CLOCK_SOURCE_HICK");
    EXPECT_EQ(config.GenerateCode_Get_Hext_Value(), 8);
    config.SetUSBFSFlag(true);
    ASSERT_EQ(config.getMCUPLL()->apply(Change::choose(ClockField::HickToUsb, HICK_TO_USB_DISABLE)).refusal,
              ClockRefusal::None);
    ASSERT_EQ(config.getMCUPLL()->apply(Change::choose(ClockField::UsbDiv, 1.5)).refusal, ClockRefusal::None);
    EXPECT_EQ(config.GenerateCode_Get_USB_ClockSource(), "CRM_USB_CLOCK_SOURCE_PLL");
    EXPECT_EQ(config.GenerateCode_Get_USB_Div(), "CRM_USB_DIV_1_5");

    config.newConfig(ZV32F455);
    EXPECT_EQ(config.GenerateCode_Get_ERTC_ClockSource(), "CRM_ERTC_CLOCK_LICK");
    EXPECT_EQ(config.GenerateCode_Get_CAN1_ClockSource(), "CRM_CAN_CLOCK_SOURCE_PCLK");
    EXPECT_EQ(config.GenerateCode_Get_USB_Div(), "CRM_PLL_FU_16");
    EXPECT_EQ(config.GenerateCode_Get_I2SF5_ClockSource(), "CRM_I2SF5_CLOCK_SOURCE_PLLP");
}

TEST(ClockPage, TypedTextsWaitForReturn)
{
    Page page(ZV32F435);
    page.state.apply(Change::type(ClockField::Sclk, "144"));
    EXPECT_EQ(page.state.Get_SYSCLK(), 288);
    EXPECT_EQ(page.state.text(ClockField::Sclk), "144");
    EXPECT_EQ(page.enter(ClockField::Sclk, "144"), ClockRefusal::None);
    EXPECT_EQ(page.state.Get_SYSCLK(), 144);
    EXPECT_EQ(page.state.text(ClockField::PllMs), "/1");
    EXPECT_EQ(page.state.text(ClockField::PllNs), "*144");

    EXPECT_EQ(page.enter(ClockField::Sclk, "289"), ClockRefusal::OutOfRange);
    EXPECT_EQ(page.enter(ClockField::Sclk, "3.9"), ClockRefusal::OutOfRange);
    EXPECT_EQ(page.prompt.takeTexts(), QStringList({"Error: sclk input error!", "Error: sclk input error!"}));
    EXPECT_TRUE(page.state.hasError());
    EXPECT_EQ(page.state.Get_SYSCLK(), 144);
    EXPECT_FALSE(page.state.GenerateCodeCheck()) << "the refused text still stands in the box";
    EXPECT_EQ(page.prompt.takeTexts(), QStringList({"Error: sclk input error!"}));

    EXPECT_EQ(page.choose(ClockField::SclkSelect, SYSCLK_HICK), ClockRefusal::None);
    EXPECT_EQ(page.enter(ClockField::Sclk, "100"), ClockRefusal::SclkNotOnPll);

    Page noLower(ZV32F423);
    EXPECT_EQ(noLower.enter(ClockField::Sclk, "3"), ClockRefusal::None);
}

TEST(ClockPage, AMissedTargetShowsItsErrorAndOffersOthers)
{
    Page page(ZV32F413); // whole multiples of 4 MHz
    page.enter(ClockField::Sclk, "102");
    ASSERT_TRUE(page.state.sclkErrorPpm());
    EXPECT_NEAR(*page.state.sclkErrorPpm(), 2e6 / 102, 1e-6);
    const std::vector<ClockSolution> solutions = page.state.solutions(3);
    ASSERT_EQ(solutions.size(), 3u);
    EXPECT_EQ(solutions[0].clock.Get_SYSCLKValue(), 104) << "what Return took";
    EXPECT_EQ(solutions[1].clock.Get_SYSCLKValue(), 100);
    page.state.applyPllFields(solutions[1].clock);
    EXPECT_EQ(page.state.Get_SYSCLK(), 100);
    EXPECT_EQ(page.state.text(ClockField::Sclk), "100.000");
    EXPECT_FALSE(page.state.sclkErrorPpm()) << "chosen, and no longer what was typed";
    page.enter(ClockField::Sclk, "104");
    EXPECT_FALSE(page.state.sclkErrorPpm());
}

TEST(ClockPage, MsAndNsAreAdjustedOnlyWhenAsked)
{
    const QString msText = "Warning: pll_ms input error, is it adjusted automatically?\n"
                           "The following condition must be met: \n2MHz <= pll_input / pll_ms <= 16MHz";
    Page page(ZV32F435); // PLL input 8 MHz
    page.prompt.answers = {1};
    EXPECT_EQ(page.enter(ClockField::PllMs, "/9"), ClockRefusal::NotAdjusted);
    EXPECT_EQ(page.prompt.takeTexts(), QStringList({msText}));
    EXPECT_EQ(page.clock().Get_PLL_MS(), 1);
    EXPECT_EQ(page.state.text(ClockField::PllMs), "/9");

    page.prompt.answers = {0, 0};
    EXPECT_EQ(page.enter(ClockField::PllMs, "/9"), ClockRefusal::None);
    EXPECT_EQ(page.clock().Get_PLL_MS(), 4);
    EXPECT_EQ(page.clock().Get_PLL_NS(), 250) << "the VCO of 288 MHz is raised to 500";
    EXPECT_EQ(page.prompt.takeTexts(),
              QStringList({msText, "Warning: pll_ns input error, is it adjusted automatically?\n\n"
                                   "The following condition must be met: \n"
                                   "500MHz <= pll_input * pll_ns / pll_ms <= 1200MHz"}));
    EXPECT_EQ(page.enter(ClockField::PllMs, "16"), ClockRefusal::OutOfRange);
    EXPECT_EQ(page.enter(ClockField::PllNs, "*501"), ClockRefusal::OutOfRange);
    EXPECT_EQ(page.prompt.takeTexts(), QStringList({"Error: pll_ms input error!", "Error: pll_ns input error!"}));
    EXPECT_TRUE(page.state.hasError()) << "the refused texts still stand in their boxes";

    // The signs need not be typed.
    Page plain(ZV32F435);
    EXPECT_EQ(plain.enter(ClockField::PllMs, "1"), ClockRefusal::None);
    EXPECT_EQ(plain.enter(ClockField::PllNs, "100"), ClockRefusal::None);
    EXPECT_EQ(plain.state.text(ClockField::PllMs), "/1");
    EXPECT_EQ(plain.state.text(ClockField::PllNs), "*100");
    plain.state.apply(Change::type(ClockField::PllNs, "90"));
    EXPECT_TRUE(plain.state.problems().empty());
    plain.state.apply(Change::type(ClockField::PllNs, "5000"));
    EXPECT_EQ(plain.state.problems().size(), 1u);
}

TEST(ClockPage, HextFollowsItsPins)
{
    Page page(ZV32F435);
    EXPECT_EQ(page.choose(ClockField::PllRc, PLLRC_HEXT), ClockRefusal::HextOff);
    page.state.Set_hext_enable_flag(true, false);
    EXPECT_EQ(page.clock().Get_PLLRC(), PLLRC_HICK);
    EXPECT_EQ(page.enter(ClockField::Hext, "12"), ClockRefusal::None);
    EXPECT_EQ(page.choose(ClockField::PllRc, PLLRC_HEXT), ClockRefusal::None);
    EXPECT_EQ(page.state.Get_SYSCLK(), 288) << "the PLL is solved anew for the input";
    EXPECT_EQ(page.choose(ClockField::SclkSelect, SYSCLK_HEXT), ClockRefusal::None);
    EXPECT_EQ(page.state.Get_SYSCLK(), 12);

    page.state.Set_hext_enable_flag(false, false);
    EXPECT_EQ(page.clock().Get_SYSCLKSelect(), SYSCLK_HICK);
    EXPECT_EQ(page.clock().Get_PLLRC(), PLLRC_HICK);
    EXPECT_EQ(page.state.Get_SYSCLK(), 8);

    Page switched(ZV32F405);
    switched.state.Set_hext_enable_flag(true, true);
    EXPECT_EQ(switched.clock().Get_PLLRC(), PLLRC_HEXT);
    EXPECT_EQ(switched.state.text(ClockField::Hext), "0");
    EXPECT_TRUE(switched.state.hasError());
    EXPECT_FALSE(switched.state.GenerateCodeCheck());
    EXPECT_EQ(switched.prompt.takeTexts(), QStringList({"Error: hext input error, please re-enter."}));

    // Off and on again it is not asked for twice.
    switched.state.Set_hext_enable_flag(false, false);
    switched.state.Set_hext_enable_flag(true, false);
    EXPECT_EQ(switched.state.text(ClockField::Hext), "12") << "what the series assumes";
    EXPECT_EQ(switched.enter(ClockField::Hext, "16"), ClockRefusal::None);
    switched.enter(ClockField::Hext, "99");
    switched.state.Set_hext_enable_flag(false, false);
    switched.state.Set_hext_enable_flag(true, true);
    EXPECT_EQ(switched.state.text(ClockField::Hext), "16");
    EXPECT_FALSE(switched.state.hasError());
    switched.prompt.takeTexts();

    Page output(ZV32F435);
    output.state.Set_hext_enable_flag(true, false);
    output.state.Set_clockout1PinSelectComboBox(1);
    output.choose(ClockField::Clkout1, CLKOUT1_PLL);
    output.choose(ClockField::SclkSelect, SYSCLK_HEXT);
    output.state.Set_hext_enable_flag(false, false);
    EXPECT_EQ(output.clock().Get_SYSCLKSelect(), SYSCLK_PLL);
}

// Code would wait without end for a crystal that is not there, and a file can ask for it too.
TEST(ClockPage, ACrystalThatIsOffFeedsNothing)
{
    struct Row
    {
        ZV32MCUSERIALS series;
        ClockField field;
        int hext, lext, rest;
    };
    for (const Row &row : {Row{ZV32F421, ClockField::Clkout, CLKOUT_HEXT, CLKOUT_LEXT, CLKOUT_NOCLK},
                           Row{ZV32F402, ClockField::Clkout, CLKOUT_HEXT, CLKOUT_LEXT, CLKOUT_SCLK},
                           Row{ZV32F435, ClockField::Clkout1, CLKOUT1_HEXT, CLKOUT1_LEXT, CLKOUT1_HICK},
                           Row{ZV32F435, ClockField::Clkout2, CLKOUT2_HEXT, CLKOUT2_LEXT, CLKOUT2_SCLK},
                           Row{ZV32F435, ClockField::RtcSel, RTCSEL_HEXT, RTCSEL_LEXT, RTCSEL_LICK}}) {
        Page page(row.series);
        SCOPED_TRACE(nameOf(row.series) + ' ' + clockFieldName(page.state.series(), row.field).toStdString());
        EXPECT_EQ(page.choose(row.field, row.hext), ClockRefusal::HextOff);
        EXPECT_EQ(page.choose(row.field, row.lext), ClockRefusal::LextOff);
        page.state.Set_hext_enable_flag(true, false);
        page.state.Set_lext_enable_flag(true);
        EXPECT_EQ(page.choose(row.field, row.lext), ClockRefusal::None);
        page.state.Set_hext_enable_flag(false, false);
        EXPECT_EQ(clockFieldValue(page.clock(), row.field), row.lext) << "the other crystal still runs";
        page.state.Set_lext_enable_flag(false);
        EXPECT_EQ(clockFieldValue(page.clock(), row.field), row.rest);

        page.state.Set_hext_enable_flag(true, false);
        EXPECT_EQ(page.choose(row.field, row.hext), ClockRefusal::None);
        Page opened(row.series);
        open(opened.state, saved(page.state));
        EXPECT_EQ(clockFieldValue(opened.clock(), row.field), row.hext) << "what switches it on may be read later";
        const std::vector<ClockOutcome> left = opened.state.leaveStoppedCrystals();
        ASSERT_EQ(left.size(), 1u);
        EXPECT_EQ(left.front().field, row.field);
        EXPECT_EQ(left.front().refusal, ClockRefusal::HextOff);
        EXPECT_EQ(clockFieldValue(opened.clock(), row.field), row.rest);
        EXPECT_FALSE(opened.clock().hext_isEnable());
    }
}

// While SCLK runs on something else, what the PLL gives follows its input nevertheless.
TEST(ClockPage, ThePllOfAClockOutputFollowsItsInput)
{
    Page page(ZV32F435);
    page.state.Set_clockout1PinSelectComboBox(1);
    page.choose(ClockField::Clkout1, CLKOUT1_PLL);
    page.choose(ClockField::SclkSelect, SYSCLK_HICK);
    page.state.Set_hext_enable_flag(true, false);
    page.enter(ClockField::Hext, "10");
    const double before = page.state.reading(ClockBranch::Clkout1).mhz;
    EXPECT_EQ(page.choose(ClockField::PllRc, PLLRC_HEXT), ClockRefusal::None);
    EXPECT_EQ(page.state.reading(ClockBranch::Clkout1).mhz, before * 10 / 8);
    // An oscillator at 10 * 144 MHz would never lock, and the code would wait for it.
    EXPECT_TRUE(page.state.hasError());
    EXPECT_FALSE(page.state.GenerateCodeCheck());
    EXPECT_EQ(page.prompt.takeTexts(), QStringList({"Error: pll_ns input error!"}));
    page.state.Set_hext_enable_flag(false, false);
    EXPECT_EQ(page.state.reading(ClockBranch::Clkout1).mhz, before);
    EXPECT_FALSE(page.state.hasError());
    EXPECT_TRUE(page.state.GenerateCodeCheck());
}

TEST(ClockPage, UsbTakesThePllOnlyWhenAsked)
{
    Page page(ZV32F435);
    page.state.Set_USBFS1_Flag(true);
    EXPECT_TRUE(page.state.usbIsInUse());
    EXPECT_EQ(page.clock().Get_USBCLKValue(), 48);
    page.choose(ClockField::SclkSelect, SYSCLK_HICK);
    EXPECT_FALSE(page.state.pllIsShown());
    EXPECT_EQ(page.choose(ClockField::HickToUsb, HICK_TO_USB_DISABLE), ClockRefusal::None);
    EXPECT_TRUE(page.state.pllIsShown());
    EXPECT_EQ(page.clock().Get_USBCLKValue(), 48);

    // A second USB peripheral keeps it in use.
    page.state.Set_USBFS2_Flag(true);
    page.state.Set_USBFS1_Flag(false);
    EXPECT_TRUE(page.state.usbIsInUse());
    page.state.Set_USBFS2_Flag(false);
    EXPECT_FALSE(page.state.pllIsShown());

    Page none(ZV32F421);
    none.state.Set_USB_Flag(true);
    EXPECT_FALSE(none.state.usbIsInUse());
}

TEST(ClockPage, APinMakesAnOutputCount)
{
    Page page(ZV32F435);
    page.state.Set_hext_enable_flag(true, false);
    EXPECT_EQ(page.choose(ClockField::Clkout2, CLKOUT2_HEXT), ClockRefusal::None);
    EXPECT_FALSE(page.state.isShown(ClockBranch::Clkout2));
    page.state.Set_clockout2PinSelectComboBox(clockPinIndex(page.state.series(), ClockField::Clkout2Pin, "PC9"));
    EXPECT_TRUE(page.state.isShown(ClockBranch::Clkout2));
    EXPECT_TRUE(page.clock().hext_isEnable());
    page.choose(ClockField::Clkout2, CLKOUT2_SCLK);
    page.choose(ClockField::Clkout2Div1, 3);
    page.choose(ClockField::Clkout2Div2, 16);
    EXPECT_EQ(page.state.reading(ClockBranch::Clkout2).mhz, 6.0);
    page.state.Set_clockout2PinSelectComboBox(7);
    EXPECT_TRUE(page.state.isShown(ClockBranch::Clkout2)) << "an index without a pin is ignored";
    page.state.Set_clockout2PinSelectComboBox(0);
    EXPECT_FALSE(page.state.isShown(ClockBranch::Clkout2));

    EXPECT_EQ(clockPinIndex(*clockSeries(ZV32F421), ClockField::ClkoutPin, "PA9"), 2);
    EXPECT_EQ(clockPinIndex(*clockSeries(ZV32F421), ClockField::ClkoutPin, "PC9"), 0);
    EXPECT_EQ(clockPinIndex(*clockSeries(ZV32F421), ClockField::Clkout1Pin, "PA8"), 0);
}

struct CheckRow
{
    ZV32MCUSERIALS series;
    std::vector<ClockChange> changes;
    QString text;
    bool warning;
};

TEST(ClockPage, TheCheckTellsTheFirstFault)
{
    const QString usb =
        "Warning: USB clock must be 48MHz. But the USB clock of current config is wrong.  please confirm "
        "whether to continue?";
    const CheckRow rows[] = {
        {ZV32F455,
         {Change::choose(ClockField::Apb3Div, 2)},
         "Error: Can not support apb3clk greater than 90MHz",
         false},
        {ZV32F403E,
         {Change::choose(ClockField::AdcDiv, 2)},
         "Warning: The maximum ADC clock is 35 MHz. The currently configured ADC clock is wrong.  please confirm "
         "whether "
         "to continue?",
         true},
        {ZV32L021,
         {Change::choose(ClockField::AdcDiv, 2)},
         "Warning: The maximum ADC clock is 28 MHz. The currently configured ADC clock is wrong, please confirm "
         "whether "
         "to continue?",
         true},
        {ZV32L021,
         {Change::choose(ClockField::Apb2Div, 4)},
         "Warning: The ADC clock must be less than the APB2 clock. The currently configured ADC clock is wrong, please "
         "confirm whether to continue?",
         true},
        {ZV32A403A, {Change::choose(ClockField::HickToUsb, 0), Change::enter(ClockField::Sclk, "200")}, usb, true},
        {ZV32F402,
         {Change::choose(ClockField::I2sf5Source, 3), Change::type(ClockField::I2sf5Clock, "73")},
         "Error: I2SF5 external clock input error! ",
         false},
    };
    for (const CheckRow &row : rows) {
        SCOPED_TRACE(row.text.toStdString());
        Page page(row.series);
        page.state.Set_USB_Flag(true);
        page.state.Set_ADC1_Flag(true);
        page.state.Set_I2SF5_Flag(true);
        for (const ClockChange &change : row.changes)
            page.state.apply(change);
        page.prompt.takeTexts();
        const QByteArray before = saved(page.state);
        EXPECT_EQ(page.state.problems().size(), 1u);
        EXPECT_EQ(saved(page.state), before);

        EXPECT_FALSE(page.state.GenerateCodeCheck());
        EXPECT_EQ(page.prompt.takeTexts(), QStringList({row.text}));
        page.prompt.answers = {0};
        EXPECT_EQ(page.state.GenerateCodeCheck(), row.warning);
    }
}

TEST(ClockPage, TheCheckAsksForACrystalThatIsOnButNotInUse)
{
    Page page(ZV32F435);
    page.state.Set_hext_enable_flag(true, false);
    EXPECT_TRUE(page.state.GenerateCodeCheck());
    page.enter(ClockField::Hext, "99");
    page.prompt.takeTexts();
    EXPECT_FALSE(page.state.GenerateCodeCheck());
    EXPECT_EQ(page.prompt.takeTexts(), QStringList("Error: hext input error, please re-enter."));
    page.state.Set_hext_enable_flag(false, false);
    EXPECT_TRUE(page.state.GenerateCodeCheck());
}

TEST(ClockPage, AGapOfTheMultiplierTableIsSaidInWords)
{
    Page page(ZV32F421);
    page.state.Set_hext_enable_flag(true, false);
    page.enter(ClockField::Hext, "7");
    EXPECT_EQ(page.choose(ClockField::PllRc, PLLRC_HEXT), ClockRefusal::NoMultiplier);
    EXPECT_EQ(page.clock().Get_PLL_MUL(), 0);
    EXPECT_FALSE(page.state.GenerateCodeCheck());
    EXPECT_EQ(page.prompt.requests.last().text, "sclk input error!");
    EXPECT_TRUE(page.prompt.requests.last().detail.startsWith("No multiplier exists for a PLL input of 7 MHz."));
}

TEST(ClockPage, FreeRtosTakesSysTickUndivided)
{
    Page page(ZV32F421);
    page.state.Set_FREERTOSEnable_Flag(true);
    EXPECT_EQ(page.state.Get_SysticDiv(), 1);
    EXPECT_EQ(page.choose(ClockField::SysticDiv, 8), ClockRefusal::SysTickTaken);
    page.state.ResetAllControl();
    EXPECT_EQ(page.state.Get_SysticDiv(), 1);
    page.state.Set_FREERTOSEnable_Flag(false);
    EXPECT_EQ(page.choose(ClockField::SysticDiv, 8), ClockRefusal::None);
}

TEST(ClockPage, SignalsComeOnceHalfASecondLater)
{
    Page page(ZV32F405);
    int clock = 0, usb = 0, i2s = 0, errors = 0;
    QObject::connect(&page.state, &ZV32MCUPLL::SendClockChangedSignal, [&] { ++clock; });
    QObject::connect(&page.state, &ZV32MCUPLL::SendUSBClockSourceChangeSignal, [&] { ++usb; });
    QObject::connect(&page.state, &ZV32MCUPLL::SendI2SF5ClockSourceChangeSignal, [&] { ++i2s; });
    QObject::connect(&page.state, &ZV32MCUPLL::SendClockHaveErrorSignal, [&](bool error) { errors += error; });
    page.enter(ClockField::Sclk, "100");
    page.enter(ClockField::Sclk, "120");
    EXPECT_EQ(clock, 0);
    page.scheduler.drain();
    EXPECT_EQ(clock, 1);
    EXPECT_EQ(usb + i2s, 0);
    page.state.Set_I2SF5_Flag(true);
    page.state.Set_USB_Flag(true);
    page.scheduler.drain();
    EXPECT_EQ(usb, 1);
    EXPECT_EQ(i2s, 1);
    EXPECT_EQ(errors, 0);
    page.choose(ClockField::Apb1Div, 1);
    EXPECT_EQ(errors, 0) << "120 MHz is still in range";
}

TEST(ClockFacade, AnswersWithoutAPage)
{
    Scheduler scheduler;
    ScriptedPrompt prompt{ScriptedPrompt::Last};
    ZV32PLLConfig config(scheduler, prompt);
    for (const ZV32MCUSERIALS series : {ZV32F403, ZV32C421}) {
        config.newConfig(ZV32F435);
        EXPECT_EQ(config.Get_Peripherals_Clock("TMR1"), 288);
        EXPECT_EQ(config.Get_Peripherals_Clock("SPI3"), 144);
        EXPECT_EQ(config.Get_Peripherals_Clock("SysTick"), 36);
        config.newConfig(series);
        EXPECT_FALSE(config.getMCUPLL());
        EXPECT_EQ(config.Get_SYSCLK(), 0);
        EXPECT_EQ(config.Get_Peripherals_Clock("TMR1"), 0);
        EXPECT_FALSE(config.GenerateCodeCheck());
        EXPECT_FALSE(config.SaveToFile(nullptr));
        config.SetHextFlag(true, true, true);
        config.SetUSBFlag(true);
    }
    config.OpenFromFile("nowhere", "ZV32X999");
    EXPECT_EQ(prompt.takeTexts(), QStringList({"Warning: MCU in file not supported."}));
    EXPECT_EQ(config.seriesName(), "");
}

TEST(ClockFacade, ResetAsksFirst)
{
    Scheduler scheduler;
    ScriptedPrompt prompt{ScriptedPrompt::Last};
    ZV32PLLConfig config(scheduler, prompt);
    config.newConfig(ZV32F435);
    config.getMCUPLL()->apply(Change::enter(ClockField::Sclk, "100"));
    prompt.answers = {1};
    config.ConfigReset();
    EXPECT_EQ(config.Get_SYSCLK(), 100);
    prompt.answers = {0};
    config.ConfigReset();
    EXPECT_EQ(config.Get_SYSCLK(), 288);
    EXPECT_EQ(prompt.takeTexts().last(),
              "Warning: The current configuration will be reset. Please confirm whether to continue?");
}

} // namespace

} // namespace ChipLoom::Test
