#include "Model/XmlRecords.h"
#include "Model/xmloperation.h"

#include <QHash>
#include <QSet>

#include <algorithm>

namespace ChipLoom {

using XmlRecords::inLanguage;

namespace {

/// The catalogue parsed once. Each list is built once however often it is asked for, so that entries that name one
/// another cost no more than the file is long.
class Catalogue
{
public:
    explicit Catalogue(const XMLElementInfo &root)
    {
        for (const XMLElementInfo &entry : root.subElementInfoList) {
            const QString *term = findAttribute(entry, QLatin1String("term"));
            if (term && !m_terms.contains(*term))
                m_terms.insert(*term, &entry);
        }
    }

    QList<MCUDeviceStruct> devices(const QString &serial)
    {
        const auto known = m_devices.constFind(serial);
        if (known != m_devices.constEnd())
            return *known;
        QList<MCUDeviceStruct> devices;
        for (const XMLElementInfo &element : records(serial)) {
            devices.append(
                {attributeValue(element, QLatin1String("Name")), attributeValue(element, QLatin1String("Package")),
                 attributeValue(element, QLatin1String("Flash")), attributeValue(element, QLatin1String("SRAM")),
                 attributeValue(element, QLatin1String("MaxSRAM")), attributeValue(element, QLatin1String("Core")),
                 attributeValue(element, QLatin1String("Frequency")), attributeValue(element, QLatin1String("GPIO"))});
        }
        m_devices.insert(serial, devices);
        return devices;
    }

    QList<MCUSerialStruct> series(const QString &line)
    {
        const auto known = m_series.constFind(line);
        if (known != m_series.constEnd())
            return *known;
        QList<MCUSerialStruct> list;
        for (const XMLElementInfo &element : records(line)) {
            MCUSerialStruct series;
            series.ProductLinelInfo = line;
            series.SeriaName = attributeValue(element, QLatin1String("Serial"));
            series.SerialInfo_EN = attributeValue(element, QLatin1String("InfoEN"));
            series.SerialInfo_CH = attributeValue(element, QLatin1String("InfoCH"));
            series.SerialInfo = inLanguage(series.SerialInfo_EN, series.SerialInfo_CH);
            series.MCUDeviceList = devices(series.SeriaName);
            list.append(series);
        }
        m_series.insert(line, list);
        return list;
    }

    QList<ProductLineStruct> lines()
    {
        QList<ProductLineStruct> list;
        for (const XMLElementInfo &element : records(QStringLiteral("ProductLinesList"))) {
            ProductLineStruct line;
            line.ProductLineName = attributeValue(element, QLatin1String("Line"));
            line.ProductLineName_CH = attributeValue(element, QLatin1String("LineCH"));
            line.ProductLinelInfo_EN = attributeValue(element, QLatin1String("InfoEN"));
            line.ProductLinelInfo_CH = attributeValue(element, QLatin1String("InfoCH"));
            line.ProductLinelInfo = inLanguage(line.ProductLinelInfo_EN, line.ProductLinelInfo_CH);
            line.MCUSerialList = series(line.ProductLineName);
            list.append(line);
        }
        return list;
    }

    QStringList packages() const
    {
        QStringList names;
        for (const XMLElementInfo &element : records(QStringLiteral("MCUPackageList")))
            names.append(element.tagText);
        return names;
    }

private:
    QList<XMLElementInfo> records(const QString &term) const
    {
        const XMLElementInfo *entry = m_terms.value(term);
        return entry ? entry->subElementInfoList : QList<XMLElementInfo>();
    }

    QHash<QString, const XMLElementInfo *> m_terms;
    QHash<QString, QList<MCUDeviceStruct>> m_devices;
    QHash<QString, QList<MCUSerialStruct>> m_series;
};

XmlDocument readCatalogue(const XMLOperation &reader)
{
    return readXml(reader.mcuListFile(), XmlText::All);
}

} // namespace

QList<ProductLineStruct> XMLOperation::GetProductLinesList() const
{
    const XmlDocument document = readCatalogue(*this);
    return Catalogue(document.root).lines();
}

QList<MCUSerialStruct> XMLOperation::GetMCUSerialsList(const QString &line) const
{
    const XmlDocument document = readCatalogue(*this);
    return Catalogue(document.root).series(line);
}

QList<MCUSerialStruct> XMLOperation::GetMCUSerialsList() const
{
    const XmlDocument document = readCatalogue(*this);
    QList<MCUSerialStruct> all;
    QSet<QString> seen;
    for (const ProductLineStruct &line : Catalogue(document.root).lines()) {
        if (seen.contains(line.ProductLineName))
            continue;
        seen.insert(line.ProductLineName);
        all.append(line.MCUSerialList);
    }
    std::stable_sort(all.begin(), all.end(),
                     [](const MCUSerialStruct &a, const MCUSerialStruct &b) { return a.SeriaName < b.SeriaName; });
    QList<MCUSerialStruct> ordered;
    for (const char *prefix : {"ZV32F", "ZV32A", "ZV32M", "ZV32L", "ZV32WB"}) {
        for (const MCUSerialStruct &series : qAsConst(all)) {
            if (series.SeriaName.startsWith(QLatin1String(prefix)))
                ordered.append(series);
        }
    }
    return ordered;
}

QList<MCUDeviceStruct> XMLOperation::GetDeviceNameList(const QString &serial) const
{
    const XmlDocument document = readCatalogue(*this);
    return Catalogue(document.root).devices(serial);
}

QStringList XMLOperation::GetMCUPackageList() const
{
    const XmlDocument document = readCatalogue(*this);
    return Catalogue(document.root).packages();
}

XmlProblem XMLOperation::catalogueProblem() const
{
    XmlDocument document = readCatalogue(*this);
    if (document.problem.fault != XmlFault::None)
        return document.problem;
    for (const ProductLineStruct &line : Catalogue(document.root).lines()) {
        for (const MCUSerialStruct &series : line.MCUSerialList) {
            if (!series.MCUDeviceList.isEmpty())
                return {};
        }
    }
    document.problem.fault = XmlFault::NothingListed;
    return document.problem;
}

} // namespace ChipLoom
