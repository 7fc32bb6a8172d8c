#include "Gui/Diagrams/DiagramFeed.h"

#include "Design/IP_ParamSettingConfiguration.h"
#include "Gui/Diagrams/CAN_Configuration_Diagram.h"
#include "Gui/Diagrams/I2C_Configuration_Diagram.h"
#include "Gui/Diagrams/OP_Configuration_Diagram.h"
#include "Gui/Diagrams/SPI_Configuration_Diagram.h"
#include "Gui/Diagrams/TMR_Configuration_Diagram.h"
#include "Gui/Diagrams/WDT_Configuration_Diagram.h"
#include "Gui/Diagrams/WWDT_Configuration_Diagram.h"

#include <algorithm>
#include <array>

namespace ChipLoom {

namespace {

template <typename Diagram, typename Signal, typename Slot>
ConfigurationDiagram *connected(DiagramFeed &feed, Signal signal, Slot slot, QWidget *parent)
{
    auto *diagram = new Diagram(parent);
    QObject::connect(&feed, signal, diagram, slot);
    return diagram;
}

} // namespace

// Which instances have a drawing: their name is this one with a number, or without.
struct DiagramFeed::Kind
{
    const char *name;
    ConfigurationDiagram *(*make)(DiagramFeed &feed, QWidget *parent);
    const char *needs; ///< parameters, with blanks between them: without any of them there is nothing to show
    void (*send)(DiagramFeed &feed, const ParameterReader &parameters);
};

const DiagramFeed::Kind *DiagramFeed::kindOf(const QString &instance)
{
    static constexpr std::array<Kind, 7> Kinds{{
        {"CAN",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<CAN_Configuration_Diagram>(feed, &DiagramFeed::SendCanParamValue,
                                                         &CAN_Configuration_Diagram::ReciveCanParamValue, parent);
         },
         "BaudRate NominalBaudRate",
         [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendCanParamValue(canBitsOf(set)); }},
        {"SPI",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<SPI_Configuration_Diagram>(feed, &DiagramFeed::SendSPIParamValue,
                                                         &SPI_Configuration_Diagram::ReciveSPIParamValue, parent);
         },
         "CLKPolarity",
         [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendSPIParamValue(spiFrameOf(set)); }},
        {"I2C",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<I2C_Configuration_Diagram>(feed, &DiagramFeed::SendI2CParamValue,
                                                         &I2C_Configuration_Diagram::ReciveI2CParamValue, parent);
         },
         "ClockSpeed",
         [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendI2CParamValue(i2cBusTimesOf(set)); }},
        {"TMR",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<TMR_Configuration_Diagram>(feed, &DiagramFeed::SendTMRParamValue,
                                                         &TMR_Configuration_Diagram::ReciveTMRParamValue, parent);
         },
         "Period",
         [](DiagramFeed &feed, const ParameterReader &set) {
             if (const std::optional<TimerCount> count = timerCountOf(set))
                 emit feed.SendTMRParamValue(*count);
         }},
        {"WDT",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<WDT_Configuration_Diagram>(feed, &DiagramFeed::SendWDTParamValue,
                                                         &WDT_Configuration_Diagram::ReciveWDTParamValue, parent);
         },
         "Counter",
         [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendWDTParamValue(watchdogCountOf(set)); }},
        {"WWDT",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<WWDT_Configuration_Diagram>(feed, &DiagramFeed::SendWWDTParamValue,
                                                          &WWDT_Configuration_Diagram::ReciveWWDTParamValue, parent);
         },
         "Counter",
         [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendWWDTParamValue(watchdogCountOf(set)); }},
        {"OP",
         [](DiagramFeed &feed, QWidget *parent) {
             return connected<OP_Configuration_Diagram>(feed, &DiagramFeed::SendOPModeType,
                                                        &OP_Configuration_Diagram::ReciveOPModeType, parent);
         },
         "OP_Mode", [](DiagramFeed &feed, const ParameterReader &set) { emit feed.SendOPModeType(opModeOf(set)); }},
    }};
    const auto kind = std::find_if(Kinds.begin(), Kinds.end(), [&](const Kind &row) {
        const QString name = QLatin1String(row.name);
        const QString rest = instance.mid(name.size());
        return instance.startsWith(name) &&
               std::all_of(rest.begin(), rest.end(), [](QChar character) { return character.isDigit(); });
    });
    return kind == Kinds.end() ? nullptr : kind;
}

DiagramFeed::DiagramFeed(const IP_ParamSettingConfiguration &parameters, QObject *parent)
    : QObject(parent), m_parameters(parameters)
{
}

ConfigurationDiagram *DiagramFeed::makeDiagram(const QString &instance, QWidget *parent)
{
    m_kind = kindOf(instance);
    return m_kind ? m_kind->make(*this, parent) : nullptr;
}

bool DiagramFeed::feed()
{
    const ParameterReader set = m_parameters.reader();
    if (!m_kind)
        return false;
    const QStringList needs = QString(QLatin1String(m_kind->needs)).split(QLatin1Char(' '));
    if (std::none_of(needs.begin(), needs.end(), [&](const QString &name) { return set.has(name); }))
        return false;
    m_kind->send(*this, set);
    return true;
}

} // namespace ChipLoom
