#pragma once

#include "Model/PeripheralTree.h"
#include "Model/xmloperation.h"

#include <QHash>

#include <memory>

namespace ChipLoom {

/// The peripheral files of one series, each read once: the five instances of a USART share one tree. A design keeps one
/// of these and lets it go with the device.
class PeripheralFiles
{
public:
    PeripheralFiles(XMLOperation reader, QString series);

    /// Never null; an empty tree if the file cannot be read, which is tried once only.
    std::shared_ptr<const PeripheralTree> get(const QString &name, const QString &version);
    std::shared_ptr<const PeripheralTree> get(const PeripheralsBaseInfo &info);

private:
    XMLOperation m_reader;
    QString m_series;
    QHash<QString, std::shared_ptr<const PeripheralTree>> m_trees; // by path
};

} // namespace ChipLoom
