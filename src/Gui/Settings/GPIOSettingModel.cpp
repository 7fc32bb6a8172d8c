#include "Gui/Settings/GPIOSettingModel.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/GPIO_Configuration.h"

namespace ChipLoom {

namespace {

QString address(const SignalsGPIOSetting &row, const QString &name)
{
    return row.InPinName + QLatin1Char('/') + name;
}

} // namespace

GPIOSettingModel::GPIOSettingModel(Design &design, QString instance, QObject *parent)
    : SettingsModel(parent), m_design(design), m_gpio(*design.gpio()), m_instance(std::move(instance))
{
    connect(&m_gpio, &GPIO_Configuration::SendGPIOSettingChangeSignals, this, &GPIOSettingModel::refresh);
    refresh();
}

void GPIOSettingModel::setInstance(const QString &instance)
{
    m_instance = instance;
    refresh();
}

void GPIOSettingModel::refresh()
{
    QStringList keys;
    for (const SignalsGPIOSetting *row : m_gpio.rowsOf(m_instance))
        keys.append(row->InPinName);
    setKeys(keys);
}

const SignalsGPIOSetting *GPIOSettingModel::setting(int row) const
{
    // Where all are shown a row stands at its own place, and a table asks for each many times.
    const QString pin = rowKey(row);
    const QList<SignalsGPIOSetting *> &all = m_gpio.GetAllSignalsGPIOSettingList();
    return row < all.size() && all.at(row)->InPinName == pin ? all.at(row) : m_gpio.row(pin);
}

int GPIOSettingModel::columns() const
{
    return int(m_gpio.settings().size()) + 4;
}

QString GPIOSettingModel::title(int column) const
{
    if (column == pinColumn())
        return tr("Pin Name");
    if (column == signalColumn())
        return tr("Signal on Pin");
    if (column == labelColumn())
        return tr("Label");
    if (column == modifiedColumn())
        return tr("Modified");
    return m_gpio.settings().at(column - settingColumn(0)).Comment;
}

const RefParameter *GPIOSettingModel::parameter(const QModelIndex &index) const
{
    const int number = index.column() - settingColumn(0);
    const SignalsGPIOSetting *row = setting(index.row());
    if (!row || number < 0 || number >= m_gpio.settings().size())
        return nullptr;
    return GPIO_Configuration::setting(*row, m_gpio.settings().at(number).Name);
}

SettingsChoices GPIOSettingModel::pinChoices(const SignalsGPIOSetting &row) const
{
    SettingsChoices choices;
    if (!row.signalName.contains(QLatin1Char(';'))) {
        for (const QString &pin : m_gpio.GetSignalInPinNameList(row.signalName))
            choices.append({pin, pin});
    }
    return choices;
}

QVariant GPIOSettingModel::settingData(const RefParameter &parameter, int role) const
{
    if (role == Qt::DisplayRole)
        return GetCommentByValue(parameter.PossibleValueList, parameter.CurrentValue);
    if (role == Qt::EditRole)
        return parameter.CurrentValue;
    if (role == Qt::ToolTipRole)
        return parameter.Description;
    if (role == ClosedRole)
        return parameter.PossibleValueList.size() < 2;
    if (role == Qt::FontRole && parameter.CurrentValue != parameter.DefaultValue) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role != ChoicesRole)
        return {};
    SettingsChoices choices;
    for (const PossibleValue &value : parameter.PossibleValueList)
        choices.append({value.Comment, value.Value});
    return QVariant::fromValue(choices);
}

QVariant GPIOSettingModel::data(const QModelIndex &index, int role) const
{
    const SignalsGPIOSetting *row = setting(index.row());
    if (!row)
        return {};
    if (const RefParameter *setting = parameter(index))
        return settingData(*setting, role);
    if (index.column() == pinColumn() && role == ChoicesRole)
        return QVariant::fromValue(pinChoices(*row));
    if (index.column() == modifiedColumn())
        return role == Qt::CheckStateRole ? QVariant(GPIO_Configuration::isModified(*row) ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    if (role == ClosedRole)
        return index.column() >= settingColumn(0) && index.column() < modifiedColumn();
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    if (index.column() == pinColumn())
        return row->InPinName;
    if (index.column() == signalColumn())
        return row->signalName;
    if (index.column() == labelColumn())
        return row->signalUserLabel;
    return role == Qt::DisplayRole ? QVariant(tr("n/a")) : QVariant();
}

Qt::ItemFlags GPIOSettingModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const SignalsGPIOSetting *row = setting(index.row());
    if (!row || index.column() == signalColumn() || index.column() == modifiedColumn())
        return shown;
    if (index.column() == labelColumn())
        return shown | Qt::ItemIsEditable;
    if (index.column() == pinColumn())
        return pinChoices(*row).size() > 1 ? shown | Qt::ItemIsEditable : shown;
    const RefParameter *setting = parameter(index);
    return setting && setting->PossibleValueList.size() > 1 ? shown | Qt::ItemIsEditable : shown;
}

bool GPIOSettingModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const SignalsGPIOSetting *row = setting(index.row());
    if (!row || role != Qt::EditRole)
        return false;
    QString name = QStringLiteral("Label");
    if (index.column() == pinColumn())
        name = QStringLiteral("Pin");
    else if (const RefParameter *setting = parameter(index))
        name = setting->Name;
    const DesignAnswer answer = m_design.apply({QStringLiteral("gpio"), address(*row, name), value.toString()});
    if (!answer)
        emit refused(answerText(answer));
    return answer.accepted();
}

} // namespace ChipLoom
