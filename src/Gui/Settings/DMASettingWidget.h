#pragma once

#include "Design/DesignReason.h"

#include <QWidget>

class QGroupBox;
class QLabel;
class QPushButton;

namespace ChipLoom {

class Design;
class DMA_Configuration;
class DMAParameterArea;
class DMASettingModel;
class SettingsTable;

/// DMA requests as a table, with the settings of the selected ones beneath. The same widget is the page of the
/// controller and a tab in the page of each peripheral that has requests.
class DMASettingWidget : public QWidget
{
    Q_OBJECT
public:
    /// `dma` belongs to `design`. An empty instance stands for all requests.
    DMASettingWidget(Design &design, DMA_Configuration &dma, const QString &instance, QWidget *parent = nullptr);

    SettingsTable *table() const { return m_DMARequestsTableWidget; }
    DMASettingModel *model() const { return m_model; }
    DMAParameterArea *parameterArea() const { return m_parameters; }
    QPushButton *addButton() const { return m_addButton; }
    QPushButton *deleteButton() const { return m_delButton; }

signals:
    /// A change was not taken; why.
    void refused(const QString &reason);

public slots:
    /// Adds a fresh row and lets the user choose its request; tells in a box if none could get a channel.
    void AddButtonClickedSlot();
    /// Takes the channels of the selected rows away.
    void DelButtonClickedSlot();

private:
    void refreshDAMSettingWidgetTable();
    void showParameters();
    void setParameter(const QString &name, const QString &value);
    void tell(const DesignAnswer &answer);

    Design &m_design;
    DMA_Configuration &m_dma;
    QString m_InstanceName;
    DMASettingModel *m_model;
    SettingsTable *m_DMARequestsTableWidget;
    DMAParameterArea *m_parameters;
    QGroupBox *m_TableSignalParam_GroupBox;
    QPushButton *m_addButton;
    QPushButton *m_delButton;
    QLabel *m_selectionHint;
    QLabel *m_note;
    int m_fittedRows = 0;
};

} // namespace ChipLoom
