#include "Model/PeripheralFiles.h"

#include <utility>

namespace ChipLoom {

PeripheralFiles::PeripheralFiles(XMLOperation reader, QString series)
    : m_reader(std::move(reader)), m_series(std::move(series))
{
}

std::shared_ptr<const PeripheralTree> PeripheralFiles::get(const QString &name, const QString &version)
{
    const QString file = m_reader.peripheralFile(m_series, name, version);
    std::shared_ptr<const PeripheralTree> &tree = m_trees[file];
    if (!tree)
        tree = std::make_shared<const PeripheralTree>(m_reader.GetIPXMLInfo(file));
    return tree;
}

std::shared_ptr<const PeripheralTree> PeripheralFiles::get(const PeripheralsBaseInfo &info)
{
    return get(info.Name, info.VersionFile);
}

} // namespace ChipLoom
