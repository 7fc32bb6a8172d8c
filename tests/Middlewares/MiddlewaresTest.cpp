#include "Middlewares/Middlewares.h"

#include "Design/DesignTexts.h"
#include "Design/PrintedDesign.h"
#include "QtPrinters.h"

#include <gtest/gtest.h>

using namespace ChipLoom;
using namespace ChipLoom::Test;

namespace {

DesignChange change(const char *setting)
{
    return *DesignChange::fromSetting(QString::fromUtf8(setting));
}

class MiddlewaresTest : public testing::Test
{
protected:
    MiddlewaresTest() : design(samplePaths(), prompt)
    {
        registerMiddlewares(design);
        EXPECT_TRUE(design.NewDesign("ZV32F407", "ZV32F407VGT7", "LQFP100"));
    }

    bool apply(const char *setting)
    {
        const DesignAnswer answer = design.apply(change(setting));
        EXPECT_TRUE(answer) << setting << ": " << answerText(answer).toStdString();
        design.scheduler().drain();
        return answer.accepted();
    }

    IPSTATUS status(const char *instance) const { return design.module(instance)->GetIPStatusFlag(); }
    QString note(const char *instance) const { return noteText(*design.module(instance)); }

    ScriptedPrompt prompt{0};
    Design design;
};

struct Middleware
{
    const char *instance;
    std::vector<const char *> needs; ///< without these its first setting is refused
    std::vector<const char *> on;
    std::vector<const char *> off;
};

void PrintTo(const Middleware &middleware, std::ostream *out)
{
    *out << middleware.instance;
}

class EveryMiddleware : public MiddlewaresTest, public testing::WithParamInterface<Middleware>
{
};

TEST_P(EveryMiddleware, GoesOnWithWhatItNeedsAndOffWithoutATrace)
{
    EXPECT_EQ(design.apply(change(GetParam().on.front())).accepted(), GetParam().needs.empty());
    ASSERT_TRUE(apply(GetParam().off.back()));
    for (const char *setting : GetParam().needs)
        ASSERT_TRUE(apply(setting));
    const QStringList start = printed(design);
    EXPECT_EQ(status(GetParam().instance), IPSTATUS_OFF);
    for (const char *setting : GetParam().on)
        ASSERT_TRUE(apply(setting));
    const ModuleConfiguration &module = *design.module(GetParam().instance);
    EXPECT_TRUE(module.GetIPStatusFlag() & IPSTATUS_ON);
    EXPECT_FALSE(module.parameters().GetRefParameterList().isEmpty());
    for (const char *setting : GetParam().off)
        ASSERT_TRUE(apply(setting));
    EXPECT_EQ(difference(start, printed(design)), QStringList());
}

INSTANTIATE_TEST_SUITE_P(
    Sample, EveryMiddleware,
    testing::Values(
        Middleware{"FREERTOS", {}, {"mode/FREERTOS/Activated=TRUE"}, {"mode/FREERTOS/Activated=FALSE"}},
        Middleware{
            "RT-Thread_Nano", {}, {"mode/RT-Thread_Nano/Activated=TRUE"}, {"mode/RT-Thread_Nano/Activated=FALSE"}},
        Middleware{"LWIP",
                   {"mode/EMAC/Mode=RMII", "param/EMAC/ReceiveMode=EMAC_RX_POLLING"},
                   {"mode/LWIP/Activated=TRUE", "param/LWIP/LWIP_DHCP=1"},
                   {"mode/LWIP/Activated="}},
        Middleware{"USB_DEVICE",
                   {"mode/USBFS/Mode=Device_Only"},
                   {"mode/USB_DEVICE/Class=CDC", "mode/USB_DEVICE/Class=MSC"},
                   {"mode/USB_DEVICE/Class=Disable"}},
        Middleware{"USB_HOST",
                   {"mode/USBFS/Mode=Host_Only"},
                   {"mode/USB_HOST/Class=MSC", "mode/FATFS/Medium=USB_Disk"},
                   {"mode/FATFS/Medium=", "mode/USB_HOST/Class="}},
        Middleware{"FATFS",
                   {"mode/SDIO1/Mode=SD_1_bit"},
                   {"mode/FATFS/Medium=SD_SDIO1", "param/FATFS/FF_USE_LFN=1"},
                   {"mode/FATFS/Medium="}},
        Middleware{"CMSIS_DSP", {}, {"mode/CMSIS_DSP/Activated=TRUE"}, {"mode/CMSIS_DSP/Activated="}},
        Middleware{"I2C_Application",
                   {},
                   {"mode/I2C_Application/Activated=TRUE", "mode/I2C1/Mode=I2C", "mode/I2C_Application/I2C1=DMA"},
                   {"mode/I2C1/Mode=", "mode/I2C_Application/Activated=FALSE"}}));

TEST_F(MiddlewaresTest, LosingWhatItNeedsSwitchesAMiddlewareOff)
{
    ASSERT_TRUE(apply("mode/USBFS/Mode=Host_Only"));
    ASSERT_TRUE(apply("mode/USB_HOST/Class=MSC"));
    ASSERT_TRUE(apply("mode/FATFS/Medium=USB_Disk"));
    ASSERT_TRUE(apply("mode/USBFS/Mode="));
    EXPECT_EQ(status("USB_HOST"), IPSTATUS_OFF);
    EXPECT_EQ(status("FATFS"), IPSTATUS_OFF);
}

// With or without a stack on top of it.
TEST_F(MiddlewaresTest, TheLargerUsbBufferHasNoRoomBesideCan)
{
    ASSERT_TRUE(apply("mode/USBFS/Mode=Host_Only"));
    ASSERT_TRUE(apply("param/USBFS/PacketBuffer=USB_BUFFER_SIZE_768"));
    EXPECT_EQ(status("USBFS"), IPSTATUS_ON);
    ASSERT_TRUE(apply("mode/CAN2/Activated=TRUE"));
    EXPECT_EQ(status("USBFS"), IPSTATUS_ONERROR);
    ASSERT_TRUE(apply("param/USBFS/PacketBuffer=USB_BUFFER_SIZE_512"));
    EXPECT_EQ(status("USBFS"), IPSTATUS_ON);
}

TEST_F(MiddlewaresTest, AKernelBesideSysTickOrAnotherKernelIsNotedOnBothSides)
{
    prompt.otherwise = 1;
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=TRUE"));
    EXPECT_EQ(note("FREERTOS"), "FREERTOS counts its ticks with SysTick, which is the delay time base too; choose "
                                "another delay time base in SYSTEM.");
    EXPECT_EQ(note("SYSTEM"), note("FREERTOS"));
    EXPECT_EQ(status("FREERTOS"), IPSTATUS_ON) << "a warning, no error";

    ASSERT_TRUE(apply("mode/SYSTEM/Time_Base=TMR6"));
    EXPECT_EQ(note("FREERTOS"), "");
    EXPECT_EQ(note("SYSTEM"), "");
    EXPECT_EQ(design.apply(change("mode/SYSTEM/Time_Base=SysTick")).reason, DesignReason::Cancelled);
    EXPECT_EQ(prompt.requests.size(), 1);
    EXPECT_EQ(design.module("SYSTEM")->control("Time_Base")->currentName(), "TMR6");

    ASSERT_TRUE(apply("mode/RT-Thread_Nano/Activated=TRUE"));
    for (const char *kernel : {"FREERTOS", "RT-Thread_Nano"}) {
        EXPECT_EQ(status(kernel), IPSTATUS_ONERROR) << kernel;
        QList<DesignProblem> problems;
        design.module(kernel)->collectProblems(problems);
        ASSERT_EQ(problems.size(), 1);
        EXPECT_EQ(problems.first().reason.reason, DesignReason::TwoKernels);
    }
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=FALSE"));
    EXPECT_EQ(status("RT-Thread_Nano"), IPSTATUS_ON);
    EXPECT_EQ(note("RT-Thread_Nano"), "");
}

TEST_F(MiddlewaresTest, TheKernelsHighestCallerLimitsItsInterrupts)
{
    ASSERT_TRUE(apply("mode/USART1/Mode=Asynchronous"));
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=TRUE"));
    const auto usart = [&] { return design.nvic()->vector("USART1_IRQn"); };
    EXPECT_EQ(usart()->preemptionPriority_MinValue, 5);
    EXPECT_EQ(usart()->preemptionPriority_Value, 5);
    const DesignSnapshot before = design.snapshot();
    ASSERT_TRUE(apply("param/FREERTOS/configLIBRARY_MAX_SYSCALL_INTERRUPT_PRIORITY=9"));
    EXPECT_EQ(usart()->preemptionPriority_Value, 9);
    EXPECT_EQ(design.apply(change("nvic/USART1_IRQn/PreemptionPriority=8")).reason, DesignReason::BelowMinimum);
    ASSERT_TRUE(design.restore(before));
    EXPECT_EQ(usart()->preemptionPriority_MinValue, 5);
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=FALSE"));
    EXPECT_EQ(usart()->preemptionPriority_Value, 0);
    EXPECT_EQ(design.nvic()->FREERTOSMinPriority(), 0);
}

TEST_F(MiddlewaresTest, FreeRtosTakesSysTickFromTheClock)
{
    ASSERT_TRUE(apply("clock/systicsel=8"));
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=TRUE"));
    EXPECT_FALSE(design.apply(change("clock/systicsel=8")));
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=FALSE"));
    EXPECT_TRUE(design.apply(change("clock/systicsel=8")));
}

TEST_F(MiddlewaresTest, ASendersParametersReachTheirReader)
{
    ASSERT_TRUE(apply("mode/I2C1/Mode=I2C"));
    const auto copy = [&] { return design.module("I2C_Application")->parameters().otherParameters("I2C1"); };
    const auto original = [&] { return design.module("I2C1")->parameters().GetRefParameterList(); };
    ASSERT_FALSE(copy().isEmpty());
    EXPECT_EQ(copy().size(), original().size());
    const DesignSnapshot before = design.snapshot();
    ASSERT_TRUE(apply("mode/I2C1/Mode="));
    EXPECT_TRUE(copy().isEmpty());
    ASSERT_TRUE(design.restore(before));
    EXPECT_EQ(copy().size(), original().size());
}

TEST_F(MiddlewaresTest, ALanguageLosesNoValue)
{
    ASSERT_TRUE(apply("mode/FREERTOS/Activated=TRUE"));
    ASSERT_TRUE(
        design.module("FREERTOS")->parameters().ParamModefySlot("configMAX_PRIORITIES", "16", CURRENTVALUETYPE_HEX));
    ASSERT_TRUE(apply("mode/EMAC/Mode=RMII"));
    ASSERT_TRUE(apply("mode/LWIP/Activated=TRUE"));
    ASSERT_TRUE(apply("param/LWIP/IP_ADDRESS=10.0.0.7"));
    const QStringList before = printed(design);
    for (const LANGUAGE language : {UI_CH, UI_EN}) {
        GlobalLanguage::g_CurrentLanguage = language;
        design.updateLanguage();
        design.scheduler().drain();
        EXPECT_EQ(difference(before, printed(design)), QStringList());
    }
    EXPECT_EQ(design.module("FREERTOS")->parameters().parameter("configMAX_PRIORITIES")->CurrentValue, "0x10");
}

} // namespace
