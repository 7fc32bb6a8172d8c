#pragma once

#include "Gui/Widgets/SettingsTable.h"
#include "Model/ShareParameter.h"

#include <QVector>

namespace ChipLoom {

class Design;
class NVIC_Configuration;

/// Vectors as rows of a table: all of them by the page's choice, or those of one peripheral.
class NVICSettingModel : public SettingsModel
{
    Q_OBJECT
public:
    enum Column { NameColumn, EnabledColumn, HandlerColumn, PreemptionColumn, SubColumn, RtosColumn };

    /// `design` has a table of vectors. An empty `instance` stands for the whole table.
    NVICSettingModel(Design &design, QString instance, QObject *parent = nullptr);

    const MCUNVICSetting *vector(int row) const;

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

protected:
    /// The column of the RTOS stands only while it runs.
    int columns() const override;
    QString title(int column) const override;
    bool isOptional(int column) const override;

private:
    void refresh();
    QVariant nameData(const MCUNVICSetting &vector, int role) const;

    Design &m_design;
    NVIC_Configuration &m_nvic;
    QString m_instance;
    bool m_rtosColumn = false;
};

} // namespace ChipLoom
