#include "Gui/Settings/GPIOSettingWidget.h"

#include "Design/Design.h"
#include "Design/GPIO_Configuration.h"
#include "Gui/App/Style.h"
#include "Gui/Settings/GPIOControlDelegate.h"
#include "Gui/Settings/GPIOSettingModel.h"
#include "Gui/Settings/LabelField.h"
#include "Gui/Widgets/ListedComboBox.h"
#include "Gui/Widgets/SettingsTable.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableView>
#include <QVBoxLayout>

namespace ChipLoom {

GPIOSettingWidget::GPIOSettingWidget(Design &design, const QString &instance, QWidget *parent)
    : QWidget(parent), m_design(design), m_model(new GPIOSettingModel(design, instance, this)),
      m_table(new SettingsTable(*m_model, this)),
      m_TableSignalParam_GroupBox(new QGroupBox(tr("GPIO Parameters"), this)), m_selectionHint(new QLabel(this)),
      m_UserLabel_LineEdit(new LabelField(design.prompt()))
{
    Style::setRole(m_selectionHint, Style::Role::Hint);
    m_selectionHint->setTextFormat(Qt::PlainText);
    auto *boxes = new QGridLayout;
    auto *boxLayout = new QVBoxLayout(m_TableSignalParam_GroupBox);
    boxLayout->addWidget(m_selectionHint);
    boxLayout->addLayout(boxes);
    makeBoxes(*boxes);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_TableSignalParam_GroupBox);

    connect(m_model, &SettingsModel::refused, this, &GPIOSettingWidget::refused);
    connect(m_table, &SettingsTable::selectionChanged, this, &GPIOSettingWidget::RefreshGPIOSettings);
    connect(m_table, &SettingsTable::rowClicked, this, &GPIOSettingWidget::TableLineClickedSlot);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &GPIOSettingWidget::RefreshGPIOSettings);
    connect(m_model, &QAbstractItemModel::modelReset, this, &GPIOSettingWidget::RefreshGPIOSettings);
    m_table->view()->setItemDelegate(new GPIOControlDelegate(*m_table, m_model->labelColumn(), design.prompt()));
    m_table->fitColumns();
    RefreshGPIOSettings();
}

void GPIOSettingWidget::setInstance(const QString &instance)
{
    m_model->setInstance(instance);
}

/// Three fields a line, each beneath its caption: the tab of a peripheral is narrow.
void GPIOSettingWidget::makeBoxes(QGridLayout &grid)
{
    constexpr int FieldsInLine = 3;
    const QList<RefParameter> &settings = m_design.gpio()->settings();
    const auto add = [&grid, this](int place, const QString &caption, QWidget *field) {
        auto *label = new QLabel(caption, m_TableSignalParam_GroupBox);
        label->setBuddy(field);
        grid.addWidget(label, place / FieldsInLine * 2, place % FieldsInLine);
        grid.addWidget(field, place / FieldsInLine * 2 + 1, place % FieldsInLine);
        grid.setColumnStretch(place % FieldsInLine, 1);
    };
    for (int i = 0; i < settings.size(); ++i) {
        auto *box = new ListedComboBox(m_TableSignalParam_GroupBox);
        m_boxes.insert(settings.at(i).Name, box);
        add(i, tr("%1:").arg(settings.at(i).Comment), box);
        connect(box, QOverload<int>::of(&QComboBox::activated), this, [this, i, box](int) {
            const QModelIndex index =
                m_table->viewIndex(m_table->selectedRows().value(0, -1), m_model->settingColumn(i));
            if (index.isValid())
                m_table->setForSelection(index, box->currentData(), Qt::EditRole);
        });
    }
    add(settings.size(), tr("Label:"), m_UserLabel_LineEdit);
    connect(m_UserLabel_LineEdit, &LabelField::labelEdited, this, &GPIOSettingWidget::setLabel);
}

void GPIOSettingWidget::setLabel(const QString &label)
{
    const QModelIndex index = m_table->viewIndex(m_table->selectedRows().value(0, -1), m_model->labelColumn());
    if (index.isValid())
        m_table->setForSelection(index, label, Qt::EditRole);
}

/// The pin of the row blinks in the drawing.
void GPIOSettingWidget::TableLineClickedSlot(int row)
{
    if (const SignalsGPIOSetting *setting = m_model->setting(row))
        m_design.pins().search().ReceiveGPIOQuerySignals(setting->InPinName,
                                                         setting->signalName.section(QLatin1Char(';'), 0, 0));
}

void GPIOSettingWidget::ReceivePinCurrentSignal(const QString &signal, int pinNumber)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const SignalsGPIOSetting *setting = m_model->setting(row);
        if (setting->signalInPinNum == pinNumber && (signal.isEmpty() || IsSignalSame(setting->signalName, signal)))
            return m_table->selectRow(row);
    }
}

/// Takes the first selected row into the boxes.
void GPIOSettingWidget::RefreshGPIOSettings()
{
    const QVector<int> rows = m_table->selectedRows();
    const SignalsGPIOSetting *row = rows.isEmpty() ? nullptr : m_model->setting(rows.first());
    m_TableSignalParam_GroupBox->setEnabled(row != nullptr);
    if (!row)
        m_selectionHint->setText(tr("Select a row to set its parameters here."));
    else if (rows.size() == 1)
        m_selectionHint->setText(row->InPinName + QLatin1String("  ") + row->signalName);
    else
        m_selectionHint->setText(tr("A change goes to all %1 selected rows.").arg(rows.size()));
    for (auto box = m_boxes.constBegin(); box != m_boxes.constEnd(); ++box)
        fillBox(*box.value(), row, box.key());
    const QString label = row ? row->signalUserLabel : QString();
    if (m_UserLabel_LineEdit->text() != label)
        m_UserLabel_LineEdit->setText(label);
}

void GPIOSettingWidget::fillBox(QComboBox &box, const SignalsGPIOSetting *row, const QString &parameterName)
{
    const QSignalBlocker blocker(box);
    box.clear();
    const RefParameter *parameter = row ? GPIO_Configuration::setting(*row, parameterName) : nullptr;
    box.setEnabled(parameter && parameter->PossibleValueList.size() > 1);
    if (!parameter)
        return;
    box.setToolTip(parameter->Description);
    for (const PossibleValue &value : parameter->PossibleValueList)
        box.addItem(value.Comment, value.Value);
    box.setCurrentIndex(box.findData(parameter->CurrentValue));
}

} // namespace ChipLoom
