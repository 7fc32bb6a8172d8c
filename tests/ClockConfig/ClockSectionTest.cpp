#include "ClockPageFixture.h"

namespace ChipLoom::Test {

namespace {

TEST(ClockSection, TheDesignFileKeepsEveryValue)
{
    for (const ClockSeries &series : allClockSeries()) {
        SCOPED_TRACE(nameOf(series.code));
        Page page(series.code);
        page.state.Set_hext_enable_flag(true, false);
        page.state.Set_lext_enable_flag(true);
        for (const ClockField field : allClockFields()) {
            const std::vector<ClockOption> options = clockOptions(page.clock(), field);
            if (options.size() > 1)
                page.choose(field, options[options.size() / 2].value);
        }
        page.enter(ClockField::Hext, "11.0592");
        page.enter(ClockField::I2sf5Clock, "24.576");
        const QByteArray first = saved(page.state);

        Page again(series.code);
        again.state.Set_hext_enable_flag(true, false);
        again.state.Set_lext_enable_flag(true);
        again.state.Set_ADC1_Flag(page.state.adcIsInUse());
        EXPECT_EQ(open(again.state, first), QStringList());
        EXPECT_EQ(saved(again.state), first);
        EXPECT_NEAR(again.state.Get_SYSCLK(), page.state.Get_SYSCLK(), 1e-9);
        EXPECT_NEAR(again.state.Get_APB1CLK(), page.state.Get_APB1CLK(), 1e-9);
    }
}

TEST(ClockSection, TheSectionAsWritten)
{
    Page page(ZV32F405);
    EXPECT_EQ(saved(page.state),
              "<Root><ClockConfiguration><rtcsel>0</rtcsel><rtcdiv>2</rtcdiv><hext>12.000000</hext><hextdiv>1</hextdiv>"
              "<hickdiv>1</hickdiv><pllrcs>1</pllrcs><pllms>1</pllms><pllns>108</pllns><pllfp>4</pllfp>"
              "<sclkselect>1</sclkselect><ahbdiv>1</ahbdiv><apb1div>2</apb1div><apb2div>1</apb2div><pllfu>18</pllfu>"
              "<hicktousb>1</hicktousb><hicktosclk>0</hicktosclk><clkout>5</clkout><clkoutdiv1>1</clkoutdiv1>"
              "<clkoutdiv2>1</clkoutdiv2><clkoutpinselect>0</clkoutpinselect><i2sf5clocksel>0</i2sf5clocksel>"
              "<i2sf5clock>12.288000</i2sf5clock><systicsel>8</systicsel></ClockConfiguration></Root>");
    Page usb(ZV32F403E);
    EXPECT_TRUE(saved(usb.state).contains("<hextdiv>2</hextdiv><pllhextdiv>0</pllhextdiv><pllhickdiv>0</pllhickdiv>"));
    EXPECT_TRUE(saved(usb.state).contains("<usbdiv>6.5</usbdiv>"));
}

TEST(ClockSection, DamagedAndForeignSectionsFallBack)
{
    Page page(ZV32F435);
    QStringList misfits = open(
        page.state, "<Root><ClockConfiguration><systicsel>5</systicsel><rtcsel>9</rtcsel><rtcdiv>99</rtcdiv>"
                    "<hext>nan</hext><pllrcs>7</pllrcs><pllms>99</pllms><pllns>-4</pllns><pllfr>3</pllfr>"
                    "<sclkselect>1</sclkselect><ahbdiv>0</ahbdiv><usbdiv>0.3</usbdiv></ClockConfiguration></Root>");
    misfits.sort();
    EXPECT_EQ(misfits, QString("ahbdiv hext pllfr pllms pllns pllrcs rtcdiv rtcsel systicsel usbdiv").split(' '));
    const ZV32ConfigCLK &clock = page.clock();
    EXPECT_EQ(clock.Get_SysticDIV(), 8);
    EXPECT_EQ(clock.Get_RTCSEL(), RTCSEL_LICK);
    EXPECT_EQ(clock.Get_RTCDIV(), 2);
    EXPECT_EQ(clock.Get_PLLRC(), PLLRC_HICK);
    EXPECT_EQ(clock.Get_PLL_MS(), 1);
    EXPECT_EQ(clock.Get_PLL_NS(), 31);
    EXPECT_EQ(clock.Get_PLL_FR(), 1);
    EXPECT_EQ(clock.Get_AHBDIV(), 1);
    EXPECT_EQ(clock.Get_USBDIV(), 1.0);
    expectConsistent(page.state);

    // A file without a section, or that is no XML, leaves the start state.
    for (const char *text : {"<Root><Other/></Root>", "<Root><ClockConfiguration><pllns>40</pllns>", "", "no XML"}) {
        Page untouched(ZV32F435);
        open(untouched.state, text);
        EXPECT_EQ(untouched.state.Get_SYSCLK(), 288) << text;
    }

    for (const ClockSeries &from : allClockSeries()) {
        Page source(from.code);
        for (const ZV32MCUSERIALS to : {ZV32F403E, ZV32F421, ZV32F423, ZV32F455}) {
            SCOPED_TRACE(nameOf(from.code) + " into " + nameOf(to));
            Page target(to);
            open(target.state, saved(source.state));
            expectConsistent(target.state);
            EXPECT_EQ(target.prompt.takeTexts(), QStringList());
        }
    }
}

} // namespace

} // namespace ChipLoom::Test
