#include "GenerateCode/TextEngine.h"

#include <QHash>
#include <QMutex>

namespace ChipLoom {

namespace {

constexpr QChar Blank(' ');
constexpr QChar LineBreak('\n');

int skip(const QString &text, int from, QChar what)
{
    while (from < text.size() && text.at(from) == what)
        ++from;
    return from;
}

// Position behind blanks and one line break that follow `from`, or -1.
int lineEndBehind(const QString &text, int from)
{
    const int end = skip(text, from, Blank);
    return end < text.size() && text.at(end) == LineBreak ? end + 1 : -1;
}

// Position of a marker, which begins with a bracket, or -1. Brackets are rare, and Qt finds one character fastest.
int markerPosition(const QString &text, const QString &marker, int from)
{
    for (int at = text.indexOf(QLatin1Char('['), from); at >= 0; at = text.indexOf(QLatin1Char('['), at + 1)) {
        if (text.midRef(at, marker.size()) == marker)
            return at;
    }
    return -1;
}

} // namespace

SectionedText::SectionedText(const QString &text)
{
    const QString opening = QStringLiteral("[#");
    const auto nameAt = [&text](int marker) {
        const int end = text.indexOf(QLatin1Char(']'), marker);
        return end < 0 ? QString() : text.mid(marker + 2, end - marker - 2);
    };
    QHash<QString, int> openings;
    for (int at = markerPosition(text, opening, 0); at >= 0; at = markerPosition(text, opening, at + 1))
        ++openings[nameAt(at)];

    int plain = 0;
    for (int at = markerPosition(text, opening, 0); at >= 0;) {
        const QString name = nameAt(at);
        const QString closing = QLatin1String("[/#") + name + QLatin1Char(']');
        const int close = openings.value(name) == 1 ? markerPosition(text, closing, at) : -1;
        const int end = close < 0 ? -1 : lineEndBehind(text, close + closing.size());
        if (end < 0) {
            at = markerPosition(text, opening, at + 1);
            continue;
        }
        m_parts.push_back(text.mid(plain, at - plain));
        plain = skip(text, end, LineBreak);
        m_index.insert(name, static_cast<int>(m_parts.size()));
        m_parts.push_back(text.mid(at, plain - at));
        at = markerPosition(text, opening, plain);
    }
    m_parts.push_back(text.mid(plain));
}

QString *SectionedText::section(const QString &name)
{
    const auto entry = m_index.constFind(name);
    return entry == m_index.constEnd() ? nullptr : &m_parts[static_cast<size_t>(entry.value())];
}

QString SectionedText::joined() const
{
    QString text;
    for (const QString &part : m_parts)
        text += part;
    return text;
}

SectionSpan findSection(const QString &text, const QString &name)
{
    const QString opening = QLatin1String("[#") + name + QLatin1Char(']');
    const QString closing = QLatin1String("[/#") + name + QLatin1Char(']');

    int bodyStart = -1;
    int start = markerPosition(text, opening, 0);
    for (; start >= 0; start = markerPosition(text, opening, start + 1)) {
        bodyStart = lineEndBehind(text, start + opening.size());
        if (bodyStart >= 0)
            break;
    }
    if (start < 0)
        return {};

    SectionSpan span;
    for (int close = markerPosition(text, closing, bodyStart + 1); close >= 0;
         close = markerPosition(text, closing, close + 1)) {
        const int firstBreak = lineEndBehind(text, close + closing.size());
        if (firstBreak >= 0)
            span = {start, firstBreak - start, bodyStart, close - bodyStart};
    }
    if (span.found())
        span.length = skip(text, start + span.length, LineBreak) - start;
    return span;
}

QString keptBody(const QString &text, const SectionSpan &span)
{
    return span.found() ? text.mid(span.bodyStart, span.bodyLength) + LineBreak : QString();
}

void replaceSection(QString &text, const SectionSpan &span, const QString &replacement)
{
    text.replace(span.start, span.length, replacement);
}

bool GenerateCode_Handle_Function(QString &text, const QString &name, bool keep)
{
    const SectionSpan span = findSection(text, name);
    if (!span.found())
        return false;
    replaceSection(text, span, keep ? keptBody(text, span) : QString());
    return true;
}

bool GenerateCode_DeleteBlankLine_FunctionEnd(QString &text)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : qAsConst(text)) {
        if (c == QLatin1Char('}') && result.endsWith(LineBreak)) {
            int keep = result.size();
            while (keep > 0 && result.at(keep - 1) == LineBreak)
                --keep;
            while (keep > 0 && result.at(keep - 1) == Blank)
                --keep;
            result.truncate(keep);
            result.append(LineBreak);
        }
        result.append(c);
    }
    text = result;
    return true;
}

bool GenerateCode_DeleteBlankLine_FunctionStart(QString &text)
{
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size(); ++i) {
        result.append(text.at(i));
        if (text.at(i) != QLatin1Char('{'))
            continue;
        const int firstBreak = lineEndBehind(text, i + 1);
        if (firstBreak < 0)
            continue;
        result.append(LineBreak);
        i = skip(text, firstBreak, LineBreak) - 1;
    }
    text = result;
    return true;
}

bool GenerateCode_DeleteMultiBlankLine(QString &text)
{
    QString result;
    result.reserve(text.size());
    for (int i = 0; i < text.size();) {
        if (text.at(i) == LineBreak) {
            const int second = lineEndBehind(text, i + 1);
            const int third = second < 0 ? -1 : lineEndBehind(text, second);
            if (third >= 0) {
                result.append(QLatin1String("\n\n"));
                i = third;
                continue;
            }
        }
        result.append(text.at(i++));
    }
    text = result;
    return true;
}

QRegularExpression pattern(const QString &text)
{
    static QMutex mutex;
    static QHash<QString, QRegularExpression> compiled;
    const QMutexLocker lock(&mutex);
    auto entry = compiled.find(text);
    if (entry == compiled.end()) {
        entry = compiled.insert(text, QRegularExpression(text, QRegularExpression::DotMatchesEverythingOption |
                                                                   QRegularExpression::UseUnicodePropertiesOption));
        entry->optimize();
    }
    return *entry;
}

bool rewriteAll(QString &text, const QString &patternText, const QString &replacement)
{
    QString result;
    int copied = 0;
    QRegularExpressionMatchIterator matches = pattern(patternText).globalMatch(text);
    if (!matches.hasNext())
        return false;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result.append(text.midRef(copied, match.capturedStart() - copied)).append(replacement);
        copied = match.capturedEnd();
    }
    text = result.append(text.midRef(copied));
    return true;
}

CallMatch findCall(const QString &text, const QString &function, int argumentCount, bool wholeLine)
{
    QString expression = function + QLatin1String(R"(\()");
    for (int i = 0; i < argumentCount; ++i)
        expression += i == 0 ? QLatin1String(R"(\s*(&?\w+))") : QLatin1String(R"(,\s*(&?\w+))");
    expression += QLatin1String(R"(\);{0,1})");
    if (wholeLine)
        expression = QLatin1String(" *") + expression + QLatin1String("\\n+");

    const QRegularExpressionMatch match = pattern(expression).match(text);
    if (!match.hasMatch())
        return {};
    return {match.capturedStart(), match.capturedLength(), match.capturedTexts().mid(1)};
}

} // namespace ChipLoom
