#pragma once

#include "Model/xmloperation.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace ChipLoom {

class DeviceCatalogue;
class SearchBox;
class SeriesInfoBrowser;

/// Chooses a device by line, series and name, or by searching for its name.
class New_Design_Select : public QDialog
{
    Q_OBJECT
public:
    /// The catalogue must outlive the dialog.
    New_Design_Select(const DeviceCatalogue &catalogue, const XMLOperation &xml, QWidget *parent = nullptr);

    /// What was chosen; empty unless the dialog was accepted.
    QString Get_MCUSerialName() const { return m_MCUSerialName; }
    QString Get_MCUName() const { return m_MCUName; }
    QString Get_MCUPackage() const { return m_MCUPackage; }

private:
    void createLayout();
    void ProductLine_ComboBox_IndexChanged(int index);
    void MCUSerial_ComboBox_IndexChanged(int index);
    void Device_ComboBox_IndexChanged(int index);
    void QueryActived(int index);
    void QueryEditingFinished();
    void Ok_PushButton_Clicked();

    const ProductLineStruct *currentLine() const;
    const MCUSerialStruct *currentSeries() const;
    const MCUDeviceStruct *currentDevice() const;

    const DeviceCatalogue &m_catalogue;
    QComboBox *m_ProductLine_ComboBox;
    QComboBox *m_MCUSerial_ComboBox;
    QComboBox *m_Device_ComboBox;
    SearchBox *m_QueryDevice_ComboBox;
    QLineEdit *m_package_LineEdit;
    QLineEdit *m_flash_LineEdit;
    QLineEdit *m_sram_LineEdit;
    QLineEdit *m_core_LineEdit;
    QLineEdit *m_frequency_LineEdit;
    SeriesInfoBrowser *m_MCUSerialInfo_TextBrowser;
    QPushButton *m_ok_PushButton;

    QString m_MCUSerialName;
    QString m_MCUName;
    QString m_MCUPackage;
};

} // namespace ChipLoom
