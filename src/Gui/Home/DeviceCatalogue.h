#pragma once

#include "Model/ShareParameter.h"

#include <QHash>

namespace ChipLoom {

/// The whole catalogue with an index of its devices.
class DeviceCatalogue
{
public:
    explicit DeviceCatalogue(QList<ProductLineStruct> lines = {});

    const QList<ProductLineStruct> &lines() const { return m_lines; }
    bool isEmpty() const { return m_homes.isEmpty(); }

    /// The name of the first series or line that holds the device, that of the line as it is shown; empty if none does.
    QString GetDeviceSerialName(const QString &device) const;
    QString GetDeviceProductLinelInfo(const QString &device) const;
    /// In the order of the catalogue.
    QStringList GetAllDevicesName() const;

    const MCUSerialStruct *findSeries(const QString &series) const;

    /// Takes the texts of the language of the interface.
    void TranslatorUI();

private:
    struct Home
    {
        int line;
        int series;
    };
    QList<ProductLineStruct> m_lines;
    QHash<QString, Home> m_homes; // by device name, the first one
};

} // namespace ChipLoom
