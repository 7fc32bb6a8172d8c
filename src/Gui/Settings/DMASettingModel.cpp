#include "Gui/Settings/DMASettingModel.h"

#include "Design/DMA_Configuration.h"
#include "Design/Design.h"
#include "Design/DesignTexts.h"
#include "Design/ParameterChecks.h"
#include "Gui/Modes/ModeTexts.h"

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

const QString FreshRow = QStringLiteral("+");

bool isChoice(const SettingsChoices &choices, const QString &value)
{
    return std::any_of(choices.begin(), choices.end(), [&](const SettingsChoice &one) { return one.value == value; });
}

QString shownValue(const RefParameter &parameter)
{
    const QString comment = GetCommentByValue(parameter.PossibleValueList, parameter.CurrentValue);
    return comment.isEmpty() ? parameter.CurrentValue : comment;
}

bool isDeclared(const DMA_INFO &info, const QString &parameter)
{
    return std::any_of(info.m_AllDMARequestList.begin(), info.m_AllDMARequestList.end(),
                       [&](const DMARequest *request) {
                           return std::any_of(request->DMAParamInfoList.begin(), request->DMAParamInfoList.end(),
                                              [&](const DMAParamInfo &one) { return one.InfoName == parameter; });
                       });
}

} // namespace

DMASettingModel::DMASettingModel(Design &design, DMA_Configuration &dma, QString instance, QObject *parent)
    : SettingsModel(parent), m_design(design), m_dma(dma), m_instance(std::move(instance))
{
    m_columns = {{QStringLiteral("Direction"), tr("Direction")}, {QStringLiteral("Priority"), tr("Priority")}};
    const QVector<Column> stream{{QStringLiteral("FIFOMode"), tr("FIFO")},
                                 {QStringLiteral("FIFOThreshold"), tr("FIFO Threshold")},
                                 {QStringLiteral("MemBurst"), tr("Memory Burst")},
                                 {QStringLiteral("PeriphBurst"), tr("Peripheral Burst")}};
    for (const Column &column : stream) {
        if (m_dma.isEdma() && isDeclared(m_dma.dmaInfo(), column.parameter))
            m_columns.append(column);
    }
    connect(&m_dma, &DMA_Configuration::settingsChanged, this, &DMASettingModel::refresh);
    refresh();
}

void DMASettingModel::refresh()
{
    m_rows = m_dma.rows(m_instance);
    QStringList keys;
    for (const DMARequest *request : qAsConst(m_rows))
        keys.append(request->channelName);
    if (m_hasFreshRow)
        keys.append(FreshRow);
    setKeys(keys);
}

const DMARequest *DMASettingModel::request(int row) const
{
    return m_rows.value(row, nullptr);
}

int DMASettingModel::addFreshRow()
{
    m_hasFreshRow = true;
    refresh();
    return rowOf(FreshRow);
}

void DMASettingModel::dropFreshRow()
{
    m_hasFreshRow = false;
    refresh();
}

void DMASettingModel::remove(const QVector<int> &rows)
{
    QStringList channels;
    bool fresh = false;
    for (const int row : rows) {
        if (const DMARequest *request = this->request(row))
            channels.append(request->channelName);
        else
            fresh = true;
    }
    for (const QString &channel : qAsConst(channels))
        m_design.apply({m_dma.typeName().toLower(), channel, QString()});
    if (fresh)
        dropFreshRow();
}

bool DMASettingModel::setParameter(int row, const QString &name, const QString &value)
{
    const DMARequest *request = this->request(row);
    if (!request)
        return false;
    const DesignAnswer answer =
        m_design.apply({m_dma.typeName().toLower(), request->channelName + QLatin1Char('/') + name, value});
    if (!answer)
        emit refused(answerText(answer));
    return answer.accepted();
}

// ---- Cells ----

int DMASettingModel::columns() const
{
    return int(m_columns.size()) + 2;
}

QString DMASettingModel::title(int column) const
{
    if (column == RequestColumn)
        return m_dma.isEdma() ? tr("EDMA Request") : tr("DMA Request");
    if (column == ChannelColumn)
        return tr("Channel");
    return m_columns.at(column - 2).title;
}

const RefParameter *DMASettingModel::parameter(const DMARequest &request, int column) const
{
    const QString name = column < 2 ? QString() : m_columns.at(column - 2).parameter;
    for (const RefParameter &parameter : request.RefParameterfoList) {
        if (parameter.Name == name && parameter.Visible)
            return &parameter;
    }
    return nullptr;
}

