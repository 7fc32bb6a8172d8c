#include "Gui/Home/New_Design_Select.h"

#include "Gui/App/Style.h"
#include "Gui/Home/DeviceCatalogue.h"
#include "Gui/Home/DeviceTableModel.h"
#include "Gui/Home/SeriesInfoBrowser.h"
#include "Gui/Widgets/SearchBox.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

namespace ChipLoom {

namespace {

QLineEdit *readOnlyField()
{
    auto *field = new QLineEdit;
    field->setReadOnly(true);
    return field;
}

} // namespace

New_Design_Select::New_Design_Select(const DeviceCatalogue &catalogue, const XMLOperation &xml, QWidget *parent)
    : QDialog(parent), m_catalogue(catalogue), m_ProductLine_ComboBox(new QComboBox),
      m_MCUSerial_ComboBox(new QComboBox), m_Device_ComboBox(new QComboBox), m_QueryDevice_ComboBox(new SearchBox),
      m_package_LineEdit(readOnlyField()), m_flash_LineEdit(readOnlyField()), m_sram_LineEdit(readOnlyField()),
      m_core_LineEdit(readOnlyField()), m_frequency_LineEdit(readOnlyField()),
      m_MCUSerialInfo_TextBrowser(new SeriesInfoBrowser(xml)), m_ok_PushButton(new QPushButton(tr("Ok")))
{
    setWindowTitle(tr("New Design"));
    Style::setRole(this, Style::Role::Window);
    createLayout();

    connect(m_ProductLine_ComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &New_Design_Select::ProductLine_ComboBox_IndexChanged);
    connect(m_MCUSerial_ComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &New_Design_Select::MCUSerial_ComboBox_IndexChanged);
    connect(m_Device_ComboBox, qOverload<int>(&QComboBox::currentIndexChanged), this,
            &New_Design_Select::Device_ComboBox_IndexChanged);
    connect(m_QueryDevice_ComboBox, qOverload<int>(&QComboBox::activated), this, &New_Design_Select::QueryActived);
    connect(m_QueryDevice_ComboBox->lineEdit(), &QLineEdit::textEdited, this, &New_Design_Select::QueryEditingFinished);

    for (const ProductLineStruct &line : catalogue.lines())
        m_ProductLine_ComboBox->addItem(shownName(line.ProductLineName, line.ProductLineName_CH));
    Device_ComboBox_IndexChanged(m_Device_ComboBox->currentIndex());
}

void New_Design_Select::createLayout()
{
    connect(m_QueryDevice_ComboBox, &SearchBox::downPressed, m_QueryDevice_ComboBox, &QComboBox::showPopup);
    m_QueryDevice_ComboBox->setCompleter(nullptr);
    m_QueryDevice_ComboBox->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (auto *popup = qobject_cast<QListView *>(m_QueryDevice_ComboBox->view()))
        popup->setUniformItemSizes(true);
    m_QueryDevice_ComboBox->addItems(m_catalogue.GetAllDevicesName());
    m_QueryDevice_ComboBox->setCurrentIndex(-1);
    m_QueryDevice_ComboBox->clearEditText();

    auto *form = new QFormLayout;
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->addRow(tr("Device Search:"), m_QueryDevice_ComboBox);
    form->addRow(tr("Product Line:"), m_ProductLine_ComboBox);
    form->addRow(tr("Device Serials:"), m_MCUSerial_ComboBox);
    form->addRow(tr("Device:"), m_Device_ComboBox);
    form->addRow(tr("Package:"), m_package_LineEdit);
    form->addRow(tr("Flash:"), m_flash_LineEdit);
    form->addRow(tr("SRAM:"), m_sram_LineEdit);
    form->addRow(tr("Core:"), m_core_LineEdit);
    form->addRow(tr("Frequency:"), m_frequency_LineEdit);
    for (QComboBox *box : std::initializer_list<QComboBox *>{m_QueryDevice_ComboBox, m_ProductLine_ComboBox,
                                                             m_MCUSerial_ComboBox, m_Device_ComboBox})
        box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    auto *cancel = new QPushButton(tr("Cancel"));
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_ok_PushButton, &QPushButton::clicked, this, &New_Design_Select::Ok_PushButton_Clicked);
    Style::setRole(m_ok_PushButton, Style::Role::Action);
    m_ok_PushButton->setDefault(true);
    cancel->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_ok_PushButton);
    buttons->addWidget(cancel);

    auto *halves = new QHBoxLayout;
    halves->addLayout(form, 2);
    halves->addWidget(m_MCUSerialInfo_TextBrowser, 3);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(halves, 1);
    layout->addLayout(buttons);
    resize(820, 420);
}

