#include "GenerateCode/Peripherals/DeclaredGenerator.h"

namespace ChipLoom {

namespace {

QString debugPort(const DeclaredGenerator &generator)
{
    return generator.isOn() ? generator.Get_DefineString_Param(QStringLiteral("DebugPort"))
                            : QStringLiteral("SWJTAG_MUX_100"); // all pins are free
}

} // namespace

const PeripheralTopics &irtmrTopics()
{
    static const QStringList pins{"IR_OUT"};
    static const PeripheralTopics topics{
        .kind = "IRTMR",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("ir_out", "IR_OUT"),
                call("GenerateCode_IRTMR_infrared_config", "scfg_infrared_config", {"IR_Source", "IR_Polarity"}),
            },
        .globalSignals = pins,
    };
    return topics;
}

const PeripheralTopics &scfgTopics()
{
    // Requests that stand on another channel are moved where the channels are set up.
    static const PeripheralTopics topics{
        .kind = "SCFG",
        .function = {},
        .haveCode = isTrue("PadRemap"),
        .when = "pa11_pa12",
    };
    return topics;
}

const PeripheralTopics &debugTopics()
{
    // The port has all its pins after a reset, and gives all of them back where it is off.
    static const PeripheralTopics topics{
        .kind = "DEBUG",
        .function = {call("GenerateCode_DEBUG_remap", "gpio_pin_remap_config", {computed(&debugPort), Keep})},
        .haveCode = isOther("DebugPort", {"SWJTAG_MUX_000"}),
        .whenOff = true,
        .when = "jtag",
    };
    return topics;
}

} // namespace ChipLoom
