#include "Design/GPIO_Configuration.h"

#include "Design/Design.h"
#include "Model/XmlSettings.h"
#include "Model/XmlTree.h"
#include "Model/xmloperation.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom {

struct GPIO_Configuration::State
{
    std::vector<SignalsGPIOSetting> entries;
    QString showType;
};

namespace {

const QString PlainRows = QStringLiteral("GPIO");
const QString ShowType = QStringLiteral("ShowType");
const QString LabelWord = QStringLiteral("Label");
const QString PinWord = QStringLiteral("Pin");

// Of several signals on one pin the one that drives it, or else multiplexes it, decides its electrical mode.
int strength(const QString &ioMode)
{
    if (ioMode.startsWith(QLatin1String("MuxOutput")))
        return 3;
    if (ioMode.startsWith(QLatin1String("Mux")))
        return 2;
    return ioMode.isEmpty() ? 0 : 1;
}

QList<ModeIPValidSignal> placedSignals(const DevicePinInfo &info)
{
    QList<ModeIPValidSignal> placed;
    for (const MCUPinsBaseInfo &pin : info.m_deviceBaseInfoList) {
        if (!pin.validFlag)
            continue;
        ModeIPValidSignal row;
        QStringList names;
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus != Not_Config && row.signalUserLabel.isEmpty())
                row.signalUserLabel = state.signalUserLabel; // the pin's, whichever function bears it
            if (!(state.configStatus & IP_Config))
                continue;
            if (names.isEmpty())
                row.signalInPinName = state.signalInPinName.isEmpty() ? pin.pinName : state.signalInPinName;
            names.append(state.signalName);
            if (strength(state.signalIOMode) > strength(row.signalIOMode))
                row.signalIOMode = state.signalIOMode;
        }
        if (names.isEmpty())
            continue;
        row.signalInPinNum = pin.pinNumber;
        row.InPinName = pin.pinName;
        row.signalName = names.join(QLatin1Char(';'));
        placed.append(row);
    }
    return placed;
}

QString firstSignal(const QString &joined)
{
    return joined.section(QLatin1Char(';'), 0, 0);
}

/// The modules in whose tables a row stands, "GPIO" for a plain function.
QStringList holdersOf(const Design &design, const SignalsGPIOSetting &row)
{
    QStringList holders;
    for (const QString &name : row.signalName.split(QLatin1Char(';')))
        holders += design.holdersOf(name);
    return holders;
}

bool offers(const RefParameter &parameter, const QString &value)
{
    const QList<PossibleValue> &list = parameter.PossibleValueList;
    return std::any_of(list.begin(), list.end(), [&](const PossibleValue &entry) { return entry.Value == value; });
}

