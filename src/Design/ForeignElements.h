#pragma once

#include "Model/ShareParameter.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

namespace ChipLoom {

/// What an opened design file holds beyond what this version knows, as a later version writes it. It is kept as it
/// stands and goes back into the file when that is saved.
class ForeignElements
{
public:
    void clear();
    bool isEmpty() const { return m_sections.isEmpty() && m_children.isEmpty(); }

    /// A section of the root that nobody knows.
    void keepSection(const XMLElementInfo &section) { m_sections.append(section); }
    /// Of a section that is known, the elements that are not among `known`.
    void keepChildren(const XMLElementInfo &section, const QStringList &known);

    /// The file `content` with the kept elements: unknown sections at the end of the root, unknown elements at the end
    /// of their section. A section that is no longer written takes its unknown elements with it.
    QByteArray putInto(const QByteArray &content) const;

private:
    QList<XMLElementInfo> m_sections;
    QHash<QString, QList<XMLElementInfo>> m_children; // by the name of the section
};

} // namespace ChipLoom
