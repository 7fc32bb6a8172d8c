#pragma once

#include "Gui/Widgets/SettingsTable.h"
#include "Model/ShareParameter.h"

namespace ChipLoom {

class Design;
class GPIO_Configuration;

/// The pins of one peripheral, or of all, as rows of a table: pin, signal, label, settings, and whether something
/// differs from the defaults.
class GPIOSettingModel : public SettingsModel
{
    Q_OBJECT
public:
    /// `design` has the settings of the pins. `instance` as for `GPIO_Configuration::rowsOf`.
    GPIOSettingModel(Design &design, QString instance, QObject *parent = nullptr);

    void setInstance(const QString &instance);
    /// The row as the design has it, or null.
    const SignalsGPIOSetting *setting(int row) const;

    int pinColumn() const { return 0; }
    int signalColumn() const { return 1; }
    int labelColumn() const { return 2; } ///< what tells pins apart stays in sight where room is short
    int settingColumn(int index) const { return 3 + index; }
    int modifiedColumn() const { return columns() - 1; }

    /// The settings of the selected rows stand beneath the table too.
    bool isOptional(int column) const override { return column >= settingColumn(0); }

    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;

protected:
    int columns() const override;
    QString title(int column) const override;

private:
    void refresh();
    const RefParameter *parameter(const QModelIndex &index) const;
    QVariant settingData(const RefParameter &parameter, int role) const;
    SettingsChoices pinChoices(const SignalsGPIOSetting &row) const;

    Design &m_design;
    GPIO_Configuration &m_gpio;
    QString m_instance;
};

} // namespace ChipLoom
