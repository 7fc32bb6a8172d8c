#pragma once

#include "Gui/Home/DeviceTableModel.h"

#include <QWidget>

class QComboBox;
class QLabel;
class QPushButton;

namespace ChipLoom {

/// Boxes that narrow the device table by what a device has. All are empty at first.
class DeviceFilterBar : public QWidget
{
    Q_OBJECT
public:
    /// Offers the values that the devices have.
    explicit DeviceFilterBar(const DeviceTableModel &devices, QWidget *parent = nullptr);

    DeviceFilter filter() const;
    void reset();
    void TranslatorUI();

signals:
    void filterChanged();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Box
    {
        QLabel *label;
        QComboBox *combo;
    };
    Box addBox(const QStringList &texts, const QVariantList &values);
    Box addNumberBox(int DeviceTableModel::Row::*field, const DeviceTableModel &devices, const QString &unit);

    Box m_package;
    Box m_flash;
    Box m_sram;
    Box m_pins;
    Box m_frequency;
    QPushButton *m_reset;
};

} // namespace ChipLoom
