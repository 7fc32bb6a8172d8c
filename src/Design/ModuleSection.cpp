#include "Design/ModuleConfiguration.h"

#include "Design/Design.h"
#include "Design/NVIC_Configuration.h"
#include "Design/ParameterChecks.h"
#include "Model/xmloperation.h"

#include <QSet>
#include <QXmlStreamWriter>

#include <algorithm>
#include <utility>

// A module in the design file:
//
//     <USART1>
//         <Mode><ModeSub name="Mode" value="Asynchronous"/></Mode>
//         <Parameters><ParametersSub name="BaudRate" value="9600"/></Parameters>
//         <Interrupts><InterruptsSub name="InterruptTransmit" value="TRUE"/></Interrupts>
//     </USART1>
//
// The last for peripherals alone; they are parameters as well, and a file that has them among those is read the same.

namespace ChipLoom {

namespace {

// Entries that depend on each other settle within as many rounds as the longest chain among them. A file whose entries
// undo each other never settles.
constexpr int MaxRounds = 32;

const QString Disable = QStringLiteral("Disable");
const QString Unticked = QStringLiteral("FALSE");

void writeList(QXmlStreamWriter &xml, const QString &tag, const QList<XMLAttributeInfo> &entries)
{
    if (entries.isEmpty())
        return;
    xml.writeStartElement(tag);
    for (const XMLAttributeInfo &entry : entries) {
        xml.writeEmptyElement(tag + QLatin1String("Sub"));
        xml.writeAttribute(QStringLiteral("name"), entry.attributeName);
        xml.writeAttribute(QStringLiteral("value"), entry.attributeValue);
    }
    xml.writeEndElement();
}

// A baud rate brings its sampling point along, so the one goes ahead and the other comes last.
int rankOf(const XMLAttributeInfo &saved)
{
    if (saved.attributeName == QLatin1String("BaudRate"))
        return 0;
    return saved.attributeName == QLatin1String("Sample_Point") ? 2 : 1;
}

// As after a merge of two designs.
void keepFirstOfEachName(QList<XMLAttributeInfo> &entries)
{
    QSet<QString> names;
    const auto isAgain = [&names](const XMLAttributeInfo &entry) {
        const bool known = names.contains(entry.attributeName);
        names.insert(entry.attributeName);
        return known;
    };
    entries.erase(std::remove_if(entries.begin(), entries.end(), isAgain), entries.end());
}

// Parameters stand in the order in which their modes were chosen. Reading chooses again in file order, so modes are
// written as their parameters stand; those without parameters, on which others may depend, go ahead.
std::vector<const ModeControl *> inOrderOfParameters(const std::vector<std::unique_ptr<ModeControl>> &controls,
                                                     const IP_ParamSettingConfiguration &configuration)
{
    const QList<RefParameter> &parameters = configuration.GetRefParameterList();
    const auto firstOf = [&parameters](const ModeControl *control) {
        for (int i = 0; i < parameters.size(); ++i) {
            if (parameters.at(i).BaseMode == control->modeName())
                return i;
        }
        return -1;
    };
    std::vector<std::pair<int, const ModeControl *>> ranked;
    for (const std::unique_ptr<ModeControl> &control : controls)
        ranked.emplace_back(firstOf(control.get()), control.get());
    std::stable_sort(ranked.begin(), ranked.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<const ModeControl *> ordered;
    for (const auto &[rank, control] : ranked)
        ordered.push_back(control);
    return ordered;
}

} // namespace

void ModuleConfiguration::writeSection(QXmlStreamWriter &xml) const
{
    QList<XMLAttributeInfo> modes;
    const QStringList fromReset = modesFromReset();
    for (const ModeControl *control : inOrderOfParameters(m_controls, m_ParamSettingConfiguration)) {
        const QString name = savedModeName(*control);
        if (control->isOn())
            modes.append({name, control->isCheckBox() ? QStringLiteral("TRUE") : control->currentName()});
        else if (fromReset.contains(control->modeName()) || standsOnPins(*control))
            modes.append({name, control->isCheckBox() ? Unticked : Disable});
    }
    QList<XMLAttributeInfo> parameters;
    QList<XMLAttributeInfo> interrupts;
    for (const RefParameter &parameter : m_ParamSettingConfiguration.GetRefParameterList()) {
        if (!parameter.Visible || !parameter.Enable)
            continue;
        const bool apart = hasInterruptsSection() && isInterruptParameter(parameter);
        (apart ? interrupts : parameters).append({parameter.Name, parameter.CurrentValue});
    }
    // The list is in the order in which modes brought the parameters along; a design opened again has another.
    for (QList<XMLAttributeInfo> *list : {&parameters, &interrupts})
        std::stable_sort(list->begin(), list->end(),
                         [](const auto &a, const auto &b) { return a.attributeName < b.attributeName; });
    if (modes.isEmpty() && parameters.isEmpty() && interrupts.isEmpty())
        return;
    xml.writeStartElement(instanceName());
    writeList(xml, QStringLiteral("Mode"), modes);
    writeList(xml, QStringLiteral("Parameters"), parameters);
    writeList(xml, QStringLiteral("Interrupts"), interrupts);
    xml.writeEndElement();
}

void ModuleConfiguration::readSection(const XMLElementInfo &root, QList<DesignProblem> &problems)
{
    QList<XMLAttributeInfo> savedModes;
    QList<XMLAttributeInfo> savedParameters;
    QList<XMLAttributeInfo> savedInterrupts;
    if (!XMLOperation::GetModeAndParamValue(root, instanceName(), savedModes, savedParameters, savedInterrupts))
        return;
    savedParameters += savedInterrupts;
    QStringList named = modesFromReset();
    for (XMLAttributeInfo &mode : savedModes) {
        mode = modernMode(mode);
        named.append(mode.attributeName);
    }
    keepFirstOfEachName(savedModes);
    keepFirstOfEachName(savedParameters);
    std::stable_sort(savedParameters.begin(), savedParameters.end(),
                     [](const auto &a, const auto &b) { return rankOf(a) < rankOf(b); });

    // What the file does not name was off, though pins placed by hand may have chosen it meanwhile.
    for (const std::unique_ptr<ModeControl> &control : m_controls) {
        if (!named.contains(control->modeName()))
            control->setIndex(0);
    }
    QList<DesignProblem> refused;
    for (int round = 0; round < MaxRounds; ++round) {
        bool changed = false;
        refused.clear();
        const auto take = [&](const XMLAttributeInfo &saved, const std::optional<DesignAnswer> &answer) {
            changed = changed || (answer && answer->accepted());
            if (answer && !answer->accepted())
                refused.append({instanceName() + QLatin1Char('/') + saved.attributeName, *answer});
        };
        for (const XMLAttributeInfo &mode : qAsConst(savedModes))
            take(mode, readMode(mode));
        for (const XMLAttributeInfo &parameter : qAsConst(savedParameters))
            take(parameter, readParameter(parameter));
        if (!changed)
            break;
    }
    // Pins placed by hand may have chosen some of them earlier than the file does.
    QStringList order;
    for (const XMLAttributeInfo &mode : qAsConst(savedModes))
        order.append(mode.attributeName);
    m_ParamSettingConfiguration.orderModes(order);
    problems += refused;
}

std::optional<DesignAnswer> ModuleConfiguration::readMode(const XMLAttributeInfo &saved)
{
    const ModeControl *control = this->control(saved.attributeName);
    if (!control && (saved.attributeValue == Disable || saved.attributeValue == Unticked))
        return std::nullopt; // as the device has it
    const int before = control ? control->index() : 0;
    const DesignAnswer answer = chooseItem(saved.attributeName, saved.attributeValue);
    if (answer && control->index() == before)
        return std::nullopt;
    return answer;
}

std::optional<DesignAnswer> ModuleConfiguration::readParameter(const XMLAttributeInfo &saved)
{
    const RefParameter *parameter = m_ParamSettingConfiguration.parameter(saved.attributeName);
    if (parameter && parameter->CurrentValue == saved.attributeValue)
        return std::nullopt;
    // A list that follows from other values was empty when the design was saved.
    if (parameter && saved.attributeValue.isEmpty() && !parameter->PossibleValueList.isEmpty())
        return std::nullopt;
    const DesignAnswer answer = m_ParamSettingConfiguration.ParamModefySlot(
        saved.attributeName, saved.attributeValue,
        parameter ? baseOf(*parameter, saved.attributeValue) : CURRENTVALUETYPE_NONE);
    if (answer)
        m_ParamSettingConfiguration.HandleTimeout();
    return answer;
}

namespace {

/// Worth a look, but it can be had as it stands.
bool isOnlyRemarked(DesignReason reason)
{
    return reason == DesignReason::RateOff || reason == DesignReason::SamplingTimeShared ||
           reason == DesignReason::ChannelAtOnce || reason == DesignReason::ValueDoubtful;
}

} // namespace

void ModuleConfiguration::collectProblems(QList<DesignProblem> &problems) const
{
    const QString place = instanceName() + QLatin1Char('/');
    if (m_note.kind == ModeNote::Kind::SelectBox)
        problems.append({place + m_note.argument, {DesignReason::ModeIncomplete, {instanceName(), m_note.argument}}});
    else if (m_note.kind == ModeNote::Kind::Reason)
        problems.append({instanceName(), m_note.reason});
    for (const RefParameter &parameter : m_ParamSettingConfiguration.GetRefParameterList()) {
        if (const DesignAnswer warning = m_ParamSettingConfiguration.warning(parameter.Name); !warning)
            problems.append({place + parameter.Name, warning, isOnlyRemarked(warning.reason)});
        else if (parameter.Visible && !m_ParamSettingConfiguration.GetOneParamStatus(parameter))
            problems.append({place + parameter.Name, m_ParamSettingConfiguration.valueAnswer(parameter)});
    }
    const NVIC_Configuration *nvic = m_design.nvic();
    if (const DesignAnswer unheard = nvic ? nvic->eventsRemark(instanceName()) : DesignAnswer(); !unheard)
        problems.append({instanceName(), unheard, true});
}

} // namespace ChipLoom
