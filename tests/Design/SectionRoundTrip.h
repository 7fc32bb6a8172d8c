#pragma once

#include "Design/Design.h"
#include "Design/ModuleConfiguration.h"
#include "Model/XmlTree.h"

#include <QXmlStreamWriter>

#include <algorithm>

namespace ChipLoom::Test {

/// The sections of all modules below one root element, as a design file holds them.
inline QByteArray writtenSections(const Design &design)
{
    QByteArray text;
    QXmlStreamWriter xml(&text);
    xml.writeStartElement(QStringLiteral("Root"));
    for (const auto &part : design.parts()) {
        if (dynamic_cast<const ModuleConfiguration *>(part.get()))
            part->writeSection(xml);
    }
    xml.writeEndElement();
    return text;
}

inline void reverseEntries(XMLElementInfo &element)
{
    for (XMLElementInfo &child : element.subElementInfoList)
        reverseEntries(child);
    std::reverse(element.subElementInfoList.begin(), element.subElementInfoList.end());
}

/// Reads sections into a design that has just been opened: all modules twice, since they depend on each other. Gives
/// what the second reading could not take.
inline QList<DesignProblem> readSections(Design &design, const XMLElementInfo &root)
{
    QList<DesignProblem> problems;
    for (int round = 0; round < 2; ++round) {
        problems.clear();
        for (const auto &part : design.parts()) {
            if (dynamic_cast<const ModuleConfiguration *>(part.get()))
                part->readSection(root, problems);
        }
    }
    design.scheduler().drain();
    return problems;
}

} // namespace ChipLoom::Test
