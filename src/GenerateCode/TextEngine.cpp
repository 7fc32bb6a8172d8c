#include "GenerateCode/TextEngine.h"

#include <QHash>
#include <QMutex>

#include <utility>

namespace ChipLoom {

namespace {

constexpr char Blank = ' ';
constexpr char LineBreak = '\n';

int skip(std::string_view text, int from, char what)
{
    while (standsAt(text, from, what))
        ++from;
    return from;
}

/// Where the spaces in front of `end` begin, not before `from`.
int spacesBefore(std::string_view text, int end, int from)
{
    while (end > from && isSpace(text[static_cast<size_t>(end - 1)]))
        --end;
    return end;
}

struct Marker
{
    int start = -1;
    int end = 0; // behind its line break
};

// The next line "[#name]" or "[/#name]" at or behind `from`.
Marker nextMarker(std::string_view text, const std::string &marker, int from)
{
    for (int at = from <= length(text) ? indexOf(text, marker, from) : -1; at >= 0;
         at = indexOf(text, marker, at + 1)) {
        const int end = lineEndBehind(text, at + length(marker));
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

Assignment findAssignment(std::string_view text, std::string_view member, int from)
{
    for (int sign = indexOf(text, '=', from); sign >= 0; sign = indexOf(text, '=', sign + 1)) {
        const int at = spacesBefore(text, sign, from) - length(member);
        const int value = skipSpaces(text, sign + 1);
        const int end = skipWord(text, value);
        if (at >= from && end > value && standsAt(text, at, member))
            return {at, end - at + (standsAt(text, end, ';') ? 1 : 0)};
    }
    return {};
}

/// Puts a code in the place of all that a search finds, from front to back. False if there was nothing.
template <typename Search> bool replaceFound(std::string &text, std::string_view replacement, Search search)
{
    auto found = search(0);
    const bool any = found.start >= 0;
    while (found.start >= 0) {
        replaceAt(text, found.start, found.length, replacement);
        found = search(found.start + length(replacement));
    }
    return any;
}

} // namespace

int lineEndBehind(std::string_view text, int from)
{
    const int end = skip(text, from, Blank);
    return standsAt(text, end, LineBreak) ? end + 1 : -1;
}

SectionSpan findSection(std::string_view text, const QString &name)
{
    const std::string rest = toCode(name) + ']';
    const Marker opening = nextMarker(text, "[#" + rest, 0);
    if (opening.start < 0)
        return {};
    const std::string closing = "[/#" + rest;
    SectionSpan span;
    for (Marker close = nextMarker(text, closing, opening.end + 1); close.start >= 0;
         close = nextMarker(text, closing, close.start + 1))
        span = {opening.start, close.end - opening.start, opening.end, close.start - opening.end};
    if (span.found())
        span.length = skip(text, span.start + span.length, LineBreak) - span.start;
    return span;
}

std::string keptBody(std::string_view text, const SectionSpan &span)
{
    std::string body;
    if (span.found()) {
        body.reserve(static_cast<size_t>(span.bodyLength) + 1);
        body.append(between(text, span.bodyStart, span.bodyStart + span.bodyLength)) += LineBreak;
    }
    return body;
}

void replaceSection(std::string &text, const SectionSpan &span, std::string_view replacement)
{
    replaceAt(text, span.start, span.length, replacement);
}

bool GenerateCode_Handle_Function(std::string &text, const QString &name, bool keep)
{
    const SectionSpan span = findSection(text, name);
    if (!span.found())
        return false;
    replaceSection(text, span, keep ? keptBody(text, span) : std::string());
    return true;
}

bool GenerateCode_DeleteBlankLine_FunctionEnd(std::string &text)
{
    std::string result;
    int copied = 0;
    for (int brace = indexOf(text, '}'); brace >= 0; brace = indexOf(text, '}', brace + 1)) {
        int keep = brace;
        while (keep > copied && standsAt(text, keep - 1, LineBreak))
            --keep;
        const bool isOne = keep == brace - 1;
        if (keep == brace)
            continue;
        const int lastBreak = keep;
        while (keep > copied && standsAt(text, keep - 1, Blank))
            --keep;
        if (isOne && keep == lastBreak) // as it is to be
            continue;
        result.append(between(text, copied, keep)) += LineBreak;
        copied = brace;
    }
    if (copied > 0) {
        result += between(text, copied, length(text));
        text = std::move(result);
    }
    return true;
}

bool GenerateCode_DeleteBlankLine_FunctionStart(std::string &text)
{
    std::string result;
    result.reserve(text.size());
    for (int i = 0; i < length(text); ++i) {
        const char c = text[static_cast<size_t>(i)];
        result += c;
        const int firstBreak = c == '{' ? lineEndBehind(text, i + 1) : -1;
        if (firstBreak < 0)
            continue;
        result += LineBreak;
        i = skip(text, firstBreak, LineBreak) - 1;
    }
    text = std::move(result);
    return true;
}

bool GenerateCode_DeleteMultiBlankLine(std::string &text)
{
    std::string result;
    result.reserve(text.size());
    for (int i = 0; i < length(text);) {
        if (standsAt(text, i, LineBreak)) {
            const int second = lineEndBehind(text, i + 1);
            const int third = second < 0 ? -1 : lineEndBehind(text, second);
            if (third >= 0) {
                result += "\n\n";
                i = third;
                continue;
            }
        }
        result += text[static_cast<size_t>(i++)];
    }
    text = std::move(result);
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

bool rewriteAll(std::string &text, const QString &patternText, const QString &replacement)
{
    const std::string with = toCode(replacement);
    std::string result;
    int copied = 0;
    QRegularExpressionMatchIterator matches = pattern(patternText).globalMatch(toText(text));
    if (!matches.hasNext())
        return false;
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        result.append(between(text, copied, match.capturedStart())).append(with);
        copied = match.capturedEnd();
    }
    result += between(text, copied, length(text));
    text = std::move(result);
    return true;
}

bool rewriteWord(std::string &text, const QString &word, const QString &replacement)
{
    const std::string what = toCode(word);
    const std::string with = toCode(replacement);
    const auto isWordAt = [&](int at) { return at >= 0 && at < length(text) && isWord(text[static_cast<size_t>(at)]); };
    bool any = false;
    for (int at = indexOf(text, what); at >= 0;) {
        if (isWordAt(at - 1) || isWordAt(at + length(what))) {
            at = indexOf(text, what, at + 1);
            continue;
        }
        replaceAt(text, at, length(what), with);
        at = indexOf(text, what, at + length(with));
        any = true;
    }
    return any;
}

CallMatch findCall(std::string_view text, const QString &function, int argumentCount, int from)
{
    const std::string name = toCode(function);
    for (int opening = indexOf(text, '(', from); opening >= 0; opening = indexOf(text, '(', opening + 1)) {
        const int at = opening - length(name);
        if (at < from || !standsAt(text, at, name))
            continue;
        CallMatch call;
        int end = opening + 1;
        while (call.arguments.size() < argumentCount) {
            if (!call.arguments.isEmpty() && !standsAt(text, end++, ','))
                break;
            const int start = skipSpaces(text, end);
            const int word = standsAt(text, start, '&') ? start + 1 : start;
            end = skipWord(text, word);
            if (end == word)
                break;
            call.arguments.append(toText(between(text, start, end)));
        }
        if (call.arguments.size() < argumentCount || !standsAt(text, end, ')'))
            continue;
        ++end;
        if (standsAt(text, end, ';'))
            ++end;
        call.start = at;
        call.length = end - call.start;
        return call;
    }
    return {};
}

void appendCall(std::string &text, const QString &function, const QStringList &arguments)
{
    append(text, function);
    text += '(';
    for (int i = 0; i < arguments.size(); ++i) {
        if (i > 0)
            text += ", ";
        append(text, arguments.at(i));
    }
    text += ");";
}

std::string callText(const QString &function, const QStringList &arguments)
{
    std::string text;
    appendCall(text, function, arguments);
    return text;
}

bool rewriteCall(std::string &text, const QString &function, const QStringList &arguments)
{
    const CallMatch call = findCall(text, function, arguments.size());
    if (call.found())
        replaceAt(text, call.start, call.length, callText(function, arguments));
    return call.found();
}

bool rewriteCalls(std::string &text, const QString &function, int argumentCount, std::string_view replacement)
{
    return replaceFound(text, replacement, [&](int from) { return findCall(text, function, argumentCount, from); });
}

bool rewriteAssignments(std::string &text, const QString &member, const QString &value)
{
    const std::string name = toCode(member);
    return replaceFound(text, name + " = " + toCode(value) + ';',
                        [&](int from) { return findAssignment(text, name, from); });
}

} // namespace ChipLoom
