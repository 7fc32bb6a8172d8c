#include "Gui/Settings/NVICSettingModel.h"

#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/NVIC_Configuration.h"
#include "Gui/Modes/ModeTexts.h"

namespace ChipLoom {

namespace {

using Field = NVIC_Configuration::Field;

Field fieldOf(int column)
{
    return Field(column - NVICSettingModel::EnabledColumn);
}

bool isNumber(int column)
{
    return column == NVICSettingModel::PreemptionColumn || column == NVICSettingModel::SubColumn;
}

SettingsChoices numbers(int from, int to)
{
    SettingsChoices choices;
    for (int number = from; number <= to; ++number)
        choices.append({QString::number(number), QString::number(number)});
    return choices;
}

} // namespace

NVICSettingModel::NVICSettingModel(Design &design, QString instance, QObject *parent)
    : SettingsModel(parent), m_design(design), m_nvic(*design.nvic()), m_instance(std::move(instance)),
      m_rtosColumn(m_nvic.FREERTOSEnableFlag())
{
    connect(&m_nvic, &NVIC_Configuration::SendRefreshNVIC, this, &NVICSettingModel::refresh);
    refresh();
}

void NVICSettingModel::refresh()
{
    if (m_rtosColumn != m_nvic.FREERTOSEnableFlag()) {
        beginResetModel();
        m_rtosColumn = m_nvic.FREERTOSEnableFlag();
        endResetModel();
    }
    QStringList keys;
    for (const MCUNVICSetting *vector :
         m_instance.isEmpty() ? m_nvic.vectorsShown(m_nvic.showMode()) : m_nvic.vectorsOf(m_instance))
        keys.append(vector->ValueName);
    setKeys(keys);
}

const MCUNVICSetting *NVICSettingModel::vector(int row) const
{
    return m_nvic.vector(rowKey(row));
}

int NVICSettingModel::columns() const
{
    return m_rtosColumn ? RtosColumn + 1 : int(RtosColumn);
}

QString NVICSettingModel::title(int column) const
{
    switch (column) {
    case NameColumn:
        return tr("NVIC Interrupt Table");
    case EnabledColumn:
        return tr("Enabled");
    case HandlerColumn:
        return tr("Generate IRQ Handler");
    case PreemptionColumn:
        return tr("Preemption Priority");
    case SubColumn:
        return tr("Sub Priority");
    default:
        return tr("Uses FreeRTOS functions");
    }
}

/// The group that is fixed has no bits for the second priority.
bool NVICSettingModel::isOptional(int column) const
{
    return column == SubColumn && m_nvic.isPriorityGroupFixed();
}

QVariant NVICSettingModel::nameData(const MCUNVICSetting &vector, int role) const
{
    if (role == Qt::DisplayRole)
        return ownText(vector.NVICName_EN, vector.NVICName_CH, vector.NVICName);
    if (role == ClosedRole)
        return !vector.canBeSet;
    if (role != Qt::ToolTipRole)
        return {};
    QStringList lines{vector.ValueName, vector.HandlerName};
    if (!vector.relatedIPNameList.isEmpty())
        lines.append(vector.relatedIPNameList.join(QLatin1String(", ")));
    if (!vector.Diagnostic.isEmpty())
        lines.append(vector.Diagnostic);
    if (const DesignAnswer remark = m_nvic.remark(vector); !remark)
        lines.append(answerText(remark));
    return lines.join(QLatin1Char('\n'));
}

QVariant NVICSettingModel::data(const QModelIndex &index, int role) const
{
    const MCUNVICSetting *vector = this->vector(index.row());
    if (!vector)
        return {};
    if (index.column() == NameColumn)
        return nameData(*vector, role);
    const Field field = fieldOf(index.column());
    if (role == Qt::ToolTipRole)
        return answerText(m_nvic.fieldAnswer(*vector, field));
    if (role == ClosedRole)
        return !m_nvic.fieldAnswer(*vector, field).accepted();
    const QString value = NVIC_Configuration::fieldValue(*vector, field);
    if (!isNumber(index.column()))
        return role == Qt::CheckStateRole ? QVariant(value == QLatin1String("TRUE") ? Qt::Checked : Qt::Unchecked)
                                          : QVariant();
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return value;
    if (role != ChoicesRole)
        return {};
    return QVariant::fromValue(index.column() == PreemptionColumn
                                   ? numbers(vector->preemptionPriority_MinValue, vector->preemptionPriority_MaxValue)
                                   : numbers(vector->subPriority_MinValue, vector->subPriority_MaxValue));
}

Qt::ItemFlags NVICSettingModel::flags(const QModelIndex &index) const
{
    const MCUNVICSetting *vector = this->vector(index.row());
    if (!vector)
        return Qt::NoItemFlags;
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == NameColumn || !m_nvic.fieldAnswer(*vector, fieldOf(index.column())))
        return shown;
    return shown | (isNumber(index.column()) ? Qt::ItemIsEditable : Qt::ItemIsUserCheckable);
}

bool NVICSettingModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    const MCUNVICSetting *vector = this->vector(index.row());
    if (!vector || index.column() == NameColumn || (role != Qt::EditRole && role != Qt::CheckStateRole))
        return false;
    const QString text =
        role == Qt::EditRole ? value.toString() : QLatin1String(value.toInt() == Qt::Checked ? "TRUE" : "FALSE");
    const QString address =
        vector->ValueName + QLatin1Char('/') + NVIC_Configuration::fieldName(fieldOf(index.column()));
    const DesignAnswer answer = m_design.apply({QStringLiteral("nvic"), address, text});
    if (!answer)
        emit refused(answerText(answer));
    return answer.accepted();
}

} // namespace ChipLoom
