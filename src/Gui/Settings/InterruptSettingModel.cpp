#include "Gui/Settings/InterruptSettingModel.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ModuleConfiguration.h"
#include "Design/ParameterChecks.h"

#include <algorithm>

namespace ChipLoom {

namespace {

const QString On = QStringLiteral("TRUE");
const QString Off = QStringLiteral("FALSE");

bool isSwitch(const RefParameter &parameter)
{
    const QList<PossibleValue> &values = parameter.PossibleValueList;
    return values.size() == 2 && std::all_of(values.begin(), values.end(), [](const PossibleValue &value) {
               return value.Value == On || value.Value == Off;
           });
}

} // namespace

InterruptSettingModel::InterruptSettingModel(Design &design, ModuleConfiguration &peripheral, QObject *parent)
    : SettingsModel(parent), m_design(design), m_peripheral(peripheral)
{
    connect(&peripheral.parameters(), &IP_ParamSettingConfiguration::Send_RefreshParamTabWidget_Signal, this,
            &InterruptSettingModel::refresh);
    refresh();
}

void InterruptSettingModel::refresh()
{
    QStringList keys;
    for (const RefParameter &parameter : m_peripheral.parameters().GetRefParameterList()) {
        if (isInterruptParameter(parameter))
            keys.append(parameter.Name);
    }
    setKeys(keys);
}

const RefParameter *InterruptSettingModel::parameter(const QModelIndex &index) const
{
    return m_peripheral.parameters().parameter(rowKey(index.row()));
}

int InterruptSettingModel::columns() const
{
    return ValueColumn + 1;
}

QString InterruptSettingModel::title(int column) const
{
    return column == NameColumn ? tr("Interrupt") : tr("Enabled");
}

QVariant InterruptSettingModel::valueData(const RefParameter &parameter, int role) const
{
    if (isSwitch(parameter))
        return role == Qt::CheckStateRole ? QVariant(parameter.CurrentValue == On ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    if (role == Qt::DisplayRole)
        return GetCommentByValue(parameter.PossibleValueList, parameter.CurrentValue);
    if (role == Qt::EditRole)
        return parameter.CurrentValue;
    if (role != ChoicesRole)
        return {};
    SettingsChoices choices;
    for (const PossibleValue &value : parameter.PossibleValueList) {
        if (m_peripheral.parameters().isOffered(value))
            choices.append({value.Comment, value.Value});
    }
    return QVariant::fromValue(choices);
}

QVariant InterruptSettingModel::data(const QModelIndex &index, int role) const
{
    const RefParameter *parameter = this->parameter(index);
    if (!parameter)
        return {};
    if (role == BadRole)
        return !m_peripheral.parameters().GetOneParamStatus(*parameter);
    if (role == ClosedRole)
        return !parameter->Enable;
    if (role == Qt::ToolTipRole)
        return parameter->Description;
    if (index.column() == ValueColumn)
        return valueData(*parameter, role);
    return role == Qt::DisplayRole ? QVariant(parameter->Comment) : QVariant();
}

Qt::ItemFlags InterruptSettingModel::flags(const QModelIndex &index) const
{
    const RefParameter *parameter = this->parameter(index);
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (!parameter || index.column() == NameColumn || !parameter->Enable)
        return shown;
    return shown | (isSwitch(*parameter) ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

bool InterruptSettingModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const RefParameter *parameter = this->parameter(index);
    if (!parameter || index.column() == NameColumn || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const QString text = role == Qt::EditRole ? value.toString() : value.toInt() == Qt::Checked ? On : Off;
    const QString address = m_peripheral.instanceName() + QLatin1Char('/') + parameter->Name;
    const DesignAnswer answer = m_design.apply({QStringLiteral("param"), address, text});
    if (!answer)
        emit refused(answerText(answer));
    return answer.accepted();
}

} // namespace ChipLoom
