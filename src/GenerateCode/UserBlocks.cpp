#include "GenerateCode/UserBlocks.h"

#include <QHash>
#include <QSet>

#include <algorithm>
#include <optional>
#include <vector>

namespace ChipLoom {

namespace {

const QLatin1String BeginWords("add user code begin ");
const QLatin1String EndWords("add user code end ");
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

const QLatin1String MarkerWords("add user code ");

struct NamedBlock
{
    QString name;
    Block block;
    bool beginsLine = false; // a line break follows the begin line
};

// Reads the marker whose words begin at `words`; false unless it is complete and its name is as names are generated.
bool readMarker(const QString &text, int words, bool begins, Marker &marker, QString &name)
{
    const QLatin1String kind = begins ? BeginWords : EndWords;
    if (!standsAt(text, words, kind))
        return false;
    const int nameStart = words + kind.size();
    const int close = text.indexOf(CommentEnd, nameStart);
    const int lineEnd = text.indexOf(QLatin1Char('\n'), nameStart);
    if (close < 0 || (lineEnd >= 0 && lineEnd < close))
        return false;
    int nameEnd = close;
    while (nameEnd > nameStart && text.at(nameEnd - 1) == Blank)
        --nameEnd;
    if (nameEnd == nameStart || !isWord(text.at(nameStart)))
        return false;
    marker = {commentStartBefore(text, words), close + CommentEnd.size()};
    name = text.mid(nameStart, nameEnd - nameStart);
    return marker.start >= 0;
}

// Nothing if the blocks of a text are not in plain order.
std::optional<std::vector<NamedBlock>> plainBlocks(const QString &text)
{
    std::vector<NamedBlock> blocks;
    QSet<QString> names;
    Marker begin, end;
    QString name, endName;
    int behind = 0;
    for (int at = text.indexOf(MarkerWords); at >= 0; at = text.indexOf(MarkerWords, behind)) {
        if (!readMarker(text, at, true, begin, name) || begin.start < behind || names.contains(name))
            return std::nullopt;
        at = text.indexOf(MarkerWords, begin.end);
        if (at < 0 || !readMarker(text, at, false, end, endName) || end.start < begin.end || endName != name)
            return std::nullopt;
        behind = end.end;
        names.insert(name);
        // A block needs a character between its lines to be one.
        if (end.start == begin.end)
            continue;
        if (!std::all_of(name.cbegin(), name.cend(), [](QChar c) { return isWord(c) || c == Blank; }))
            continue;
        blocks.push_back({name,
                          {begin.start, end.end - begin.start, begin.end, end.start - begin.end},
                          text.at(begin.end) == QLatin1Char('\n')});
    }
    return blocks;
}

QString replacementOf(const QString &oldText, const Block &kept, const QString &newText, const Block &place)
{
    QString replacement = oldText.mid(kept.start, kept.length);
    replacement.replace(QLatin1String("\\1"), newText.mid(place.bodyStart, place.bodyLength));
    return replacement;
}

// Puts all blocks into their places at once.
void splice(const QString &oldText, const std::vector<NamedBlock> &oldBlocks, QString &newText,
            const std::vector<NamedBlock> &newBlocks)
{
    QHash<QString, Block> kept;
    for (const NamedBlock &one : oldBlocks)
        kept.insert(one.name, one.block);
    QString result;
    result.reserve(newText.size() + oldText.size());
    int copied = 0;
    for (const NamedBlock &place : newBlocks) {
        const auto old = kept.constFind(place.name);
        if (old == kept.constEnd() || !place.beginsLine)
            continue;
        result.append(newText.midRef(copied, place.block.start - copied));
        result.append(replacementOf(oldText, *old, newText, place.block));
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
