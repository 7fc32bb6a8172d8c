#include "Model/PeripheralTree.h"

#include "Model/XmlRecords.h"

#include <utility>

namespace ChipLoom {

PeripheralTree::PeripheralTree(XMLElementInfo root) : m_root(std::move(root))
{
    for (const XMLElementInfo &element : m_root.subElementInfoList) {
        const QString name = attributeValue(element, QLatin1String("Name"));
        if (element.tagName == QLatin1String("RefParameter")) {
            m_parameters[name].append(&element);
        } else if (element.tagName == QLatin1String("RefMode")) {
            m_modes[name].append(&element);
            if (!m_abstractMode && XmlRecords::readFlag(element, "Abstract", false))
                m_abstractMode = &element;
        }
    }
}

RefParameter PeripheralTree::GetRefParameter(const QString &instance, const QString &name) const
{
    const auto found = m_parameters.constFind(name);
    return found == m_parameters.constEnd() ? RefParameter()
                                            : XmlRecords::readRefParameter(*found->constFirst(), instance);
}

QList<RefParameter> PeripheralTree::GetRefParameterList(const QString &instance, const QString &name) const
{
    QList<RefParameter> list;
    for (const XMLElementInfo *element : m_parameters.value(name))
        list.append(XmlRecords::readListedParameter(*element, instance));
    return list;
}

RefMode PeripheralTree::GetRefMode(const QString &name) const
{
    const auto found = m_modes.constFind(name);
    return found == m_modes.constEnd() ? RefMode() : XmlRecords::readRefMode(*found->constFirst());
}

RefMode PeripheralTree::GetRefMode(const QString &baseMode, const QString &name) const
{
    for (const XMLElementInfo *element : m_modes.value(name)) {
        if (attributeValue(*element, QLatin1String("BaseMode")) == baseMode)
            return XmlRecords::readRefMode(*element);
    }
    return {};
}

RefMode PeripheralTree::GetRefMode_Abstract() const
{
    return m_abstractMode ? XmlRecords::readRefMode(*m_abstractMode) : RefMode();
}

} // namespace ChipLoom
