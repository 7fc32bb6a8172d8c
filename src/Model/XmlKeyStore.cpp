#include "Base/AtomicFile.h"
#include "Model/XmlTree.h"
#include "Model/xmloperation.h"

#include <QDomDocument>

namespace ChipLoom {

namespace {

constexpr XmlLimits StoreLimits{.bytes = 1024 * 1024, .depth = 16, .nodes = 20'000};

const XMLElementInfo *findKey(const XMLElementInfo &root, const QString &key)
{
    for (const XMLElementInfo &element : root.subElementInfoList) {
        if (element.tagName == key)
            return &element;
    }
    return nullptr;
}

/// The value takes the place of the element's texts; comments in it stay.
void setText(QDomDocument &document, QDomElement element, const QString &value)
{
    for (QDomNode child = element.firstChild(); !child.isNull();) {
        const QDomNode next = child.nextSibling();
        if (child.isText())
            element.removeChild(child);
        child = next;
    }
    element.appendChild(document.createTextNode(value));
}

void setDeclaration(QDomDocument &document)
{
    const QDomNode first = document.firstChild();
    if (first.isProcessingInstruction() && first.nodeName() == QLatin1String("xml"))
        document.removeChild(first);
    document.insertBefore(document.createProcessingInstruction(QStringLiteral("xml"),
                                                               QStringLiteral("version=\"1.0\" encoding=\"UTF-8\"")),
                          document.firstChild());
}

} // namespace

bool XMLOperation::CreateXMLFile(const QString &path) const
{
    QDomDocument document;
    setDeclaration(document);
    document.appendChild(document.createElement(QStringLiteral("Configuration")));
    return replaceFile(path, document.toByteArray(4)).ok();
}

bool XMLOperation::GetConfigValueFromXml(const QString &path, const QString &key, QString &value) const
{
    const XmlDocument document = readXml(path, XmlText::All, StoreLimits);
    const XMLElementInfo *element = findKey(document.root, key);
    if (element)
        value = element->tagText;
    return element != nullptr;
}

bool XMLOperation::AppendConfigToXml(const QString &path, const QString &key, const QString &value) const
{
    const ReadResult read = readFile(path, StoreLimits.bytes);
    if (!read.ok || parseXml(read.content, XmlText::All, StoreLimits).problem)
        return false;
    QDomDocument document;
    if (!document.setContent(read.content))
        return false;
    QDomElement root = document.documentElement();
    QDomElement element = root.firstChildElement(key);
    if (element.isNull()) {
        element = document.createElement(key);
        root.appendChild(element);
    }
    setText(document, element, value);
    setDeclaration(document);

    // A key that is no name, or a text with characters that XML does not know, would spoil the file for good.
    const QByteArray content = document.toByteArray(4);
    const XmlDocument written = parseXml(content, XmlText::All, StoreLimits);
    const XMLElementInfo *stored = findKey(written.root, key);
    if (!stored || stored->tagText != value)
        return false;
    return replaceFile(path, content).ok();
}

} // namespace ChipLoom
