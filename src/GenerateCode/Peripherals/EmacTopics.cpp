#include "GenerateCode/Peripherals/DeclaredGenerator.h"
#include "GenerateCode/TextEngine.h"

#include <array>

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

struct Define
{
    const char *name;
    const char *parameter;
};

constexpr std::array<Define, 5> Defines{{{"EMAC_PHY_ADDRESS", "PHYAddress"},
                                         {"EMAC_PHY_TIMEOUT", "PHYResetTimeout"},
                                         {"EMAC_PHY_DELAY", "PHYDelay"},
                                         {"EMAC_RX_BUFFERS", "RxBuffers"},
                                         {"EMAC_TX_BUFFERS", "TxBuffers"}}};

// What the stack above the controller has to know too stands as defines in the header.
bool defines(const DeclaredGenerator &generator, QString &text)
{
    for (const Define &define : Defines) {
        const QString opening = QLatin1String("#define ") + QLatin1String(define.name) + QLatin1Char(' ');
        if (!rewriteAll(text, opening + QLatin1String(R"(\w+)"),
                        opening + generator.Get_DefineString_Param(QLatin1String(define.parameter))))
            return false;
    }
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
    std::vector<Topic> topics{pinDeclaration(ethernetPins()), pinDefaults(ethernetPins())};
    for (const QString &name : ethernetPins())
        topics.push_back(pin(name.toLower(), name));
    topics.push_back(remap(ethernetPins()));
    const std::vector<Topic> rest{
        call("GenerateCode_EMAC_interface", "emac_media_interface_set", {"MediaInterface"}),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.media_interface", "MediaInterface"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.auto_negotiation", "AutoNegotiation"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.speed", "Speed"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.duplex_mode", "DuplexMode"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.checksum_mode", "ChecksumMode"),
        assignment("GenerateCode_EMAC_control", "emac_control_config_struct.receive_mode", "ReceiveMode"),
        section("GenerateCode_EMAC_phy", "phy", isOther("PHYModel", {"PHY_USER"})),
        section("GenerateCode_EMAC_pps", "pps", isGiven("PPSFrequency"),
                {call("GenerateCode_EMAC_pps", "emac_pps_frequency_set", {"PPSFrequency"})}),
        interruptEnable("Interrupt_TX"),
        interruptRemarks(),
    };
    topics.insert(topics.end(), rest.begin(), rest.end());
    return topics;
}

} // namespace

const PeripheralTopics &emacTopics()
{
    static const PeripheralTopics topics{
        .kind = "EMAC",
        .function = emacFunction(),
        .branches = {{"_RX_FLAG", isOneOf("ReceiveMode", {"EMAC_RX_INTERRUPT"})}, {"_TX_FLAG", isTrue("Interrupt_TX")}},
        .header = {edit("GenerateCode_EMAC_defines", &defines)},
    };
    return topics;
}

} // namespace ChipLoom
