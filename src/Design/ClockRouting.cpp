#include "Design/ClockRouting.h"

#include "ClockConfig/ClockFields.h"
#include "ClockConfig/ZV32PLLConfig.h"
#include "Design/DevicePinInfo.h"
#include "Design/ModuleConfiguration.h"

#include <array>

namespace ChipLoom {

namespace {

struct FlagRow
{
    const char *instance;
    void (ZV32PLLConfig::*set)(bool on);
};

constexpr std::array<FlagRow, 16> Flags{{
    {"USB_OTGFS1", &ZV32PLLConfig::SetUSBFS1Flag},
    {"USB_OTGFS2", &ZV32PLLConfig::SetUSBFS2Flag},
    {"USB_OTGHS1", &ZV32PLLConfig::SetUSBHSFlag},
    {"USBFS", &ZV32PLLConfig::SetUSBFSFlag},
    {"USART1", &ZV32PLLConfig::SetUSART1Flag},
    {"USART2", &ZV32PLLConfig::SetUSART2Flag},
    {"USART3", &ZV32PLLConfig::SetUSART3Flag},
    {"I2C1", &ZV32PLLConfig::SetI2C1Flag},
    {"ADC1", &ZV32PLLConfig::SetADC1Flag},
    {"ADC2", &ZV32PLLConfig::SetADC2Flag},
    {"ADC3", &ZV32PLLConfig::SetADC3Flag},
    {"I2SF5", &ZV32PLLConfig::SetI2SF5Flag},
    {"CAN1", &ZV32PLLConfig::SetCAN1Flag},
    {"CAN2", &ZV32PLLConfig::SetCAN2Flag},
    {"CAN3", &ZV32PLLConfig::SetCAN3Flag},
    {"FREERTOS", &ZV32PLLConfig::SetFREERTOSEnableFlag},
}};

struct OutputRow
{
    const char *signal;
    ClockField field;
    void (ZV32PLLConfig::*set)(int index);
};

const std::array<OutputRow, 3> Outputs{{
    {"CRM_CLKOUT", ClockField::ClkoutPin, &ZV32PLLConfig::SetClockOutPin},
    {"CRM_CLKOUT1", ClockField::Clkout1Pin, &ZV32PLLConfig::SetClockOut1Pin},
    {"CRM_CLKOUT2", ClockField::Clkout2Pin, &ZV32PLLConfig::SetClockOut2Pin},
}};

const QString ClockInstance = QStringLiteral("CRM");
const QString HextMode = QStringLiteral("HEXT");
const QString LextMode = QStringLiteral("LEXT");

bool isBypass(const ModeControl &control)
{
    return control.currentName().contains(QLatin1String("Bypass"));
}

} // namespace

void tellClock(const ModuleConfiguration &module, ZV32PLLConfig &clock, bool switchPll)
{
    if (module.instanceName() == ClockInstance) {
        if (const ModeControl *lext = module.control(LextMode))
            clock.SetLextFlag(lext->isOn(), isBypass(*lext));
        if (const ModeControl *hext = module.control(HextMode))
            clock.SetHextFlag(hext->isOn(), isBypass(*hext), switchPll);
        return;
    }
    for (const FlagRow &row : Flags) {
        if (module.instanceName() == QLatin1String(row.instance))
            (clock.*row.set)(module.GetIPValidFlag());
    }
}

void tellConverterClock(const QList<RefParameter> &parameters, const QString &sender, ZV32PLLConfig &clock)
{
    if (!sender.startsWith(QLatin1String("ADC")))
        return;
    for (const RefParameter &parameter : parameters) {
        if (parameter.Name == QLatin1String("ClockDivision")) // as "ADC_HCLK_DIV_8"
            clock.SetADCDivider(parameter.CurrentValue.section(QLatin1Char('_'), -1).toInt());
    }
}

void tellClockOutputs(const DevicePinInfo &pins, ZV32PLLConfig &clock)
{
    const ClockSeries *series = clockSeries(clock.series());
    if (!series)
        return;
    for (const OutputRow &row : Outputs) {
        const QVector<SignalPlace> &places = pins.placesOf(QLatin1String(row.signal));
        int index = 0;
        for (const SignalPlace place : places) {
            if (pins.pin(place.pin).validFlag && pins.signal(place).configStatus != Not_Config)
                index = clockPinIndex(*series, row.field, pins.pin(place.pin).pinName);
        }
        if (!places.isEmpty())
            (clock.*row.set)(index);
    }
}

bool offersPllSwitch(const QString &instance, const QString &modeName, const ZV32PLLConfig &clock)
{
    return instance == ClockInstance && modeName == HextMode && clock.Get_PLLRC() == 1 && clock.PLLIsEnable();
}

} // namespace ChipLoom