bool isNamed(const RefParameter &parameter, const QString &name)
{
    return parameter.Name == name || parameter.Comment_EN.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

GPIO_Configuration::GPIO_Configuration(Design &design, PeripheralsBaseInfo info,
                                       std::shared_ptr<const PeripheralTree> tree)
    : m_design(design), m_baseInfo(std::move(info)), m_GPIOXMLFileInfo(std::move(tree))
{
    readSettings();
    const QList<GPIO_Pin_Define_Info> defines = GetGPIOPinDefines(m_GPIOXMLFileInfo->root());
    m_ownPinDefines = std::make_shared<std::vector<GPIO_Pin_Define_Info>>(defines.begin(), defines.end());
    for (GPIO_Pin_Define_Info &define : *m_ownPinDefines)
        m_pinDefines.append(&define);
    connect(&design.pins(), &PinAssignment::SendAllConfigedSignals, this,
            [this](const DevicePinInfo *pins, bool flag, const QString &ipName, const QStringList &) {
                ReciveAllConfigedSignals(pins, flag, ipName);
            });
}

void GPIO_Configuration::readSettings()
{
    m_settings.clear();
    for (const XMLElementInfo &element : m_GPIOXMLFileInfo->root().subElementInfoList) {
        const QString name = attributeValue(element, QLatin1String("Name"));
        const auto known = [&](const RefParameter &other) { return other.Name == name; };
        if (element.tagName == QLatin1String("RefParameter") &&
            std::none_of(m_settings.begin(), m_settings.end(), known))
            m_settings.append(m_GPIOXMLFileInfo->GetRefParameter(instanceName(), name));
    }
}

// ---- Rows ----

QList<const SignalsGPIOSetting *> GPIO_Configuration::rowsOf(const QString &instanceName) const
{
    QList<const SignalsGPIOSetting *> rows;
    for (const SignalsGPIOSetting *row : m_rows) {
        if (instanceName == allRows() || holdersOf(m_design, *row).contains(instanceName))
            rows.append(row);
    }
    return rows;
}

QStringList GPIO_Configuration::instancesWithRows() const
{
    QStringList instances;
    for (const SignalsGPIOSetting *row : m_rows)
        instances += holdersOf(m_design, *row);
    instances.removeAll(PlainRows);
    instances.removeDuplicates();
    instances.sort();
    return instances;
}

SignalsGPIOSetting *GPIO_Configuration::rowOnPin(const QString &pinName) const
{
    // Tables ask by the whole name for every cell: that is the quick way.
    for (SignalsGPIOSetting *row : m_rows) {
        if (row->InPinName == pinName)
            return row;
    }
    for (SignalsGPIOSetting *row : m_rows) {
        if (IsPinNameSame(row->InPinName, pinName))
            return row;
    }
    return nullptr;
}

const SignalsGPIOSetting *GPIO_Configuration::row(const QString &pinName) const
{
    return rowOnPin(pinName);
}

const RefParameter *GPIO_Configuration::setting(const SignalsGPIOSetting &row, const QString &parameterName)
{
    for (const RefParameter &parameter : row.signalPinGPIOInfoList) {
        if (parameter.Name == parameterName)
            return &parameter;
    }
    return nullptr;
}

bool GPIO_Configuration::isModified(const SignalsGPIOSetting &row)
{
    return !row.signalUserLabel.isEmpty() ||
           std::any_of(row.signalPinGPIOInfoList.begin(), row.signalPinGPIOInfoList.end(),
                       [](const RefParameter &parameter) { return parameter.CurrentValue != parameter.DefaultValue; });
}

QStringList GPIO_Configuration::GetSignalInPinNameList(const QString &signalName) const
{
    const DevicePinInfo &pins = m_design.pinInfo();
    QStringList names;
    if (isPlainFunction(signalName))
        return names;
    for (const SignalPlace &place : pins.placesOf(signalName)) {
        if (pins.pin(place.pin).validFlag)
            names.append(pins.pin(place.pin).pinName);
    }
    return names;
}

QList<RefParameter> GPIO_Configuration::GetSignalsGPIOSettingStructIOMode(const SignalsGPIOSetting &setting) const
{
    QList<RefParameter> list;
    const RefMode mode = m_GPIOXMLFileInfo->GetRefMode(setting.signalIOMode);
    for (const Parameter &restriction : mode.ParamList) {
        RefParameter parameter = m_GPIOXMLFileInfo->GetRefParameter(instanceName(), restriction.Name);
        if (parameter.Name.isEmpty())
            continue;
        QList<PossibleValue> &values = parameter.PossibleValueList;
        if (!restriction.PossibleValueList.isEmpty()) {
            const auto excluded = [&](const PossibleValue &value) {
                return !restriction.PossibleValueList.contains(value.Value);
            };
            values.erase(std::remove_if(values.begin(), values.end(), excluded), values.end());
        }
        if (!values.isEmpty() && !offers(parameter, parameter.DefaultValue))
            parameter.DefaultValue = values.first().Value;
        parameter.CurrentValue = parameter.DefaultValue;
        list.append(parameter);
    }
    return list;
}

/// Rebuilds the settings of an entry for an IO mode, keeping the values that the mode offers too.
void GPIO_Configuration::adoptIOMode(SignalsGPIOSetting &entry, const QString &ioMode) const
{
    if (entry.signalIOMode == ioMode)
        return;
    const QList<RefParameter> former = entry.signalPinGPIOInfoList;
    entry.signalIOMode = ioMode;
    entry.signalPinGPIOInfoList = GetSignalsGPIOSettingStructIOMode(entry);
    for (RefParameter &parameter : entry.signalPinGPIOInfoList) {
        const auto had = std::find_if(former.begin(), former.end(),
                                      [&](const RefParameter &other) { return other.Name == parameter.Name; });
        if (had == former.end())
            continue;
        if (offers(parameter, had->CurrentValue))
            parameter.CurrentValue = had->CurrentValue;
        else if (!parameter.PossibleValueList.isEmpty())
            parameter.CurrentValue = parameter.PossibleValueList.first().Value;
    }
}

void GPIO_Configuration::ReciveAllConfigedSignals(const DevicePinInfo *info, bool, const QString &)
{
    UpdataSignalsGPIOSettingStruct(placedSignals(*info));
    emit SendGPIOSettingChangeSignals();
}

/// The entry that stands for a placement: the pin's row if one plain function follows another there, the entry
/// remembered for just these signals, or a new one.
SignalsGPIOSetting *GPIO_Configuration::entryFor(const ModeIPValidSignal &placed,
                                                 const QList<SignalsGPIOSetting *> &formerRows, bool &followsPlain)
{
    followsPlain = false;
    SignalsGPIOSetting *same = nullptr;
    for (const auto &entry : m_AllSignalsGPIOSettingList) {
        if (entry->InPinName == placed.InPinName && entry->signalName == placed.signalName)
            same = entry.get();
    }
    if (isPlainFunction(placed.signalName)) {
        for (SignalsGPIOSetting *former : formerRows) {
            if (former == same || former->InPinName != placed.InPinName || !isPlainFunction(former->signalName))
                continue;
            if (same)
                same->InPinName.clear(); // superseded; swept with the forgotten ones
            former->signalName = placed.signalName;
            followsPlain = true;
            return former;
        }
    }
    if (same)
        return same;
    m_AllSignalsGPIOSettingList.push_back(std::make_unique<SignalsGPIOSetting>());
    SignalsGPIOSetting *entry = m_AllSignalsGPIOSettingList.back().get();
    entry->InPinName = placed.InPinName;
    entry->signalName = placed.signalName;
    return entry;
}

void GPIO_Configuration::UpdataSignalsGPIOSettingStruct(const QList<ModeIPValidSignal> &validSignals)
{
    const QList<SignalsGPIOSetting *> formerRows = m_rows;
    for (SignalsGPIOSetting *row : formerRows)
        row->validFlag = false;
    m_rows.clear();
    QList<ModeIPValidSignal> labelsToMove;
    for (const ModeIPValidSignal &placed : validSignals) {
        bool followsPlain = false;
        SignalsGPIOSetting *entry = entryFor(placed, formerRows, followsPlain);
        entry->signalInPinNum = placed.signalInPinNum;
        entry->signalInPinName = placed.signalInPinName;
        adoptIOMode(*entry, placed.signalIOMode);
        if (followsPlain && entry->signalUserLabel != placed.signalUserLabel) {
            labelsToMove.append(placed);
            labelsToMove.last().signalUserLabel = entry->signalUserLabel;
        } else {
            entry->signalUserLabel = placed.signalUserLabel;
        }
        entry->validFlag = true;
        m_rows.append(entry);
    }
    const auto forgotten = [](const std::unique_ptr<SignalsGPIOSetting> &entry) {
        return !entry->validFlag && (entry->InPinName.isEmpty() || !isModified(*entry));
    };
    m_AllSignalsGPIOSettingList.erase(
        std::remove_if(m_AllSignalsGPIOSettingList.begin(), m_AllSignalsGPIOSettingList.end(), forgotten),
        m_AllSignalsGPIOSettingList.end());
    for (const ModeIPValidSignal &label : qAsConst(labelsToMove))
        m_design.pins().ReceiveGPIOSignalsUserLabelChange(label.InPinName, label.signalName, label.signalUserLabel);
}

// ---- Changes ----

DesignAnswer GPIO_Configuration::setValue(const QString &pinName, const QString &name, const QString &value)
{
    SignalsGPIOSetting *row = rowOnPin(pinName);
    if (!row)
        return {DesignReason::NoSettingsOnPin, {pinName}};
    const auto parameter = std::find_if(row->signalPinGPIOInfoList.begin(), row->signalPinGPIOInfoList.end(),
                                        [&](const RefParameter &entry) { return isNamed(entry, name); });
    if (parameter == row->signalPinGPIOInfoList.end())
        return {DesignReason::UnknownParameter, {row->InPinName, name}};
    for (const PossibleValue &offered : qAsConst(parameter->PossibleValueList)) {
        if (offered.Value != value && offered.Comment_EN.compare(value, Qt::CaseInsensitive) != 0)
            continue;
        if (parameter->CurrentValue != offered.Value) {
            parameter->CurrentValue = offered.Value;
            emit SendGPIOSettingChangeSignals();
        }
        return {};
    }
    const auto declared = std::find_if(m_settings.begin(), m_settings.end(),
                                       [&](const RefParameter &entry) { return entry.Name == parameter->Name; });
    const bool known = declared != m_settings.end() && offers(*declared, value);
    return {known ? DesignReason::ValueNotOffered : DesignReason::ValueNotInList, {parameter->Comment_EN, value}};
}

DesignAnswer GPIO_Configuration::setLabel(const QString &pinName, const QString &label)
{
    return m_design.pins().UserLabelEditFinished_Slot(pinName, label);
}

DesignAnswer GPIO_Configuration::SignalPinNameChangeSlot(const QString &pinName, const QString &newPinName)
{
    const SignalsGPIOSetting *row = rowOnPin(pinName);
    if (!row)
        return {DesignReason::NoSettingsOnPin, {pinName}};
    if (IsPinNameSame(row->InPinName, newPinName))
        return {};
    const QString signal = firstSignal(row->signalName);
    if (isPlainFunction(signal))
        return {DesignReason::ParameterClosed, {PinWord}};
    return m_design.pins().ReceiveSignalPinNameChange(signal, newPinName);
}

void GPIO_Configuration::SetGPIOSettingsDefaultValue(const QString &instanceName)
{
    QStringList labelled;
    for (SignalsGPIOSetting *row : qAsConst(m_rows)) {
        if (instanceName != allRows() && !holdersOf(m_design, *row).contains(instanceName))
            continue;
        for (RefParameter &parameter : row->signalPinGPIOInfoList)
            parameter.CurrentValue = parameter.DefaultValue;
        if (!row->signalUserLabel.isEmpty())
            labelled.append(row->InPinName);
    }
    for (const QString &pin : qAsConst(labelled))
        setLabel(pin, QString());
    emit SendGPIOSettingChangeSignals();
}

// ---- The part ----

bool GPIO_Configuration::handles(const DesignChange &change) const
{
    return change.section == QLatin1String("gpio");
}

DesignAnswer GPIO_Configuration::apply(const DesignChange &change)
{
    if (change.address == ShowType) {
        if (change.value != allRows() && change.value != PlainRows && !m_design.part(change.value))
            return {DesignReason::ValueNotInList, {ShowType, change.value}};
        m_showType = change.value;
        emit SendGPIOSettingChangeSignals();
        return {};
    }
    const int slash = change.address.lastIndexOf(QLatin1Char('/'));
    const QString pin = change.address.left(slash);
    const QString name = change.address.mid(slash + 1);
    if (slash <= 0)
        return {DesignReason::UnknownSetting, {change.section + QLatin1Char('/') + change.address}};
    if (name == LabelWord)
        return setLabel(pin, change.value);
    if (name == PinWord)
        return SignalPinNameChangeSlot(pin, change.value);
    return setValue(pin, name, change.value);
}

void GPIO_Configuration::reset()
{
    m_rows.clear();
    m_AllSignalsGPIOSettingList.clear();
    m_showType = allRows();
    emit SendGPIOSettingChangeSignals();
}

void GPIO_Configuration::updateLanguage()
{
    readSettings();
    for (const auto &entry : m_AllSignalsGPIOSettingList) {
        const QString ioMode = entry->signalIOMode;
        entry->signalIOMode.clear();
        adoptIOMode(*entry, ioMode);
    }
    emit SendGPIOSettingChangeSignals();
}

std::any GPIO_Configuration::save() const
{
    State state{{}, m_showType};
    for (const auto &entry : m_AllSignalsGPIOSettingList)
        state.entries.push_back(*entry);
    return state;
}

void GPIO_Configuration::restore(const std::any &saved)
{
    const State *state = std::any_cast<State>(&saved);
    if (!state)
        return;
    m_rows.clear();
    m_AllSignalsGPIOSettingList.clear();
    for (const SignalsGPIOSetting &entry : state->entries) {
        m_AllSignalsGPIOSettingList.push_back(std::make_unique<SignalsGPIOSetting>(entry));
        if (entry.validFlag)
            m_rows.append(m_AllSignalsGPIOSettingList.back().get());
    }
    m_showType = state->showType;
    emit SendGPIOSettingChangeSignals();
}

// ---- The design file ----

void GPIO_Configuration::writeSection(QXmlStreamWriter &writer) const
{
    writer.writeStartElement(QStringLiteral("GPIO"));
    writer.writeTextElement(ShowType, m_showType);
    const auto writeRow = [&writer](const QString &signal, const QString &pin, const QList<RefParameter> &values,
                                    const QString &label) {
        writer.writeStartElement(QStringLiteral("Signal"));
        writer.writeAttribute(QStringLiteral("SignalName"), signal);
        writer.writeAttribute(QStringLiteral("PinName"), pin);
        for (const RefParameter &parameter : values) {
            writer.writeEmptyElement(QStringLiteral("Parameters"));
            writer.writeAttribute(QStringLiteral("name"), parameter.Name);
            writer.writeAttribute(QStringLiteral("value"), parameter.CurrentValue);
        }
        if (!label.isEmpty())
            writer.writeTextElement(LabelWord, label);
        writer.writeEndElement();
    };
    for (const SignalsGPIOSetting *row : m_rows)
        writeRow(row->signalName, row->InPinName, row->signalPinGPIOInfoList, row->signalUserLabel);
    // What stands on a pin without effect has no row, but may have a label.
    for (const MCUPinsBaseInfo &pin : m_design.pinInfo().m_deviceBaseInfoList) {
        for (const PinSignalStruct &state : pin.pinSignalsList) {
            if (state.configStatus == Manual_Config && !state.signalUserLabel.isEmpty() && !row(pin.pinName))
                writeRow(state.signalName, pin.pinName, {}, state.signalUserLabel);
        }
    }
    writer.writeEndElement();
}

void GPIO_Configuration::readSection(const XMLElementInfo &root, QList<DesignProblem> &problems)
{
    const XMLElementInfo *section = ChipLoom::findChild(root, QLatin1String("GPIO"));
    if (!section)
        return;
    for (const XMLElementInfo &element : section->subElementInfoList) {
        if (element.tagName == ShowType) {
            apply({QStringLiteral("gpio"), ShowType, element.tagText});
        } else if (element.tagName == QLatin1String("Signal")) {
            const DesignAnswer answer = readRow(element, problems);
            if (!answer)
                problems.append({attributeValue(element, QLatin1String("PinName")), answer});
        }
    }
}

DesignAnswer GPIO_Configuration::readRow(const XMLElementInfo &element, QList<DesignProblem> &problems)
{
    const QString pin = attributeValue(element, QLatin1String("PinName"));
    const QString signal = attributeValue(element, QLatin1String("SignalName"));
    const SignalsGPIOSetting *row = this->row(pin);
    QList<XMLAttributeInfo> values;
    // What drives its pins by itself has none, and may have had some in the file of a former version.
    if (!row || !row->signalPinGPIOInfoList.isEmpty())
        GetSignalGPIOParamValue(element, values);
    const XMLElementInfo *label = ChipLoom::findChild(element, QLatin1String("Label"));
    // A label alone may be that of another function of the pin, which stands there without effect.
    if (row && !IsSignalSame(row->signalName, signal) && (!label || !values.isEmpty()))
        return {DesignReason::NotPlaced, {signal, pin}};
    for (const XMLAttributeInfo &value : qAsConst(values)) {
        const DesignAnswer answer = setValue(pin, value.attributeName, value.attributeValue);
        if (!answer)
            problems.append({pin + QLatin1Char('/') + value.attributeName, answer});
    }
    if (!label)
        return row ? DesignAnswer() : DesignAnswer{DesignReason::NotPlaced, {signal, pin}};
    return m_design.pins().ReceiveGPIOSignalsUserLabelChange(pin, firstSignal(signal), label->tagText);
}

void GPIO_Configuration::GetSignalGPIOParamValue(const XMLElementInfo &row, QList<XMLAttributeInfo> &values)
{
    for (const XMLElementInfo &element : row.subElementInfoList) {
        if (element.tagName == QLatin1String("Parameters"))
            values.append(
                {attributeValue(element, QLatin1String("name")), attributeValue(element, QLatin1String("value"))});
    }
}

} // namespace ChipLoom
