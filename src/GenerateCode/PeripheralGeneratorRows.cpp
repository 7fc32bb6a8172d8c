#include "GenerateCode/PeripheralGenerator.h"
#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/Peripherals/TimerStems.h"

#include <array>

namespace ChipLoom {

namespace {

std::unique_ptr<PeripheralGenerator> makeDeclared(ZV32MCUSERIALS series, const QString &instanceName)
{
    const PeripheralTopics *topics = peripheralTopics(kindOfInstance(instanceName));
    return topics ? std::make_unique<DeclaredGenerator>(series, instanceName, *topics) : nullptr;
}

std::unique_ptr<PeripheralGenerator> makeTimer(ZV32MCUSERIALS series, const QString &instanceName)
{
    const TimerStem *stem = timerStem(series, instanceName);
    return stem ? std::make_unique<DeclaredGenerator>(series, instanceName, tmrTopics(), stem->featureList()) : nullptr;
}

} // namespace

std::span<const PeripheralGeneratorRow> peripheralGeneratorRows()
{
    static constexpr std::array rows{
        PeripheralGeneratorRow{"USART", &makeDeclared},
        PeripheralGeneratorRow{"UART", &makeDeclared},
        PeripheralGeneratorRow{"SPI", &makeDeclared},
        PeripheralGeneratorRow{"I2S", &makeDeclared},
        PeripheralGeneratorRow{"I2C", &makeDeclared},
        PeripheralGeneratorRow{"ADC", &makeDeclared},
        PeripheralGeneratorRow{"ADC-Common", &makeDeclared},
        PeripheralGeneratorRow{"DVP", &makeDeclared},
        PeripheralGeneratorRow{"EXINT", &makeDeclared},
        PeripheralGeneratorRow{"ERTC", &makeDeclared},
        PeripheralGeneratorRow{"RTC", &makeDeclared},
        PeripheralGeneratorRow{"WDT", &makeDeclared},
        PeripheralGeneratorRow{"WWDT", &makeDeclared},
        PeripheralGeneratorRow{"CRC", &makeDeclared},
        PeripheralGeneratorRow{"CMP", &makeDeclared},
        PeripheralGeneratorRow{"IRTMR", &makeDeclared},
        PeripheralGeneratorRow{"SCFG", &makeDeclared},
        PeripheralGeneratorRow{"PWC", &makeDeclared},
        PeripheralGeneratorRow{"DEBUG", &makeDeclared},
        PeripheralGeneratorRow{"ACC", &makeDeclared},
        PeripheralGeneratorRow{"CAN", &makeDeclared},
        PeripheralGeneratorRow{"DAC", &makeDeclared},
        PeripheralGeneratorRow{"TMR", &makeTimer},
        PeripheralGeneratorRow{"EMAC", &makeDeclared},
        PeripheralGeneratorRow{"QSPI", &makeDeclared},
        PeripheralGeneratorRow{"SDIO", &makeDeclared},
        PeripheralGeneratorRow{"SPIM", &makeDeclared},
        PeripheralGeneratorRow{"USBFS", &makeDeclared},
        PeripheralGeneratorRow{"USB_OTGFS", &makeDeclared},
        PeripheralGeneratorRow{"XMC", &makeDeclared},
        PeripheralGeneratorRow{"XMC_NORFlash-PSRAM-LCD", &makeDeclared},
        PeripheralGeneratorRow{"XMC_NORFlash-PSRAM-SRAM-ROM-LCD", &makeDeclared},
        PeripheralGeneratorRow{"XMC_NANDFlash", &makeDeclared},
        PeripheralGeneratorRow{"XMC_PCCard", &makeDeclared},
        PeripheralGeneratorRow{"XMC_SDRAM", &makeDeclared},
    };
    return rows;
}

} // namespace ChipLoom
