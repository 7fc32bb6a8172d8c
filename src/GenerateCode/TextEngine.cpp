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

} // namespace

SectionSpan findSection(const QString &text, const QString &name)
{
    const QString opening = QLatin1String("[#") + name + QLatin1Char(']');
    const QString closing = QLatin1String("[/#") + name + QLatin1Char(']');

    int bodyStart = -1;
    int start = text.indexOf(opening);
    for (; start >= 0; start = text.indexOf(opening, start + 1)) {
        bodyStart = lineEndBehind(text, start + opening.size());
        if (bodyStart >= 0)
            break;
    }
    if (start < 0)
        return {};

    // Forward to the last one: Qt searches fast only in that direction.
    SectionSpan span;
    for (int close = text.indexOf(closing, bodyStart + 1); close >= 0; close = text.indexOf(closing, close + 1)) {
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
