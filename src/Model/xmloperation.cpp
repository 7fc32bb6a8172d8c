#include "Model/xmloperation.h"

#include "Model/XmlTree.h"

namespace ChipLoom {

QString XMLOperation::mcuListFile() const
{
    return m_paths.databaseDir() + QLatin1String("/MCUList.xml");
}

QString XMLOperation::deviceFile(const QString &series, const QString &device) const
{
    return QStringLiteral("%1/device/%2/%3.xml").arg(m_paths.databaseDir(), series, device);
}

QString XMLOperation::seriesInfoFile(const QString &series, LANGUAGE language) const
{
    const QString suffix = QLatin1String(language == UI_CH ? "CH" : "EN");
    return QStringLiteral("%1/device/%2/%2_Info_%3.htm").arg(m_paths.databaseDir(), series, suffix);
}

QString XMLOperation::peripheralFile(const QString &series, const QString &name, const QString &version) const
{
    return QStringLiteral("%1/device/%2/Peripherals/%3-%4.xml").arg(m_paths.databaseDir(), series, name, version);
}

XMLElementInfo XMLOperation::GetIPXMLInfo(const QString &file) const
{
    XMLElementInfo root = readXml(file).root;
    return root.tagName == QLatin1String("IP") ? root : XMLElementInfo();
}

} // namespace ChipLoom
