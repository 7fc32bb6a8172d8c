#include "GenerateCode/Peripherals/DeclaredGenerator.h"

namespace ChipLoom {

namespace {

QStringList memoryPins()
{
    QStringList names;
    for (int line = 0; line < 16; ++line)
        names.append(QLatin1Char('D') + QString::number(line));
    for (int line = 0; line < 26; ++line)
        names.append(QLatin1Char('A') + QString::number(line));
    return names + QStringList{"NOE",    "NWE",    "NE1",    "NE2",   "NE3",   "NE4",    "NADV",   "NWAIT",
                               "CLK",    "LB",     "UB",     "NCE2",  "NCE3",  "CLE",    "ALE",    "NCE4_1",
                               "NCE4_2", "NREG",   "NIORD",  "NIOWR", "INTR",  "CD",     "BA0",    "BA1",
                               "SDCLK",  "SDCKE0", "SDCKE1", "SDCS0", "SDCS1", "SDNRAS", "SDNCAS", "SDNWE"};
}

std::vector<Topic> pinBlocks()
{
    const QStringList pins = memoryPins();
    std::vector<Topic> topics{onlyPinDeclaration(pins), pinDefaults(pins)};
    for (const QString &name : pins)
        topics.push_back(pin(name.toLower(), name).onlyWhen(QLatin1String("signals:") + name));
    return topics;
}

// A memory that is driven with a clock says how fast that is.
QString synchronous(const DeclaredGenerator &generator)
{
    return generator.Get_DefineString_Param(QStringLiteral("ClockDivision")).isEmpty() ? QStringLiteral("FALSE")
                                                                                       : QStringLiteral("TRUE");
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
        init("write_enable", "WriteOperation"),
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

// The four times of a space of NAND flash or of a PC card.
std::vector<Topic> spaceTiming(const QByteArray &space)
{
    const QByteArray timing = space.toLower() + "_timing";
    return {assign(timing, "setup_time", space + "SetupTime"), assign(timing, "wait_time", space + "WaitTime"),
            assign(timing, "hold_time", space + "HoldTime"), assign(timing, "hiz_time", space + "HiZTime")};
}

const std::vector<Topic> &lineEvents()
{
    static const std::vector<Topic> events{interruptEnable("Interrupt_RisingEdge"),
                                           interruptEnable("Interrupt_HighLevel"),
                                           interruptEnable("Interrupt_FallingEdge"), interruptRemarks()};
    return events;
}

const std::vector<InterruptBranch> &lineBranches()
{
    static const std::vector<InterruptBranch> branches{{"_RisingEdge_FLAG", isTrue("Interrupt_RisingEdge")},
                                                       {"_HighLevel_FLAG", isTrue("Interrupt_HighLevel")},
                                                       {"_FallingEdge_FLAG", isTrue("Interrupt_FallingEdge")}};
    return branches;
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
    append(topics, spaceTiming("Regular"));
    append(topics, spaceTiming("Special"));
    append(topics, lineEvents());
    return topics;
}

std::vector<Topic> cardTopics()
{
    const auto init = [](const char *member, const char *parameter) {
        return assign("xmc_pccard_init_struct", member, parameter);
    };
    std::vector<Topic> topics{init("bus_width", "DataBusWidth"), init("wait_enable", "WaitFeature"),
                              init("delay_cycle", "DelayTimeCycle"), init("delay_address", "DelayTimeAR")};
    append(topics, spaceTiming("Common"));
    append(topics, spaceTiming("Attribute"));
    topics.push_back(section("GenerateCode_XMC_timing", "io space", isGiven("IOSetupTime"), spaceTiming("IO")));
    append(topics, lineEvents());
    return topics;
}

std::vector<Topic> sdramTopics()
{
    const auto init = [](const char *member, const char *parameter) {
        return assign("xmc_sdram_init_struct", member, parameter);
    };
    const auto timing = [](const char *member, const char *parameter) {
        return assign("xmc_sdram_timing_struct", member, parameter);
    };
    return {
        init("internal_banks", "InternalBanks"),
        init("row_address", "RowAddress"),
        init("column_address", "ColumnAddress"),
        init("bus_width", "DataBusWidth"),
        init("cas_latency", "CASLatency"),
        init("write_protection", "WriteProtection"),
        init("clkdiv", "ClockDivision"),
        init("burst_read", "BurstRead"),
        init("read_delay", "ReadDelay"),
        timing("tmrd", "LoadToActive"),
        timing("txsr", "ExitSelfRefresh"),
        timing("tras", "RowActive"),
        timing("trc", "RowCycle"),
        timing("twr", "WriteRecovery"),
        timing("trp", "RowPrecharge"),
        timing("trcd", "RowToColumn"),
        call("GenerateCode_XMC_start", "xmc_sdram_start", {Keep, "CASLatency", "StartDelay", "AutoRefreshNumber"}),
        call("GenerateCode_XMC_refresh", "xmc_sdram_refresh_counter_set", {"RefreshCount"}),
        interruptEnable("Interrupt_RefreshError"),
        interruptRemarks(),
    };
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
        .branches = lineBranches(),
    };
    return topics;
}

const PeripheralTopics &xmcCardTopics()
{
    static const PeripheralTopics topics{
        .kind = "XMC_PCCard",
        .function = cardTopics(),
        .branches = lineBranches(),
    };
    return topics;
}

const PeripheralTopics &xmcSdramTopics()
{
    static const PeripheralTopics topics{
        .kind = "XMC_SDRAM",
        .function = sdramTopics(),
        .branches = {{"_RefreshError_FLAG", isTrue("Interrupt_RefreshError")}},
    };
    return topics;
}

} // namespace ChipLoom
