#include "ClockConfig/ZV32PLLConfig.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"

namespace ChipLoom {

namespace {

QString source(const DeclaredGenerator &generator)
{
    return generator.clock() ? generator.clock()->GenerateCode_Get_USB_ClockSource()
                             : QStringLiteral("CRM_USB_CLOCK_SOURCE_PLL");
}

// The divider stands in the way from the PLL only.
std::string divider(const DeclaredGenerator &generator, const QStringList &)
{
    const QString value = generator.clock() ? generator.clock()->GenerateCode_Get_USB_Div() : QString();
    const bool needed = !value.isEmpty() && source(generator) != QLatin1String("CRM_USB_CLOCK_SOURCE_HICK");
    return needed ? callText(QStringLiteral("crm_usb_clock_div_set"), {value}) : std::string();
}

} // namespace

const PeripheralTopics &usbfsTopics()
{
    static const QStringList pins{"DM", "DP"};
    static const PeripheralTopics topics{
        .kind = "USBFS",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("dm", "DM"),
                pin("dp", "DP"),
                rewritten("GenerateCode_USB_clock", "crm_usb_clock_div_set", 1, &divider),
                call("GenerateCode_USB_clock", "crm_usb_clock_source_select", {computed(&source)}),
                call("GenerateCode_USB_buffer", "usb_buffer_size_set", {"PacketBuffer"}),
                call("GenerateCode_USB_role", "usb_core_init", {"Role", "Speed"}),
                section("GenerateCode_USB_low_power", "low power", isTrue("LowPower")),
                interruptEnable("Interrupt_TRANSFER"),
                interruptEnable("Interrupt_RESET"),
                interruptEnable("Interrupt_CONNECT"),
                interruptEnable("Interrupt_SOF"),
                interruptEnable("Interrupt_ERR"),
                interruptRemarks(),
            },
        .branches = {{"_SUSPEND_FLAG", isTrue("LowPower")},
                     {"_WAKEUP_FLAG", isTrue("LowPower")},
                     {"_TRANSFER_FLAG", isTrue("Interrupt_TRANSFER")},
                     {"_RESET_FLAG", isTrue("Interrupt_RESET")},
                     {"_CONNECT_FLAG", isTrue("Interrupt_CONNECT")},
                     {"_SOF_FLAG", isTrue("Interrupt_SOF")},
                     {"_ERR_FLAG", isTrue("Interrupt_ERR")}},
    };
    return topics;
}

const PeripheralTopics &usbOtgTopics()
{
    static const QStringList pins{"DM", "DP", "VBUS", "ID", "SOF"};
    static const PeripheralTopics topics{
        .kind = "USB_OTGFS",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("dm", "DM"),
                pin("dp", "DP"),
                pin("vbus", "VBUS"),
                pin("id", "ID"),
                pin("sof", "SOF"),
                rewritten("GenerateCode_USB_clock", "crm_usb_clock_div_set", 1, &divider),
                call("GenerateCode_USB_clock", "crm_usb_clock_source_select", {computed(&source)}),
                call("GenerateCode_USB_role", "usb_core_init", {Keep, "Role", "Speed"}),
                section("GenerateCode_USB_vbus", "vbus sense", isPlaced({"VBUS"})),
                section("GenerateCode_USB_sof", "sof output", isPlaced({"SOF"})),
                interruptRemarks(),
            },
    };
    return topics;
}

} // namespace ChipLoom
