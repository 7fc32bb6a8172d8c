#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace ChipLoom {

/// An element that is to be added to a file.
struct XmlPiece
{
    QString name;
    QString text = {};
    std::vector<XmlPiece> children = {};
    std::vector<std::pair<QString, QString>> attributes = {};
};

/// An element, or what stands between elements, of an XML file that is edited in place. What is not edited keeps its
/// bytes: order and quotes of attributes, comments, line ends, indentation.
class XmlNode
{
public:
    bool isElement() const { return m_element; }
    const QString &name() const { return m_name; }
    XmlNode *parent() const { return m_parent; }

    /// The first child element of that name, or null.
    XmlNode *child(const QString &name) const;
    /// Down a path of first children, or null.
    XmlNode *at(const QStringList &path) const;
    std::vector<XmlNode *> children(const QString &name) const;
    /// All elements of that name below this one, in the order of the file.
    std::vector<XmlNode *> descendants(const QString &name) const;

    /// Of this element without those below it; entities are resolved.
    QString text() const;
    /// Replaces all that stands in the element.
    void setText(const QString &text);
    /// The text of a child; empty if there is none.
    QString childText(const QString &name) const;
    bool setChildText(const QString &name, const QString &text);

    QString attribute(const QString &name) const;
    /// Changes an attribute that the element has.
    void setAttribute(const QString &name, const QString &value);

    /// Adds an element behind the last one, or before `next`, indented as its neighbours are.
    XmlNode *add(const XmlPiece &piece, const XmlNode *next = nullptr);
    void remove(XmlNode *child);

    QString toText() const;

private:
    friend class XmlText;
    XmlNode(XmlNode *parent, bool element) : m_parent(parent), m_element(element) {}
    XmlNode *append(bool element);
    QString indentation() const;
    void open();
    void fill(const XmlPiece &piece, const QString &lineEnd, const QString &indent, const QString &step);

    XmlNode *m_parent;
    bool m_element;
    QString m_name;
    QString m_start; ///< the start tag, or all of what is no element
    QString m_end;   ///< empty for "<name/>"
    std::vector<std::unique_ptr<XmlNode>> m_children;
};

/// An XML file as a tree that gives back each byte that was not edited.
class XmlText
{
public:
    /// Null, with a reason for a person, for what is not well-formed, declares entities, or is nested too deep.
    static std::unique_ptr<XmlText> parse(const QString &text, QString &error);

    XmlNode &root() const { return *m_root; }
    QString toText() const { return m_document->toText(); }

private:
    std::unique_ptr<XmlNode> m_document;
    XmlNode *m_root = nullptr;
};

} // namespace ChipLoom
