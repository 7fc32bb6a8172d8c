#pragma once

#include "Model/ShareParameter.h"
#include "Model/XmlProblem.h"

#include <QByteArray>

namespace ChipLoom {

/// Bounds that hold before and while a tree is built, far above what real files need.
struct XmlLimits
{
    qint64 bytes = 32 * 1024 * 1024;
    int depth = 64;
    int nodes = 1'000'000; ///< elements and attributes together
    int attributes = 256;  ///< of one element
};

/// What becomes the `tagText` of an element.
enum class XmlText {
    SoleChild, ///< as `XMLElementInfo` says: only a sole child of an element without attributes
    All        ///< all text and CDATA directly in the element
};

struct XmlDocument
{
    XMLElementInfo root; ///< empty if there is a problem
    XmlProblem problem;
};

/// Parses a document in UTF-8, or in UTF-16 with a byte order mark. `problem.file` stays empty.
XmlDocument parseXml(const QByteArray &content, XmlText text = XmlText::SoleChild, const XmlLimits &limits = {});

XmlDocument readXml(const QString &file, XmlText text = XmlText::SoleChild, const XmlLimits &limits = {});

/// The value of an attribute by its exact name, or null.
const QString *findAttribute(const XMLElementInfo &element, QLatin1String name);

/// The same as a text; empty if the attribute is absent.
QString attributeValue(const XMLElementInfo &element, QLatin1String name);

/// The first child element of a name, or null.
const XMLElementInfo *findChild(const XMLElementInfo &element, QLatin1String tag);

} // namespace ChipLoom
