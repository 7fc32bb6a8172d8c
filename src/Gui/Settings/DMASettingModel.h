#pragma once

#include "Design/DesignReason.h"
#include "Gui/Widgets/SettingsTable.h"
#include "Model/ShareParameter.h"

namespace ChipLoom {

class Design;
class DMA_Configuration;

/// The DMA requests of one peripheral, or all of them, as rows of a table: request, channel and what matters most of
/// the transfer. Behind the requests that have a channel a fresh row may stand, which waits for the choice of a
/// request.
class DMASettingModel : public SettingsModel
{
    Q_OBJECT
public:
    /// `dma` belongs to `design`. An empty instance stands for all requests.
    DMASettingModel(Design &design, DMA_Configuration &dma, QString instance, QObject *parent = nullptr);

    /// The request of a row, or null for the fresh one.
    const DMARequest *request(int row) const;
    /// Adds the fresh row if there is none, and gives its place.
    int addFreshRow();
    void dropFreshRow();
    /// Frees the channels of these rows.
    void remove(const QVector<int> &rows);
    /// Sets a parameter of a row's request through the design.
    bool setParameter(int row, const QString &name, const QString &value);

    static constexpr int RequestColumn = 0;
    static constexpr int ChannelColumn = 1;
    static constexpr int DirectionColumn = 2;

    /// The settings of a request stand beneath the table too.
    bool isOptional(int column) const override { return column > DirectionColumn; }

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

signals:
    /// A request or a channel could not be had; to be told in a box.
    void requestRefused(const ChipLoom::DesignAnswer &answer);
    /// A row has another request or channel than before.
    void requestChosen(int row);

protected:
    int columns() const override;
    QString title(int column) const override;

private:
    struct Column
    {
        QString parameter;
        QString title;
    };

    void refresh();
    QVariant requestData(const DMARequest *request, int role) const;
    QVariant channelData(const DMARequest &request, int role) const;
    QVariant parameterData(const DMARequest &request, const RefParameter &parameter, int role) const;
    const RefParameter *parameter(const DMARequest &request, int column) const;
    SettingsChoices requestChoices(const DMARequest *request) const;
    SettingsChoices channelChoices(const DMARequest &request) const;

    Design &m_design;
    DMA_Configuration &m_dma;
    QString m_instance;
    QVector<Column> m_columns;
    QList<const DMARequest *> m_rows;
    bool m_hasFreshRow = false;
};

} // namespace ChipLoom
