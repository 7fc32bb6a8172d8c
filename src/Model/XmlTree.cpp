#include "Model/XmlTree.h"

#include "Base/AtomicFile.h"

#include <QHash>
#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <optional>
#include <string_view>

namespace ChipLoom {

namespace {

/// The content as UTF-8 without a byte order mark; nothing if it is in another encoding or holds invalid bytes.
std::optional<QByteArray> toUtf8(const QByteArray &content)
{
    if (content.startsWith("\xff\xfe") || content.startsWith("\xfe\xff")) {
        QString text = QString::fromUtf16(reinterpret_cast<const char16_t *>(content.constData()), content.size() / 2);
        if (content.size() % 2 != 0 || !text.isValidUtf16())
            return std::nullopt;
        // The declaration names the encoding that the bytes no longer have.
        static const QRegularExpression declaration(QStringLiteral("^<\\?xml [^>]*\\?>"));
        text.remove(declaration);
        return text.toUtf8();
    }
    const QByteArray bytes = content.startsWith("\xef\xbb\xbf") ? content.mid(3) : content;
    static const QRegularExpression declared(QStringLiteral("^<\\?xml [^>]*encoding\\s*=\\s*[\"']([^\"']*)[\"']"));
    const QString name = declared.match(QString::fromLatin1(bytes.left(200))).captured(1).toUpper();
    if (!name.isEmpty() && name != QLatin1String("UTF-8") && name != QLatin1String("UTF8") &&
        name != QLatin1String("US-ASCII"))
        return std::nullopt;
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return std::nullopt;
    return bytes;
}

/// One pass over the markup before the parser sees it: the parser would take part of a document type, and compares
/// each attribute of an element with all others, which takes minutes for some hundred thousand of them.
XmlProblem scanMarkup(const QByteArray &content, const XmlLimits &limits)
{
    const std::string_view text(content.constData(), static_cast<size_t>(content.size()));
    const auto problemAt = [&](XmlFault fault, size_t position, qint64 limit) {
        const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<ptrdiff_t>(position), '\n');
        return XmlProblem{fault, {}, line, limit, {}};
    };
    size_t position = text.find('<');
    while (position != std::string_view::npos) {
        const std::string_view rest = text.substr(position);
        if (rest.starts_with("<!--")) {
            position = text.find("-->", position + 4);
        } else if (rest.starts_with("<![CDATA[")) {
            position = text.find("]]>", position + 9);
        } else if (rest.starts_with("<?")) {
            position = text.find("?>", position + 2);
        } else if (rest.starts_with("<!")) {
            return problemAt(XmlFault::Declarations, position, 0);
        } else {
            int attributes = 0;
            char quote = 0;
            const size_t start = position;
            for (++position; position < text.size(); ++position) {
                const char c = text[position];
                if (quote != 0) {
                    if (c == quote)
                        quote = 0;
                } else if (c == '"' || c == '\'') {
                    quote = c;
                } else if (c == '>') {
                    break;
                } else if (c == '=' && ++attributes > limits.attributes) {
                    return problemAt(XmlFault::TooComplex, start, limits.attributes);
                }
            }
        }
        // A tag that the file's end cuts off leaves the position behind the end.
        position = position < text.size() ? text.find('<', position) : std::string_view::npos;
    }
    return {};
}

class TreeBuilder
{
public:
    TreeBuilder(const QByteArray &content, XmlText text, const XmlLimits &limits)
        : m_reader(content), m_text(text), m_limits(limits)
    {
        // Prefixes are part of a name here, declared or not.
        m_reader.setNamespaceProcessing(false);
    }

    XmlDocument build()
    {
        while (!m_reader.atEnd() && !m_document.problem)
            take(m_reader.readNext());
        if (m_reader.hasError() && !m_document.problem)
            fail(XmlFault::Malformed, 0);
        return std::move(m_document);
    }

private:
    struct Open
    {
        XMLElementInfo element;
        int childNodes = 0; // as a document tree counts them: runs of text that are only blanks do not count
        bool inText = false;
    };

    void take(QXmlStreamReader::TokenType token)
    {
        switch (token) {
        case QXmlStreamReader::StartElement:
            startElement();
            break;
        case QXmlStreamReader::EndElement:
            endElement();
            break;
        case QXmlStreamReader::Characters:
            characters();
            break;
        case QXmlStreamReader::Comment:
        case QXmlStreamReader::ProcessingInstruction:
            countChild();
            break;
        case QXmlStreamReader::DTD:
        case QXmlStreamReader::EntityReference:
            fail(XmlFault::Declarations, 0);
            break;
        default:
            break;
        }
    }

