#include "GenerateCode/TextEngine.h"

#include <QHash>
#include <QMutex>

#include <algorithm>

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

int skipSpaces(const QString &text, int from)
{
    while (from < text.size() && text.at(from).isSpace())
        ++from;
    return from;
}

int skipWord(const QString &text, int from)
{
    while (from < text.size() && (text.at(from).isLetterOrNumber() || text.at(from) == QLatin1Char('_')))
        ++from;
    return from;
}

/// `what` lies within the text.
bool endsAt(const QString &text, int end, const QString &what)
{
    return std::equal(what.begin(), what.end(), text.begin() + (end - what.size()));
}

bool standsAt(const QString &text, int position, QChar what)
{
    return position < text.size() && text.at(position) == what;
}

struct Marker
{
    int start = -1;
    int end = 0; // behind its line break
};

// The next line "[#name]" or "[/#name]" at or behind `from`. Brackets are rare, and Qt finds one character fastest.
Marker nextMarker(const QString &text, QLatin1String bracket, const QString &name, int from)
{
    for (int at = text.indexOf(QLatin1Char('['), from); at >= 0; at = text.indexOf(QLatin1Char('['), at + 1)) {
        const int nameEnd = at + bracket.size() + name.size();
        if (!standsAt(text, nameEnd, QLatin1Char(']')) || !endsAt(text, nameEnd, name) ||
            text.midRef(at, bracket.size()) != bracket)
            continue;
        const int end = lineEndBehind(text, nameEnd + 1);
        if (end >= 0)
            return {at, end};
    }
    return {};
}

struct Assignment
{
    int start = -1;
    int length = 0; // with its ";", if it has one
};

Assignment findAssignment(const QString &text, const QString &member, int from)
{
    for (int sign = text.indexOf(QLatin1Char('='), from); sign >= 0; sign = text.indexOf(QLatin1Char('='), sign + 1)) {
        int memberEnd = sign;
        while (memberEnd > from && text.at(memberEnd - 1).isSpace())
            --memberEnd;
        const int at = memberEnd - member.size();
        const int value = skipSpaces(text, sign + 1);
        const int end = skipWord(text, value);
        if (at >= from && end > value && endsAt(text, memberEnd, member))
            return {at, end - at + (standsAt(text, end, QLatin1Char(';')) ? 1 : 0)};
    }
    return {};
}

} // namespace

int lineEndBehind(const QString &text, int from)
{
    const int end = skip(text, from, Blank);
    return end < text.size() && text.at(end) == LineBreak ? end + 1 : -1;
}

SectionSpan findSection(const QString &text, const QString &name)
{
    const Marker opening = nextMarker(text, QLatin1String("[#"), name, 0);
    if (opening.start < 0)
        return {};
    const auto closingBehind = [&](int from) { return nextMarker(text, QLatin1String("[/#"), name, from); };
    SectionSpan span;
    for (Marker close = closingBehind(opening.end + 1); close.start >= 0; close = closingBehind(close.start + 1))
        span = {opening.start, close.end - opening.start, opening.end, close.start - opening.end};
    if (span.found())
        span.length = skip(text, span.start + span.length, LineBreak) - span.start;
    return span;
}

QString keptBody(const QString &text, const SectionSpan &span)
{
    QString body;
    if (span.found()) {
        body.reserve(span.bodyLength + 1);
        body.append(text.midRef(span.bodyStart, span.bodyLength)).append(LineBreak);
    }
    return body;
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
    int copied = 0;
    for (int brace = text.indexOf(QLatin1Char('}')); brace >= 0; brace = text.indexOf(QLatin1Char('}'), brace + 1)) {
        int keep = brace;
        while (keep > copied && text.at(keep - 1) == LineBreak)
            --keep;
        const bool isOne = keep == brace - 1;
        if (keep == brace)
            continue;
        const int lastBreak = keep;
        while (keep > copied && text.at(keep - 1) == Blank)
            --keep;
        if (isOne && keep == lastBreak) // as it is to be
            continue;
        result.append(text.midRef(copied, keep - copied)).append(LineBreak);
        copied = brace;
    }
    if (copied > 0)
        text = result.append(text.midRef(copied));
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

bool rewriteWord(QString &text, const QString &word, const QString &replacement)
{
    const auto isWord = [&](int at) {
        return at >= 0 && at < text.size() && (text.at(at).isLetterOrNumber() || text.at(at) == QLatin1Char('_'));
    };
    bool any = false;
    for (int at = text.indexOf(word); at >= 0;) {
        if (isWord(at - 1) || isWord(at + word.size())) {
            at = text.indexOf(word, at + 1);
            continue;
        }
        text.replace(at, word.size(), replacement);
        at = text.indexOf(word, at + replacement.size());
        any = true;
    }
    return any;
}

CallMatch findCall(const QString &text, const QString &function, int argumentCount, int from)
{
    for (int opening = text.indexOf(QLatin1Char('('), from); opening >= 0;
         opening = text.indexOf(QLatin1Char('('), opening + 1)) {
        const int at = opening - function.size();
        if (at < from || !endsAt(text, opening, function))
            continue;
        CallMatch call;
        int end = opening + 1;
        while (call.arguments.size() < argumentCount) {
            if (!call.arguments.isEmpty() && !standsAt(text, end++, QLatin1Char(',')))
                break;
            const int start = skipSpaces(text, end);
            const int word = standsAt(text, start, QLatin1Char('&')) ? start + 1 : start;
            end = skipWord(text, word);
            if (end == word)
                break;
            call.arguments.append(text.mid(start, end - start));
        }
        if (call.arguments.size() < argumentCount || !standsAt(text, end, QLatin1Char(')')))
            continue;
        ++end;
        if (standsAt(text, end, QLatin1Char(';')))
            ++end;
        call.start = at;
        call.length = end - call.start;
        return call;
    }
    return {};
}

void appendCall(QString &text, const QString &function, const QStringList &arguments)
{
    text += function;
    text += QLatin1Char('(');
    for (int i = 0; i < arguments.size(); ++i) {
        if (i > 0)
            text += QLatin1String(", ");
        text += arguments.at(i);
    }
    text += QLatin1String(");");
}

QString callText(const QString &function, const QStringList &arguments)
{
    QString text;
    appendCall(text, function, arguments);
    return text;
}

bool rewriteCall(QString &text, const QString &function, const QStringList &arguments)
{
    const CallMatch call = findCall(text, function, arguments.size());
    if (call.found())
        text.replace(call.start, call.length, callText(function, arguments));
    return call.found();
}

bool rewriteCalls(QString &text, const QString &function, int argumentCount, const QString &replacement)
{
    CallMatch call = findCall(text, function, argumentCount);
    const bool any = call.found();
    while (call.found()) {
        text.replace(call.start, call.length, replacement);
        call = findCall(text, function, argumentCount, call.start + replacement.size());
    }
    return any;
}

bool rewriteAssignments(QString &text, const QString &member, const QString &value)
{
    const QString written = member + QLatin1String(" = ") + value + QLatin1Char(';');
    Assignment match = findAssignment(text, member, 0);
    const bool any = match.start >= 0;
    while (match.start >= 0) {
        text.replace(match.start, match.length, written);
        match = findAssignment(text, member, match.start + written.size());
    }
    return any;
}

} // namespace ChipLoom