void New_Design_Select::ProductLine_ComboBox_IndexChanged(int)
{
    {
        const QSignalBlocker blocker(m_MCUSerial_ComboBox);
        m_MCUSerial_ComboBox->clear();
        if (const ProductLineStruct *line = currentLine()) {
            for (const MCUSerialStruct &series : line->MCUSerialList)
                m_MCUSerial_ComboBox->addItem(series.SeriaName);
        }
    }
    MCUSerial_ComboBox_IndexChanged(m_MCUSerial_ComboBox->currentIndex());
}

void New_Design_Select::MCUSerial_ComboBox_IndexChanged(int)
{
    {
        const QSignalBlocker blocker(m_Device_ComboBox);
        m_Device_ComboBox->clear();
        if (const MCUSerialStruct *series = currentSeries()) {
            for (const MCUDeviceStruct &device : series->MCUDeviceList)
                m_Device_ComboBox->addItem(device.DeviceName);
            m_MCUSerialInfo_TextBrowser->showSeries(series->SeriaName);
        }
    }
    Device_ComboBox_IndexChanged(m_Device_ComboBox->currentIndex());
}

void New_Design_Select::Device_ComboBox_IndexChanged(int)
{
    const MCUDeviceStruct *chosen = currentDevice();
    const MCUDeviceStruct device = chosen ? *chosen : MCUDeviceStruct();
    m_package_LineEdit->setText(device.DevicePackage);
    m_flash_LineEdit->setText(device.DeviceFlash);
    m_sram_LineEdit->setText(sramText(device));
    m_core_LineEdit->setText(device.DeviceCore);
    m_frequency_LineEdit->setText(device.DeviceFrequency);
    m_ok_PushButton->setEnabled(chosen != nullptr);
}

void New_Design_Select::QueryActived(int)
{
    QueryEditingFinished();
}

void New_Design_Select::QueryEditingFinished()
{
    if (m_QueryDevice_ComboBox->view()->isVisible())
        return;
    const QString wanted = m_QueryDevice_ComboBox->currentText().toUpper();
    Style::setInvalid(m_QueryDevice_ComboBox, false);
    if (wanted.isEmpty())
        return;
    // The first device whose name contains the text is chosen in all three boxes.
    const QList<ProductLineStruct> &lines = m_catalogue.lines();
    for (int line = 0; line < lines.size(); ++line) {
        const QList<MCUSerialStruct> &series = lines.at(line).MCUSerialList;
        for (int i = 0; i < series.size(); ++i) {
            const QList<MCUDeviceStruct> &devices = series.at(i).MCUDeviceList;
            for (int device = 0; device < devices.size(); ++device) {
                if (!devices.at(device).DeviceName.contains(wanted))
                    continue;
                m_ProductLine_ComboBox->setCurrentIndex(line);
                m_MCUSerial_ComboBox->setCurrentIndex(i);
                m_Device_ComboBox->setCurrentIndex(device);
                return;
            }
        }
    }
    Style::setInvalid(m_QueryDevice_ComboBox, true);
}

void New_Design_Select::Ok_PushButton_Clicked()
{
    const MCUSerialStruct *series = currentSeries();
    const MCUDeviceStruct *device = currentDevice();
    if (!series || !device)
        return;
    m_MCUSerialName = series->SeriaName;
    m_MCUName = device->DeviceName;
    m_MCUPackage = device->DevicePackage;
    accept();
}

const ProductLineStruct *New_Design_Select::currentLine() const
{
    const int index = m_ProductLine_ComboBox->currentIndex();
    return index < 0 ? nullptr : &m_catalogue.lines().at(index);
}

const MCUSerialStruct *New_Design_Select::currentSeries() const
{
    const ProductLineStruct *line = currentLine();
    const int index = m_MCUSerial_ComboBox->currentIndex();
    return line && index >= 0 ? &line->MCUSerialList.at(index) : nullptr;
}

const MCUDeviceStruct *New_Design_Select::currentDevice() const
{
    const MCUSerialStruct *series = currentSeries();
    const int index = m_Device_ComboBox->currentIndex();
    return series && index >= 0 ? &series->MCUDeviceList.at(index) : nullptr;
}

} // namespace ChipLoom
