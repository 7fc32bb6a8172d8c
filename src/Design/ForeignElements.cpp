#include "Design/ForeignElements.h"

#include "Model/XmlTree.h"

#include <QSet>
#include <QXmlStreamWriter>

namespace ChipLoom {

namespace {

void write(QXmlStreamWriter &xml, const XMLElementInfo &element)
{
    xml.writeStartElement(element.tagName);
    for (const XMLAttributeInfo &attribute : element.attributeInfoList)
        xml.writeAttribute(attribute.attributeName, attribute.attributeValue);
    // Between elements stand the blanks that lay the file out; the writer makes them anew.
    const bool onlyLayout = !element.subElementInfoList.isEmpty() && element.tagText.trimmed().isEmpty();
    if (!element.tagText.isEmpty() && !onlyLayout)
        xml.writeCharacters(element.tagText);
    for (const XMLElementInfo &child : element.subElementInfoList)
        write(xml, child);
    xml.writeEndElement();
}

} // namespace

void ForeignElements::clear()
{
    m_sections.clear();
    m_children.clear();
}

void ForeignElements::keepChildren(const XMLElementInfo &section, const QStringList &known)
{
    for (const XMLElementInfo &child : section.subElementInfoList) {
        if (!known.contains(child.tagName))
            m_children[section.tagName].append(child);
    }
}

QByteArray ForeignElements::putInto(const QByteArray &content) const
{
    if (isEmpty())
        return content;
    XMLElementInfo root = parseXml(content, XmlText::All).root;
    QSet<QString> written;
    for (XMLElementInfo &section : root.subElementInfoList) {
        if (!written.contains(section.tagName))
            section.subElementInfoList += m_children.value(section.tagName);
        written.insert(section.tagName);
    }
    for (const XMLElementInfo &section : m_sections) {
        if (!written.contains(section.tagName))
            root.subElementInfoList.append(section);
    }
    QByteArray merged;
    QXmlStreamWriter xml(&merged);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    write(xml, root);
    xml.writeEndDocument();
    return merged;
}

} // namespace ChipLoom
