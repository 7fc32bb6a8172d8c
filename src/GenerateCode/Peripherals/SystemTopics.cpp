#include "GenerateCode/Peripherals/DeclaredGenerator.h"

#include <array>

namespace ChipLoom {

namespace {

// Pads with extra drive of all series; each has some of them.
constexpr std::array UltraPads{"PA11", "PA12", "PB3",  "PB8",  "PB9",  "PB10", "PB13",
                               "PB14", "PD12", "PD13", "PD14", "PD15", "PF14", "PF15"};

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
    static const PeripheralTopics topics = [] {
        PeripheralTopics made{
            .kind = "SCFG", .function = {}, .haveCode = isTrue("PadRemap"), .when = "pa11_pa12|ultra"};
        for (const char *pad : UltraPads) {
            const QString parameter = QLatin1String("Ultra_") + QLatin1String(pad);
            made.function.push_back(section("GenerateCode_SCFG_ultra", parameter, isTrue(QStringList{parameter}))
                                        .onlyWhen(QLatin1String("ultra_pins:") + QLatin1String(pad)));
            made.haveCode = either(made.haveCode, isTrue(QStringList{parameter}));
        }
        return made;
    }();
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
        .when = "jtag & remap",
    };
    return topics;
}

} // namespace ChipLoom
