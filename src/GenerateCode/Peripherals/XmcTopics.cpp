#include "GenerateCode/Peripherals/DeclaredGenerator.h"

namespace ChipLoom {

namespace {

QStringList memoryPins()
{
    QStringList names;
    for (int line = 0; line < 16; ++line)
        names.append(QLatin1Char('D') + QString::number(line));
    for (int line = 16; line < 24; ++line)
        names.append(QLatin1Char('A') + QString::number(line));
    return names + QStringList{"NOE", "NWE", "NE1", "NE4", "NADV", "NWAIT", "CLK", "LB", "UB", "NCE2", "CLE", "ALE"};
}

std::vector<Topic> pinBlocks()
{
    const QStringList pins = memoryPins();
    std::vector<Topic> topics{onlyPinDeclaration(pins), pinDefaults(pins)};
    for (const QString &name : pins)
        topics.push_back(pin(name.toLower(), name));
    return topics;
}

// A memory that is driven with a clock says how fast that is.
QString synchronous(const DeclaredGenerator &generator)
{
    return generator.holds(isGiven("ClockDivision")) ? QStringLiteral("TRUE") : QStringLiteral("FALSE");
}

Topic assign(const QByteArray &structure, const char *member, const QByteArray &parameter)
{
    return assignment("GenerateCode_XMC_timing", (structure + '.' + member).constData(), parameter.constData());
}

std::vector<Topic> norTopics()
{
    const auto init = [](const char *member, TopicValue value) {
        return assignment("GenerateCode_XMC_init", (QByteArray("xmc_norsram_init_struct.") + member).constData(),
                          std::move(value));
    };
    const auto clocked = [](const char *name, const QByteArray &timing) {
        return section(
            "GenerateCode_XMC_timing", QLatin1String(name), isGiven("ClockDivision"),
            {assign(timing, "clock_division", "ClockDivision"), assign(timing, "data_latency", "DataLatency")});
    };
    return {
        init("memory", "MemoryType"),
        init("bus_width", "DataBusWidth"),
        init("data_address_mux", "DataAddressMux"),
        init("wait_enable", "WaitSignal"),
        init("wait_polarity", "WaitPolarity"),
        init("synchronous", computed(&synchronous)),
        init("extended_mode", "ExtendedMode"),
        assign("read_timing", "mode", "AccessMode"),
        assign("read_timing", "address_setup_time", "AddressSetupTime"),
        assign("read_timing", "address_hold_time", "AddressHoldTime"),
        assign("read_timing", "data_setup_time", "DataSetupTime"),
        assign("read_timing", "bus_latency", "BusLatency"),
        clocked("memory clock", "read_timing"),
        section("GenerateCode_XMC_timing", "write timing", isTrue("ExtendedMode"),
                {assign("write_timing", "mode", "AccessMode"),
                 assign("write_timing", "address_setup_time", "WriteAddressSetupTime"),
                 assign("write_timing", "address_hold_time", "AddressHoldTime"),
                 assign("write_timing", "data_setup_time", "WriteDataSetupTime"),
                 assign("write_timing", "bus_latency", "BusLatency"), clocked("write clock", "write_timing")}),
    };
}

std::vector<Topic> nandTopics()
{
    const auto init = [](const char *member, const char *parameter) {
        return assignment("GenerateCode_XMC_init", (QByteArray("xmc_nand_init_struct.") + member).constData(),
                          parameter);
    };
    std::vector<Topic> topics{
        init("bus_width", "DataBusWidth"),     init("wait_enable", "WaitFeature"),
        init("ecc_enable", "ECCEnable"),       init("ecc_pagesize", "ECCPageSize"),
        init("delay_cycle", "DelayTimeCycle"), init("delay_address", "DelayTimeAR"),
    };
    for (const QByteArray space : {"Regular", "Special"}) {
        const QByteArray timing = space.toLower() + "_timing";
        topics.push_back(assign(timing, "setup_time", space + "SetupTime"));
        topics.push_back(assign(timing, "wait_time", space + "WaitTime"));
        topics.push_back(assign(timing, "hold_time", space + "HoldTime"));
        topics.push_back(assign(timing, "hiz_time", space + "HiZTime"));
    }
    for (const char *event : {"Interrupt_RisingEdge", "Interrupt_HighLevel", "Interrupt_FallingEdge"})
        topics.push_back(interruptEnable(event));
    topics.push_back(interruptRemarks());
    return topics;
}

} // namespace

const PeripheralTopics &xmcPinTopics()
{
    static const PeripheralTopics topics{.kind = "XMC", .function = pinBlocks()};
    return topics;
}

const PeripheralTopics &xmcNorTopics()
{
    static const PeripheralTopics topics{
        .kind = "XMC_NORFlash-PSRAM-LCD",
        .function = norTopics(),
        .header = {section(
            "GenerateCode_XMC_lcd", "lcd addresses", isGiven("RegisterSelect"),
            {call("GenerateCode_XMC_lcd", "xmc_lcd_data_address", {Keep, "RegisterSelect", "DataBusWidth"})})},
    };
    return topics;
}

const PeripheralTopics &xmcNandTopics()
{
    static const PeripheralTopics topics{
        .kind = "XMC_NANDFlash",
        .function = nandTopics(),
        .branches = {{"_RisingEdge_FLAG", isTrue("Interrupt_RisingEdge")},
                     {"_HighLevel_FLAG", isTrue("Interrupt_HighLevel")},
                     {"_FallingEdge_FLAG", isTrue("Interrupt_FallingEdge")}},
    };
    return topics;
}

} // namespace ChipLoom
