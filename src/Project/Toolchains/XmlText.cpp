#include "Project/Toolchains/XmlText.h"

#include "Project/Toolchains/ProjectLists.h"

#include <QCoreApplication>
#include <QXmlStreamReader>

#include <algorithm>

namespace ChipLoom {

namespace {

constexpr int MaxDepth = 128;

/// Of a text; quotes stay as they are, which is how the toolchains write them.
QString escaped(QString text)
{
    text.replace(QLatin1Char('&'), QLatin1String("&amp;"));
    text.replace(QLatin1Char('<'), QLatin1String("&lt;"));
    return text.replace(QLatin1Char('>'), QLatin1String("&gt;"));
}

QString quoted(const QString &value)
{
    return QLatin1Char('"') + escaped(value).replace(QLatin1Char('"'), QLatin1String("&quot;")) + QLatin1Char('"');
}

QString unescaped(QString text)
{
    text.replace(QLatin1String("&lt;"), QLatin1String("<"));
    text.replace(QLatin1String("&gt;"), QLatin1String(">"));
    text.replace(QLatin1String("&quot;"), QLatin1String("\""));
    text.replace(QLatin1String("&apos;"), QLatin1String("'"));
    return text.replace(QLatin1String("&amp;"), QLatin1String("&"));
}

QRegularExpression attributeExpression(const QString &name)
{
    return usedOnce(QStringLiteral("\\s%1\\s*=\\s*(\"[^\"]*\"|'[^']*')").arg(QRegularExpression::escape(name)));
}

QString startTag(const XmlPiece &piece)
{
    QString tag = QLatin1Char('<') + piece.name;
    for (const auto &[name, value] : piece.attributes)
        tag += QLatin1Char(' ') + name + QLatin1Char('=') + quoted(value);
    return tag;
}

} // namespace

XmlNode *XmlNode::child(const QString &name) const
{
    for (const auto &node : m_children) {
        if (node->m_element && node->m_name == name)
            return node.get();
    }
    return nullptr;
}

XmlNode *XmlNode::at(const QStringList &path) const
{
    const XmlNode *node = this;
    for (const QString &name : path) {
        node = node->child(name);
        if (!node)
            return nullptr;
    }
    return const_cast<XmlNode *>(node);
}

std::vector<XmlNode *> XmlNode::children(const QString &name) const
{
    std::vector<XmlNode *> found;
    for (const auto &node : m_children) {
        if (node->m_element && node->m_name == name)
            found.push_back(node.get());
    }
    return found;
}

std::vector<XmlNode *> XmlNode::descendants(const QString &name) const
{
    std::vector<XmlNode *> found;
    for (const auto &node : m_children) {
        if (!node->m_element)
            continue;
        if (node->m_name == name)
            found.push_back(node.get());
        const std::vector<XmlNode *> below = node->descendants(name);
        found.insert(found.end(), below.begin(), below.end());
    }
    return found;
}

QString XmlNode::text() const
{
    QString text;
    for (const auto &node : m_children) {
        if (!node->m_element && !node->m_start.startsWith(QLatin1String("<!--")))
            text += node->m_start;
    }
    return unescaped(text);
}

void XmlNode::setText(const QString &text)
{
    if (this->text() == text &&
        std::none_of(m_children.begin(), m_children.end(), [](const auto &node) { return node->m_element; }))
        return;
    open();
    m_children.clear();
    append(false)->m_start = escaped(text);
}

QString XmlNode::childText(const QString &name) const
{
    const XmlNode *node = child(name);
    return node ? node->text() : QString();
}

bool XmlNode::setChildText(const QString &name, const QString &text)
{
    XmlNode *node = child(name);
    if (node)
        node->setText(text);
    return node;
}

QString XmlNode::attribute(const QString &name) const
{
    const QRegularExpressionMatch match = attributeExpression(name).match(m_start);
    const QString value = match.captured(1);
    return unescaped(value.mid(1, value.size() - 2));
}

void XmlNode::setAttribute(const QString &name, const QString &value)
{
    const QRegularExpressionMatch match = attributeExpression(name).match(m_start);
    if (match.hasMatch() && attribute(name) != value)
        m_start.replace(match.capturedStart(1), match.capturedLength(1), quoted(value));
}

XmlNode *XmlNode::append(bool element)
{
    m_children.push_back(std::unique_ptr<XmlNode>(new XmlNode(this, element)));
    return m_children.back().get();
}

void XmlNode::open()
{
    if (!m_end.isEmpty())
        return;
    m_start = m_start.left(m_start.lastIndexOf(QLatin1Char('/'))).trimmed() + QLatin1Char('>');
    m_end = QLatin1String("</") + m_name + QLatin1Char('>');
}

/// What stands before the element on its line.
QString XmlNode::indentation() const
{
    QString before;
    for (const auto &node : m_parent->m_children) {
        if (node.get() == this)
            break;
        before = node->m_element ? QString() : node->m_start;
    }
    const QString indent = before.mid(before.lastIndexOf(QLatin1Char('\n')) + 1);
    return indent.trimmed().isEmpty() ? indent : QString();
}

void XmlNode::fill(const XmlPiece &piece, const QString &lineEnd, const QString &indent, const QString &step)
{
    m_name = piece.name;
    m_start = startTag(piece);
    if (piece.text.isEmpty() && piece.children.empty() && !piece.attributes.empty()) {
        m_start += QLatin1String("/>");
        return;
    }
    m_start += QLatin1Char('>');
    m_end = QLatin1String("</") + m_name + QLatin1Char('>');
    if (!piece.text.isEmpty())
        append(false)->m_start = escaped(piece.text);
    for (const XmlPiece &child : piece.children) {
        append(false)->m_start = lineEnd + indent + step;
        append(true)->fill(child, lineEnd, indent + step, step);
    }
    if (!piece.children.empty())
        append(false)->m_start = lineEnd + indent;
}

XmlNode *XmlNode::add(const XmlPiece &piece, const XmlNode *next)
{
    open();
    const QString own = indentation();
    QString step = m_parent->m_element ? own.mid(m_parent->indentation().size()) : QString();
    if (step.isEmpty())
        step = QStringLiteral("  ");
    const XmlNode *above = this;
    while (above->m_parent)
        above = above->m_parent;
    const QString lineEnd =
        above->toText().contains(QLatin1String("\r\n")) ? QStringLiteral("\r\n") : QStringLiteral("\n");
    const auto isElement = [](const auto &node) { return node->m_element; };
    const auto last = std::find_if(m_children.rbegin(), m_children.rend(), isElement);
    auto place = last.base();
    if (last == m_children.rend()) {
        // Only blanks may stand in an element without others.
        m_children.clear();
        append(false)->m_start = lineEnd + own;
        place = m_children.begin();
    }
    if (next)
        place =
            std::find_if(m_children.begin(), m_children.end(), [next](const auto &node) { return node.get() == next; });
    auto node = std::unique_ptr<XmlNode>(new XmlNode(this, true));
    XmlNode *added = node.get();
    added->fill(piece, lineEnd, own + step, step);
    auto blanks = std::unique_ptr<XmlNode>(new XmlNode(this, false));
    blanks->m_start = lineEnd + own + step;
    if (next) {
        place = m_children.insert(place, std::move(blanks));
        m_children.insert(place, std::move(node));
    } else {
        place = m_children.insert(place, std::move(node));
        m_children.insert(place, std::move(blanks));
    }
    return added;
}

void XmlNode::remove(XmlNode *child)
{
    auto place =
        std::find_if(m_children.begin(), m_children.end(), [child](const auto &node) { return node.get() == child; });
    if (place == m_children.end())
        return;
    place = m_children.erase(place);
    if (place != m_children.begin() && !(*(place - 1))->m_element && (*(place - 1))->m_start.trimmed().isEmpty())
        m_children.erase(place - 1);
}

QString XmlNode::toText() const
{
    QString text = m_start;
    for (const auto &node : m_children)
        text += node->toText();
    return text + m_end;
}

std::unique_ptr<XmlText> XmlText::parse(const QString &text, QString &error)
{
    auto result = std::make_unique<XmlText>();
    result->m_document.reset(new XmlNode(nullptr, false));
    XmlNode *open = result->m_document.get();
    // The mark of UTF-8 at the beginning, byte by byte.
    const QString mark = text.startsWith(QString::fromLatin1("\xef\xbb\xbf")) ? text.left(3) : QString();
    open->append(false)->m_start = mark;
    const QString body = text.mid(mark.size());
    QXmlStreamReader reader(body);
    reader.setNamespaceProcessing(false);
    int depth = 0;
    int begin = 0;
    while (!reader.atEnd()) {
        const QXmlStreamReader::TokenType token = reader.readNext();
        int end = int(reader.characterOffset());
        // The reader has looked at the "<" behind a text, and does not tell of blanks behind the declaration.
        if (token == QXmlStreamReader::Characters && end > begin && body.at(end - 1) == QLatin1Char('<'))
            --end;
        if (token == QXmlStreamReader::StartElement) {
            const int tag = body.indexOf(QLatin1Char('<'), begin);
            if (tag > begin && tag < end)
                open->append(false)->m_start = body.mid(begin, tag - begin);
            begin = std::max(begin, tag);
        }
        const QString slice = body.mid(begin, end - begin);
        begin = end;
        if (token == QXmlStreamReader::StartElement) {
            if (++depth > MaxDepth) {
                reader.raiseError(QCoreApplication::translate("Project", "its elements are nested too deep"));
                break;
            }
            open = open->append(true);
            open->m_name = reader.qualifiedName().toString();
            open->m_start = slice;
            if (depth == 1)
                result->m_root = open;
        } else if (token == QXmlStreamReader::EndElement) {
            open->m_end = slice;
            open = open->m_parent;
            --depth;
        } else if (token == QXmlStreamReader::DTD) {
            reader.raiseError(QCoreApplication::translate("Project", "it declares a document type"));
        } else if (!slice.isEmpty()) {
            open->append(false)->m_start = slice;
        }
    }
    if (reader.hasError()) {
        error =
            QCoreApplication::translate("Project", "line %1: %2").arg(reader.lineNumber()).arg(reader.errorString());
        return nullptr;
    }
    if (result->toText() != text) {
        error = QCoreApplication::translate("Project", "its form cannot be kept");
        return nullptr;
    }
    return result;
}

} // namespace ChipLoom
