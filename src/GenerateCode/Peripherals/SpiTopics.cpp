#include "GenerateCode/Peripherals/DeclaredGenerator.h"

namespace ChipLoom {

namespace {

// A master must not take a low level for another master, a slave must count as selected.
QString innerLevel(const DeclaredGenerator &generator)
{
    const bool master =
        generator.Get_DefineString_Param(QStringLiteral("MasterSlaveMode")) == QLatin1String("SPI_MODE_MASTER");
    return master ? QStringLiteral("SPI_SWCS_INTERNAL_LEVEL_HIGH") : QStringLiteral("SPI_SWCS_INTERNAL_LEVEL_LOW");
}

const std::vector<InterruptBranch> &sharedBranches()
{
    static const std::vector<InterruptBranch> branches{{"_RDBF_FLAG", isTrue("Interrupt_RDBF")},
                                                       {"_TDBE_FLAG", isTrue("Interrupt_TDBE")},
                                                       {"_ERR_FLAG", isTrue("Interrupt_ERR")}};
    return branches;
}

} // namespace

const PeripheralTopics &spiTopics()
{
    static const QStringList pins{"SCK", "MISO", "MOSI", "CS"};
    static const PeripheralTopics topics{
        .kind = "SPI",
        .function =
            {
                pinDeclaration(pins),
                pinDefaults(pins),
                pin("sck", "SCK"),
                pin("miso", "MISO"),
                pin("mosi", "MOSI"),
                pin("cs", "CS"),
                remap(pins),
                assignment("GenerateCode_SPI_init", "spi_init_struct.transmission_mode", "TransmissionMode"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.master_slave_mode", "MasterSlaveMode"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.frame_bit_num", "FrameFormat"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.first_bit_transmission", "FirstBit"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.mclk_freq_division", "ClkDivision"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.clock_polarity", "CLKPolarity"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.clock_phase", "CLKPhase"),
                assignment("GenerateCode_SPI_init", "spi_init_struct.cs_mode_selection", "CSMode"),
                section("GenerateCode_SPI_timode", "ti mode", isOther("TIMode", {"SPI_TIMODE_DISABLE"}),
                        {call("GenerateCode_SPI_timode", "spi_timode_set", {Keep, "TIMode"})}),
                section("GenerateCode_SPI_crc", "crc", isTrue("CRCCalculation"),
                        {call("GenerateCode_SPI_crc", "spi_crc_polynomial_set", {Keep, "CRCPolynomial"})}),
                section(
                    "GenerateCode_SPI_cs", "software cs", isOneOf("CSMode", {"SPI_CS_SOFTWARE_MODE"}),
                    {call("GenerateCode_SPI_cs", "spi_software_cs_internal_level_set", {Keep, computed(&innerLevel)})}),
                line("GenerateCode_SPI_cs", "spi_hardware_cs_output_enable", isTrue("CSOutput"), {Keep, "CSOutput"}),
                section("GenerateCode_SPI_DMA", "dma transmitter", isRequested({"_TX"})),
                section("GenerateCode_SPI_DMA", "dma receiver", isRequested({"_RX"})),
                interruptEnable("Interrupt_RDBF"),
                interruptEnable("Interrupt_TDBE"),
                interruptEnable("Interrupt_ERR"),
                interruptRemarks(),
            },
        .branches = sharedBranches(),
    };
    return topics;
}

const PeripheralTopics &i2sTopics()
{
    static const QStringList pins{"WS", "CK", "SD", "MCK"};
    static const PeripheralTopics topics{
        .kind = "I2S",
        .function =
            {
                pinDeclaration(pins),
                pinDefaults(pins),
                pin("ws", "WS"),
                pin("ck", "CK"),
                pin("sd", "SD"),
                pin("mck", "MCK"),
                remap(pins),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.operation_mode", "OperationMode"),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.audio_protocol", "Standard"),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.data_channel_format", "DataFormat"),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.clock_polarity", "CLKPolarity"),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.mclk_output_enable", "MCLKOutput"),
                assignment("GenerateCode_I2S_init", "i2s_init_struct.audio_sampling_freq", "AudioFreq"),
                section("GenerateCode_I2S_DMA", "dma transmitter", isRequested({"_TX"})),
                section("GenerateCode_I2S_DMA", "dma receiver", isRequested({"_RX"})),
                interruptEnable("Interrupt_RDBF"),
                interruptEnable("Interrupt_TDBE"),
                interruptEnable("Interrupt_ERR"),
                interruptRemarks(),
            },
        .branches = sharedBranches(),
    };
    return topics;
}

} // namespace ChipLoom
