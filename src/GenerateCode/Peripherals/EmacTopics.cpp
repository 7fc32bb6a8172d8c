#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"

#include <algorithm>
#include <array>
#include <span>

namespace ChipLoom {

namespace {

const QStringList &ethernetPins()
{
    static const QStringList pins{"MDC",       "MDIO",       "MII_TX_CLK",   "MII_TX_EN",   "MII_TXD0",
                                  "MII_TXD1",  "MII_TXD2",   "MII_TXD3",     "MII_RX_CLK",  "MII_RX_DV",
                                  "MII_RXD0",  "MII_RXD1",   "MII_RXD2",     "MII_RXD3",    "MII_RX_ER",
                                  "MII_COL",   "MII_CRS",    "RMII_REF_CLK", "RMII_CRS_DV", "RMII_RXD0",
                                  "RMII_RXD1", "RMII_TX_EN", "RMII_TXD0",    "RMII_TXD1",   "PPS_OUT"};
    return pins;
}

// What only a controller has whose wiring is chosen.
const QStringList &wiringPins()
{
    static const QStringList pins{"PHY_CLK", "MII_TX_ER", "RMII_RX_ER"};
    return pins;
}

// A link without a PHY has nothing to agree with.
QString autoNegotiation(const DeclaredGenerator &generator)
{
    const QString value = generator.Get_DefineString_Param(QStringLiteral("AutoNegotiation"));
    return value.isEmpty() ? QStringLiteral("EMAC_AUTO_NEGOTIATION_OFF") : value;
}

struct Define
{
    const char *name;
    const char *parameter;
};

constexpr std::array<Define, 3> PhyDefines{
    {{"EMAC_PHY_ADDRESS", "PHYAddress"}, {"EMAC_PHY_TIMEOUT", "PHYResetTimeout"}, {"EMAC_PHY_DELAY", "PHYDelay"}}};
constexpr std::array<Define, 2> BufferDefines{{{"EMAC_RX_BUFFERS", "RxBuffers"}, {"EMAC_TX_BUFFERS", "TxBuffers"}}};

bool writeDefines(const DeclaredGenerator &generator, std::span<const Define> defines, std::string &text)
{
    return std::all_of(defines.begin(), defines.end(), [&](const Define &define) {
        const QString opening = QLatin1String("#define ") + QLatin1String(define.name) + QLatin1Char(' ');
        return rewriteAll(text, opening + QLatin1String(R"(\w+)"),
                          opening + generator.Get_DefineString_Param(QLatin1String(define.parameter)));
    });
}

bool phyDefines(const DeclaredGenerator &generator, std::string &text)
{
    return writeDefines(generator, PhyDefines, text);
}

// What the stack above the controller has to know too stands as defines in the header.
bool defines(const DeclaredGenerator &generator, std::string &text)
{
    if (!writeDefines(generator, BufferDefines, text))
        return false;
    QStringList bytes;
    const QString address = generator.Get_DefineString_Param(QStringLiteral("MACAddress"));
    for (const QString &byte : address.split(QLatin1Char(':'), Qt::SkipEmptyParts))
        bytes.append(QLatin1String("0x") + byte.toUpper());
    const QLatin1String opening("#define EMAC_LOCAL_ADDRESS ");
    return rewriteAll(text, opening + QLatin1String(R"(\{[^}]*\})"),
                      opening + QLatin1Char('{') + bytes.join(QLatin1String(", ")) + QLatin1Char('}'));
}

std::vector<Topic> emacFunction()
{
    const QString wiring = QStringLiteral("wiring");
    const QStringList pins = ethernetPins() + wiringPins();
    std::vector<Topic> topics{pinDeclaration(pins), pinDefaults(pins)};
    for (const QString &name : ethernetPins())
        topics.push_back(pin(name.toLower(), name));
    for (const QString &name : wiringPins())
        topics.push_back(pin(name.toLower(), name).onlyWhen(wiring));
    topics.push_back(remap(ethernetPins()));
    const std::vector<Topic> rest{
        call("GenerateCode_EMAC_interface", "emac_media_interface_set", {"MediaInterface"}),
        section("GenerateCode_EMAC_phy_clock", "phy clock", isGiven("PHYClockSource"),
                {call("GenerateCode_EMAC_phy_clock", "emac_phy_clock_config",
                      {"PHYClockSource", orSample("PHYClockDivision")})})
            .onlyWhen(wiring),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.media_interface", "MediaInterface"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.auto_negotiation",
                   computed(&autoNegotiation)),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.speed", "Speed"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.duplex_mode", "DuplexMode"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.full_duplex_only", "FullDuplexOnly")
            .onlyWhen(wiring),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.checksum_mode", "ChecksumMode"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.receive_mode", "ReceiveMode"),
        section("GenerateCode_EMAC_phy", "phy", isOther("PHYModel", {"PHY_USER"})),
        section("GenerateCode_EMAC_time_stamps", "time stamps", isGiven("TimeStampUpdate"),
                {call("GenerateCode_EMAC_time_stamps", "emac_time_stamp_init", {"TimeStampUpdate"})})
            .onlyWhen(wiring),
        section("GenerateCode_EMAC_pps", "pps", isGiven("PPSFrequency"),
                {call("GenerateCode_EMAC_pps", "emac_pps_frequency_set", {"PPSFrequency"})}),
        section("GenerateCode_EMAC_pps", "pps form", isGiven("PPSForm"),
                {call("GenerateCode_EMAC_pps", "emac_pps_form_set", {"PPSForm"})})
            .onlyWhen(wiring),
        section("GenerateCode_EMAC_wake_up", "wake up", isGiven("WakeUpFrame"),
                {call("GenerateCode_EMAC_wake_up", "emac_wake_up_frame_set", {"WakeUpFrame"})})
            .onlyWhen(wiring),
        interruptEnable("Interrupt_TX"),
        interruptRemarks(),
    };
    append(topics, rest);
    return topics;
}

} // namespace

const PeripheralTopics &emacTopics()
{
    static const PeripheralTopics topics{
        .kind = "EMAC",
        .function = emacFunction(),
        .branches = {{"_RX_FLAG", isOneOf("ReceiveMode", {"EMAC_RX_INTERRUPT"})}, {"_TX_FLAG", isTrue("Interrupt_TX")}},
        .header = {edit("GenerateCode_EMAC_defines", &defines),
                   section("GenerateCode_EMAC_defines", "phy defines", isGiven("PHYAddress"),
                           {edit("GenerateCode_EMAC_defines", &phyDefines)})},
    };
    return topics;
}

} // namespace ChipLoom