SettingsChoices DMASettingModel::requestChoices(const DMARequest *request) const
{
    SettingsChoices choices;
    if (request)
        choices.append({request->requestName, request->requestName});
    for (const QString &name : m_dma.getDMARequestNameList(m_instance)) {
        if (!isChoice(choices, name))
            choices.append({name, name});
    }
    return choices;
}

SettingsChoices DMASettingModel::channelChoices(const DMARequest &request) const
{
    SettingsChoices choices{{request.channelName, request.channelName}};
    for (const QString &channel : m_dma.getAvailableChannelByRequest(request))
        choices.append({channel, channel});
    return choices;
}

QVariant DMASettingModel::requestData(const DMARequest *request, int role) const
{
    if (role == Qt::DisplayRole)
        return request ? request->requestName : tr("Select");
    if (role == Qt::EditRole)
        return request ? request->requestName : QString();
    if (role == ChoicesRole)
        return QVariant::fromValue(requestChoices(request));
    return {};
}

QVariant DMASettingModel::channelData(const DMARequest &request, int role) const
{
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return request.channelName;
    if (role == ChoicesRole)
        return QVariant::fromValue(channelChoices(request));
    return {};
}

QVariant DMASettingModel::parameterData(const DMARequest &request, const RefParameter &parameter, int role) const
{
    if (role == Qt::DisplayRole)
        return shownValue(parameter);
    if (role == Qt::EditRole)
        return parameter.CurrentValue;
    if (role == Qt::ToolTipRole)
        return parameterToolTip(parameter);
    if (role == BadRole)
        return !m_dma.isGood(request, parameter);
    if (role == Qt::FontRole && parameter.Enable && parameter.CurrentValue != parameter.DefaultValueBackup) {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role != ChoicesRole || parameterKind(parameter.Type) != ParameterKind::List)
        return {};
    SettingsChoices choices;
    for (const PossibleValue &value : m_dma.offeredValues(request, parameter))
        choices.append({value.Comment.isEmpty() ? value.Value : value.Comment, value.Value});
    return QVariant::fromValue(choices);
}

QVariant DMASettingModel::data(const QModelIndex &index, int role) const
{
    const DMARequest *request = this->request(index.row());
    if (index.column() == RequestColumn)
        return requestData(request, role);
    if (!request)
        return {};
    if (index.column() == ChannelColumn)
        return channelData(*request, role);
    const RefParameter *shown = parameter(*request, index.column());
    return shown ? parameterData(*request, *shown, role) : QVariant();
}

Qt::ItemFlags DMASettingModel::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags shown = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const DMARequest *request = this->request(index.row());
    if (index.column() == RequestColumn)
        return shown | Qt::ItemIsEditable;
    if (!request)
        return shown;
    if (index.column() == ChannelColumn)
        return channelChoices(*request).size() > 1 ? shown | Qt::ItemIsEditable : shown;
    const RefParameter *setting = parameter(*request, index.column());
    return setting && setting->Enable ? shown | Qt::ItemIsEditable : shown;
}

bool DMASettingModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole)
        return false;
    const DMARequest *request = this->request(index.row());
    const QString text = value.toString();
    if (request && index.column() >= 2) {
        const RefParameter *setting = parameter(*request, index.column());
        return setting && setParameter(index.row(), setting->Name, text);
    }
    // One edit for several rows gives a request or a channel to the first that can have it.
    const SettingsChoices choices = index.column() == RequestColumn ? requestChoices(request)
                                    : request                       ? channelChoices(*request)
                                                                    : SettingsChoices();
    if (!isChoice(choices, text))
        return false;
    const QString section = m_dma.typeName().toLower();
    DesignAnswer answer;
    if (!request) {
        m_hasFreshRow = false;
        answer = m_design.apply({section, QStringLiteral("any"), text});
        // Refused, the row asks again.
        m_hasFreshRow = !answer.accepted();
        refresh();
    } else if (index.column() == RequestColumn) {
        answer = m_design.apply({section, request->channelName + QLatin1String("/Request"), text});
    } else if (text != request->channelName) {
        answer = m_design.apply({section, m_dma.addressOf(*request), text});
    }
    if (answer)
        emit requestChosen(index.row());
    else
        emit requestRefused(answer);
    return answer.accepted();
}

} // namespace ChipLoom
