#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

const PeripheralTopics &i2cTopics()
{
    static const QStringList pins{"SCL", "SDA", "SMBA"};
    static const PeripheralTopics topics{
        .kind = "I2C",
        .function =
            {
                onlyPinDeclaration(pins),
                pinDefaults(pins),
                pin("scl", "SCL"),
                pin("sda", "SDA"),
                pin("smba", "SMBA"),
                remap(pins),
                call("GenerateCode_I2C_init", "i2c_init", {Keep, orSample("DutyCycle"), "ClockSpeed"}),
                call("GenerateCode_I2C_own_address1", "i2c_own_address1_set", {Keep, "AddressMode", "OwnAddress1"}),
                section("GenerateCode_I2C_own_address2", "dual address", isTrue("DualAddress"),
                        {call("GenerateCode_I2C_own_address2", "i2c_own_address2_set", {Keep, "OwnAddress2"})}),
                line("GenerateCode_I2C_general_call", "i2c_general_call_enable", isTrue("GeneralCall"), {Keep, Keep}),
                call("GenerateCode_I2C_clock_stretch", "i2c_clock_stretch_enable", {Keep, "ClockStretching"}),
                section("GenerateCode_I2C_smbus", "smbus", isGiven("SMBusMode"),
                        {call("GenerateCode_I2C_smbus", "i2c_smbus_mode_set", {Keep, "SMBusMode"})}),
                line("GenerateCode_I2C_smbus", "i2c_smbus_alert_enable", isTrue("SMBusAlert"), {Keep, Keep}),
                line("GenerateCode_I2C_smbus", "i2c_pec_calculate_enable", isTrue("PEC"), {Keep, Keep}),
                section("GenerateCode_I2C_DMA", "dma", isRequested({"_TX", "_RX"})),
                interruptEnable("Interrupt_EVT"),
                interruptEnable("Interrupt_DATA"),
                interruptEnable("Interrupt_ERR"),
                interruptRemarks(),
            },
        .branches = {{"_EVT_FLAG", isTrue("Interrupt_EVT")},
                     {"_DATA_FLAG", isTrue("Interrupt_DATA")},
                     {"_ERR_FLAG", isTrue("Interrupt_ERR")}},
    };
    return topics;
}

} // namespace ChipLoom
