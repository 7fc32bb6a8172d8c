#include "GenerateCode/Peripherals/Topics.h"

namespace ChipLoom {

namespace {

std::vector<Topic> qspiFunction()
{
    const QStringList pins{"SCK", "CS", "IO0", "IO1", "IO2", "IO3"};
    const TopicTest mapped = isGiven("ReadInstruction");
    const auto member = [](const char *name, const char *parameter) {
        return assignment("GenerateCode_QSPI_xip", (QByteArray("qspi_xip_struct.") + name).constData(), parameter);
    };
    std::vector<Topic> topics{
        pinDeclaration(pins),
        declaration("GenerateCode_QSPI_xip", "xip declaration", mapped),
        pinDefaults(pins),
    };
    for (const QString &name : pins)
        topics.push_back(pin(name.toLower(), name));
    const std::vector<Topic> rest{
        call("GenerateCode_QSPI_clock", "qspi_clock_config", {Keep, "ClkDivision", "ClockMode"}),
        call("GenerateCode_QSPI_memory", "qspi_memory_config", {Keep, "FlashSize", "BusyOffset"}),
        section("GenerateCode_QSPI_DMA", "dma", isRequested({""}),
                {call("GenerateCode_QSPI_DMA", "qspi_dma_threshold_set", {Keep, "DMAThreshold"})}),
        interruptEnable("Interrupt_CMDCMPL"),
        interruptEnable("Interrupt_ERR"),
        interruptRemarks(),
        section("GenerateCode_QSPI_xip", "xip", mapped,
                {member("read_instruction", "ReadInstruction"), member("read_lines", "ReadLines"),
                 member("read_dummy_cycles", "ReadDummyCycles"), member("address_length", "ReadAddressLength"),
                 member("keep_selected", "KeepSelected"), member("idle_time", "IdleTime"),
                 member("cache_enable", "Cache"), member("write_enable", "WriteEnable"),
                 member("write_instruction", "WriteInstruction"), member("write_lines", "WriteLines"),
                 member("write_dummy_cycles", "WriteDummyCycles")}),
    };
    append(topics, rest);
    return topics;
}

} // namespace

const PeripheralTopics &qspiTopics()
{
    static const PeripheralTopics topics{
        .kind = "QSPI",
        .function = qspiFunction(),
        .branches = {{"_CMDCMPL_FLAG", isTrue("Interrupt_CMDCMPL")}, {"_ERR_FLAG", isTrue("Interrupt_ERR")}},
    };
    return topics;
}

} // namespace ChipLoom