    void countChild()
    {
        if (!m_open.empty()) {
            ++m_open.back().childNodes;
            m_open.back().inText = false;
        }
    }

    void startElement()
    {
        countChild();
        const QXmlStreamAttributes attributes = m_reader.attributes();
        m_nodes += 1 + attributes.size();
        if (m_nodes > m_limits.nodes)
            return fail(XmlFault::TooComplex, m_limits.nodes);
        if (static_cast<int>(m_open.size()) == m_limits.depth)
            return fail(XmlFault::TooDeep, m_limits.depth);
        Open &open = m_open.emplace_back();
        open.element.tagName = shared(m_reader.qualifiedName());
        open.element.attributeInfoList.reserve(attributes.size());
        for (const QXmlStreamAttribute &attribute : attributes)
            open.element.attributeInfoList.append({shared(attribute.qualifiedName()), attribute.value().toString()});
    }

    void endElement()
    {
        Open open = std::move(m_open.back());
        m_open.pop_back();
        if (m_text == XmlText::SoleChild && (open.childNodes != 1 || !open.element.attributeInfoList.isEmpty()))
            open.element.tagText.clear();
        if (m_open.empty())
            m_document.root = std::move(open.element);
        else
            m_open.back().element.subElementInfoList.append(std::move(open.element));
    }

    void characters()
    {
        if (m_open.empty() || (m_reader.isWhitespace() && !m_reader.isCDATA()))
            return;
        Open &open = m_open.back();
        if (m_reader.isCDATA() || !open.inText)
            ++open.childNodes;
        open.inText = !m_reader.isCDATA();
        open.element.tagText += m_reader.text();
    }

    void fail(XmlFault fault, qint64 limit)
    {
        m_document.root = {};
        m_document.problem = {fault, {}, m_reader.lineNumber(), limit, m_reader.errorString()};
    }

    /// Names repeat by the thousand; each is kept once.
    QString shared(const QStringRef &name)
    {
        const auto known = m_names.constFind(name);
        if (known != m_names.constEnd())
            return *known;
        const QString text = name.toString();
        m_names.insert(text, text);
        return text;
    }

    QXmlStreamReader m_reader;
    XmlText m_text;
    XmlLimits m_limits;
    XmlDocument m_document;
    std::vector<Open> m_open;
    QHash<QStringView, QString> m_names; // each key looks into its own value
    int m_nodes = 0;
};

} // namespace

XmlDocument parseXml(const QByteArray &content, XmlText text, const XmlLimits &limits)
{
    if (content.size() > limits.bytes)
        return {{}, {XmlFault::TooLarge, {}, 0, limits.bytes, {}}};
    const std::optional<QByteArray> utf8 = toUtf8(content);
    if (!utf8)
        return {{}, {XmlFault::WrongEncoding, {}, 0, 0, {}}};
    if (XmlProblem problem = scanMarkup(*utf8, limits))
        return {{}, std::move(problem)};
    return TreeBuilder(*utf8, text, limits).build();
}

XmlDocument readXml(const QString &file, XmlText text, const XmlLimits &limits)
{
    const ReadResult read = readFile(file, limits.bytes);
    XmlDocument document;
    if (read.ok)
        document = parseXml(read.content, text, limits);
    else if (!read.exists)
        document.problem.fault = XmlFault::Missing;
    else if (read.tooLarge)
        document.problem = {XmlFault::TooLarge, {}, 0, limits.bytes, {}};
    else
        document.problem = {XmlFault::Unreadable, {}, 0, 0, read.error};
    document.problem.file = file;
    return document;
}

const QString *findAttribute(const XMLElementInfo &element, QLatin1String name)
{
    for (const XMLAttributeInfo &attribute : element.attributeInfoList) {
        if (attribute.attributeName == name)
            return &attribute.attributeValue;
    }
    return nullptr;
}

QString attributeValue(const XMLElementInfo &element, QLatin1String name)
{
    const QString *value = findAttribute(element, name);
    return value ? *value : QString();
}

const XMLElementInfo *findChild(const XMLElementInfo &element, QLatin1String tag)
{
    for (const XMLElementInfo &child : element.subElementInfoList) {
        if (child.tagName == tag)
            return &child;
    }
    return nullptr;
}

} // namespace ChipLoom
