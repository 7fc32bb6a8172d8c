#pragma once

#include "Gui/Widgets/SettingsTable.h"
#include "Model/ShareParameter.h"

namespace ChipLoom {

class Design;
class ModuleConfiguration;

/// The parameters of a peripheral that say what interrupts: ticks, or choices where there is more than on and off.
class InterruptSettingModel : public SettingsModel
{
    Q_OBJECT
public:
    enum Column { NameColumn, ValueColumn };

    InterruptSettingModel(Design &design, ModuleConfiguration &peripheral, QObject *parent = nullptr);

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

protected:
    int columns() const override;
    QString title(int column) const override;

private:
    void refresh();
    const RefParameter *parameter(const QModelIndex &index) const;
    QVariant valueData(const RefParameter &parameter, int role) const;

    Design &m_design;
    ModuleConfiguration &m_peripheral;
};

} // namespace ChipLoom
