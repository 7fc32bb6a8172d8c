#pragma once

#include <QHash>
#include <QWidget>

class QComboBox;
class QGridLayout;
class QGroupBox;
class QLabel;

namespace ChipLoom {

class Design;
class GPIOSettingModel;
class LabelField;
class SettingsTable;
struct SignalsGPIOSetting;

/// The settings of pins as a table, with the settings of the selected rows as boxes beneath. The same widget is a tab
/// in the page of a peripheral and the body of the page of all pins.
class GPIOSettingWidget : public QWidget
{
    Q_OBJECT
public:
    /// `instance` as for `GPIO_Configuration::rowsOf`.
    GPIOSettingWidget(Design &design, const QString &instance, QWidget *parent = nullptr);

    void setInstance(const QString &instance);

    SettingsTable *table() const { return m_table; }
    GPIOSettingModel *model() const { return m_model; }
    /// The box of a setting.
    QComboBox *settingBox(const QString &parameterName) const { return m_boxes.value(parameterName); }
    LabelField *labelField() const { return m_UserLabel_LineEdit; }

public slots:
    /// A pin was clicked in the drawing: selects its row if the table has it. `signal` tells rows of one position
    /// apart; empty takes the first.
    void ReceivePinCurrentSignal(const QString &signal, int pinNumber);

signals:
    /// A change was not taken; why.
    void refused(const QString &reason);

private:
    void makeBoxes(QGridLayout &grid);
    void TableLineClickedSlot(int row);
    void RefreshGPIOSettings();
    void fillBox(QComboBox &box, const SignalsGPIOSetting *row, const QString &parameterName);
    void setLabel(const QString &label);

    Design &m_design;
    GPIOSettingModel *m_model;
    SettingsTable *m_table;
    QGroupBox *m_TableSignalParam_GroupBox;
    QLabel *m_selectionHint;
    QHash<QString, QComboBox *> m_boxes;
    LabelField *m_UserLabel_LineEdit;
};

} // namespace ChipLoom
