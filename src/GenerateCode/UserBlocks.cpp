#include "GenerateCode/UserBlocks.h"

#include <QHash>
#include <QSet>
#include <QStringMatcher>

#include <algorithm>
#include <optional>
#include <vector>

namespace ChipLoom {

namespace {

const QLatin1String BeginWords("add user code begin ");
const QLatin1String EndWords("add user code end ");
const QLatin1String BodyOfTheNewText("\\1");
const QLatin1String CommentStart("/*");
const QLatin1String CommentEnd("*/");
constexpr QChar Blank(' ');

bool isWord(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

int skipBlanks(const QString &text, int from)
{
    while (from < text.size() && text.at(from) == Blank)
        ++from;
    return from;
}

bool standsAt(const QString &text, int position, QLatin1String what)
{
    return text.midRef(position, what.size()) == what;
}

// Start of the "/*" that opens the comment whose words begin at `words`, or -1.
int commentStartBefore(const QString &text, int words)
{
    while (words > 0 && text.at(words - 1) == Blank)
        --words;
    return words >= 2 && standsAt(text, words - 2, CommentStart) ? words - 2 : -1;
}

struct Marker
{
    int start = -1;
    int end = -1; // behind the "*/"
};

// The marker comment whose words begin at `words`, if it is complete there.
Marker markerAt(const QString &text, int words, int wordsLength)
{
    const int start = commentStartBefore(text, words);
    const int close = skipBlanks(text, words + wordsLength);
    if (start < 0 || !standsAt(text, close, CommentEnd))
        return {};
    return {start, close + 2};
}

struct Block
{
    int start = -1;
    int length = 0;
    int bodyStart = 0;
    int bodyLength = 0;

    bool found() const { return start >= 0; }
};

Block findBlock(const QString &text, const QString &name)
{
    const QString begin = BeginWords + name;
    Marker first;
    for (int at = text.indexOf(begin); at >= 0 && first.start < 0; at = text.indexOf(begin, at + 1))
        first = markerAt(text, at, begin.size());
    if (first.start < 0)
        return {};

    const QString end = EndWords + name;
    for (int at = text.lastIndexOf(end); at > first.end; at = text.lastIndexOf(end, at - 1)) {
        const Marker last = markerAt(text, at, end.size());
        if (last.start > first.end)
            return {first.start, last.end - first.start, first.end, last.start - first.end};
    }
    return {};
}

struct Begin
{
    QString name;
    int end = -1;
};

// The next begin line that names a block which can be retained, at or behind `from`.
Begin nextBegin(const QString &text, int from)
{
    for (int at = text.indexOf(BeginWords, from); at >= 0; at = text.indexOf(BeginWords, at + 1)) {
        if (commentStartBefore(text, at) < from)
            continue;
        const int nameStart = at + BeginWords.size();
        if (nameStart >= text.size() || !isWord(text.at(nameStart)))
            continue;
        int nameEnd = nameStart;
        while (nameEnd < text.size() && (isWord(text.at(nameEnd)) || text.at(nameEnd) == Blank))
            ++nameEnd;
        int end = nameEnd + CommentEnd.size();
        if (!standsAt(text, nameEnd, CommentEnd) || end >= text.size() || text.at(end) != QLatin1Char('\n'))
            continue;
        while (end < text.size() && text.at(end) == QLatin1Char('\n'))
            ++end;
        return {text.mid(nameStart, nameEnd - nameStart).trimmed(), end};
    }
    return {};
}

// ---- Files as they are generated: blocks one behind the other, no name twice. One pass finds them all. ----

const QStringMatcher MarkerWords(QStringLiteral("add user code "));

struct NamedBlock
{
    QStringView name; // in its text
    Block block;
    bool beginsLine = false; // a line break follows the begin line
};

struct NamedMarker
{
    Marker place;
    QStringView name;
    bool begins = false;
};

// The next marker that can belong to a block which is retained, at or behind `from`. All others are plain text.
NamedMarker nextMarker(const QString &text, int from)
{
    const QStringView view(text);
    for (int at = MarkerWords.indexIn(text, from); at >= 0; at = MarkerWords.indexIn(text, at + 1)) {
        const QStringView rest = view.mid(at + MarkerWords.pattern().size());
        const bool begins = rest.startsWith(QLatin1String("begin "));
        if (!begins && !rest.startsWith(QLatin1String("end ")))
            continue;
        const int nameStart = at + (begins ? BeginWords.size() : EndWords.size());
        int nameEnd = nameStart;
        while (nameEnd < text.size() && (isWord(text.at(nameEnd)) || text.at(nameEnd) == Blank))
            ++nameEnd;
        const int start = commentStartBefore(text, at);
        if (start >= 0 && nameEnd > nameStart && text.at(nameStart) != Blank && standsAt(text, nameEnd, CommentEnd))
            return {{start, nameEnd + CommentEnd.size()}, view.mid(nameStart, nameEnd - nameStart).trimmed(), begins};
    }
    return {};
}

// Nothing if the blocks of a text are not in plain order.
std::optional<std::vector<NamedBlock>> plainBlocks(const QString &text)
{
    std::vector<NamedBlock> blocks;
    QSet<QStringView> names;
    int behind = 0;
    for (NamedMarker begin = nextMarker(text, 0); begin.place.start >= 0; begin = nextMarker(text, behind)) {
        const NamedMarker end = nextMarker(text, begin.place.end);
        if (!begin.begins || end.begins || end.name != begin.name || names.contains(begin.name) ||
            begin.place.start < behind || end.place.start < begin.place.end)
            return std::nullopt;
        names.insert(begin.name);
        behind = end.place.end;
        // A block needs a character between its lines to be one.
        if (end.place.start > begin.place.end)
            blocks.push_back({begin.name,
                              {begin.place.start, end.place.end - begin.place.start, begin.place.end,
                               end.place.start - begin.place.end},
                              text.at(begin.place.end) == QLatin1Char('\n')});
    }
    return blocks;
}

QString replacementOf(const QString &oldText, const Block &kept, const QString &newText, const Block &place)
{
    QString replacement = oldText.mid(kept.start, kept.length);
    replacement.replace(BodyOfTheNewText, newText.mid(place.bodyStart, place.bodyLength));
    return replacement;
}

// Puts all blocks into their places at once.
void splice(const QString &oldText, const std::vector<NamedBlock> &oldBlocks, QString &newText,
            const std::vector<NamedBlock> &newBlocks)
{
    QHash<QStringView, Block> kept;
    for (const NamedBlock &one : oldBlocks)
        kept.insert(one.name, one.block);
    const bool expands = oldText.contains(QLatin1Char('\\')) && oldText.contains(BodyOfTheNewText);
    QString result;
    result.reserve(newText.size() + oldText.size());
    int copied = 0;
    for (const NamedBlock &place : newBlocks) {
        const auto old = kept.constFind(place.name);
        if (old == kept.constEnd() || !place.beginsLine)
            continue;
        result.append(newText.midRef(copied, place.block.start - copied));
        if (expands)
            result.append(replacementOf(oldText, *old, newText, place.block));
        else
            result.append(oldText.midRef(old->start, old->length));
        copied = place.block.start + place.block.length;
    }
    newText = result.append(newText.midRef(copied));
}

} // namespace

QStringList userBlockNames(const QString &text)
{
    QStringList names;
    for (Begin begin = nextBegin(text, 0); begin.end >= 0; begin = nextBegin(text, begin.end))
        names.append(begin.name);
    return names;
}

bool GenerateCode_Handle_KeepUserCode(const QString &oldText, QString &newText, const QString &name)
{
    const Block kept = findBlock(oldText, name);
    const Block place = kept.found() ? findBlock(newText, name) : Block();
    if (!place.found())
        return true;
    newText.replace(place.start, place.length, replacementOf(oldText, kept, newText, place));
    return true;
}

bool GenerateCode_Handle_KeepUserCode_EXT(const QString &oldText, QString &newText)
{
    const auto oldBlocks = plainBlocks(oldText);
    const auto newBlocks = oldBlocks ? plainBlocks(newText) : std::nullopt;
    if (newBlocks) {
        splice(oldText, *oldBlocks, newText, *newBlocks);
        return true;
    }
    if (!oldText.contains(EndWords))
        return true;
    for (const QString &name : userBlockNames(newText))
        GenerateCode_Handle_KeepUserCode(oldText, newText, name);
    return true;
}

QStringList expandedUserBlocks(const QString &oldText, const QString &newText)
{
    QStringList expanded;
    if (!oldText.contains(BodyOfTheNewText))
        return expanded;
    for (const QString &name : userBlockNames(newText)) {
        const Block former = findBlock(oldText, name);
        const Block block = findBlock(newText, name);
        const QString text = oldText.mid(former.start, former.length);
        if (former.found() && text.contains(BodyOfTheNewText) && newText.midRef(block.start, block.length) != text)
            expanded.append(name);
    }
    return expanded;
}

QStringList lostUserBlocks(const QString &oldText, const QString &newText)
{
    const QStringList carried = userBlockNames(newText);
    const QSet<QString> kept(carried.begin(), carried.end());
    QStringList lost;
    for (const QString &name : userBlockNames(oldText)) {
        if (kept.contains(name) || lost.contains(name))
            continue;
        const Block block = findBlock(oldText, name);
        if (block.found() && !oldText.midRef(block.bodyStart, block.bodyLength).trimmed().isEmpty())
            lost.append(name);
    }
    return lost;
}

} // namespace ChipLoom
