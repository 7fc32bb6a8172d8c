#include "GenerateCode/UserBlocks.h"

#include "GenerateCode/NameTable.h"
#include "GenerateCode/TextCut.h"

#include <QSet>

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace ChipLoom {

namespace {

constexpr std::string_view BeginWords = "add user code begin ";
constexpr std::string_view EndWords = "add user code end ";
constexpr std::string_view BodyOfTheNewText = "\\1";
constexpr std::string_view CommentStart = "/*";
constexpr std::string_view CommentEnd = "*/";
constexpr char Blank = ' ';

// Start of the "/*" that opens the comment whose words begin at `words`, or -1.
int commentStartBefore(std::string_view text, int words)
{
    while (words > 0 && standsAt(text, words - 1, Blank))
        --words;
    return words >= 2 && standsAt(text, words - 2, CommentStart) ? words - 2 : -1;
}

/// Where a name that begins at `from` ends: word characters and blanks.
int nameEndBehind(std::string_view text, int from)
{
    const std::string_view rest = text.substr(static_cast<size_t>(from));
    const auto end = std::find_if_not(rest.begin(), rest.end(), [](char c) { return isWord(c) || c == Blank; });
    return from + static_cast<int>(end - rest.begin());
}

std::string_view withoutBlanksBehind(std::string_view name)
{
    while (name.ends_with(Blank))
        name.remove_suffix(1);
    return name;
}

struct Marker
{
    int start = -1;
    int end = -1; // behind the "*/"
};

// The marker comment whose words begin at `words`, if it is complete there.
Marker markerAt(std::string_view text, int words, int wordsLength)
{
    const int start = commentStartBefore(text, words);
    int close = words + wordsLength;
    while (standsAt(text, close, Blank))
        ++close;
    if (start < 0 || !standsAt(text, close, CommentEnd))
        return {};
    return {start, close + length(CommentEnd)};
}

struct Block
{
    int start = -1;
    int length = 0;
    int bodyStart = 0;
    int bodyLength = 0;

    bool found() const { return start >= 0; }
    std::string_view in(std::string_view text) const { return between(text, start, start + length); }
    std::string_view bodyIn(std::string_view text) const { return between(text, bodyStart, bodyStart + bodyLength); }
};

Block findBlock(std::string_view text, std::string_view name)
{
    const std::string begin = std::string(BeginWords).append(name);
    Marker first;
    for (int at = indexOf(text, begin); at >= 0 && first.start < 0; at = indexOf(text, begin, at + 1))
        first = markerAt(text, at, length(begin));
    if (first.start < 0)
        return {};

    const std::string end = std::string(EndWords).append(name);
    for (size_t at = text.rfind(end); at != std::string_view::npos && static_cast<int>(at) > first.end;
         at = text.rfind(end, at - 1)) {
        const Marker last = markerAt(text, static_cast<int>(at), length(end));
        if (last.start > first.end)
            return {first.start, last.end - first.start, first.end, last.start - first.end};
    }
    return {};
}

struct Begin
{
    std::string_view name;
    int end = -1;
};

// The next begin line that names a block which can be retained, at or behind `from`.
Begin nextBegin(std::string_view text, int from)
{
    for (int at = indexOf(text, BeginWords, from); at >= 0; at = indexOf(text, BeginWords, at + 1)) {
        if (commentStartBefore(text, at) < from)
            continue;
        const int nameStart = at + length(BeginWords);
        const int nameEnd = nameEndBehind(text, nameStart);
        int end = nameEnd + length(CommentEnd);
        if (nameEnd == nameStart || standsAt(text, nameStart, Blank) || !standsAt(text, nameEnd, CommentEnd) ||
            !standsAt(text, end, '\n'))
            continue;
        while (standsAt(text, end, '\n'))
            ++end;
        return {withoutBlanksBehind(between(text, nameStart, nameEnd)), end};
    }
    return {};
}

// ---- Files as they are generated: blocks one behind the other, no name twice. One pass finds them all. ----

constexpr std::string_view MarkerWords = "add user code ";

struct NamedBlock
{
    std::string_view name; // in its text
    Block block;
    bool beginsLine = false; // a line break follows the begin line
};

struct NamedMarker
{
    Marker place;
    std::string_view name;
    bool begins = false;
};

// The next marker that can belong to a block which is retained, and ends behind `from`. All others are plain text.
NamedMarker nextMarker(std::string_view text, int from)
{
    const auto next = [&](int at) { return indexOf(text, CommentStart.front(), at); };
    for (int start = next(std::max(0, from - 1)); start >= 0; start = next(start + 1)) {
        if (!standsAt(text, start, CommentStart))
            continue;
        int at = start + length(CommentStart);
        while (standsAt(text, at, Blank))
            ++at;
        const bool begins = standsAt(text, at, BeginWords);
        if (!begins && !standsAt(text, at, EndWords))
            continue;
        const int nameStart = at + length(begins ? BeginWords : EndWords);
        const int nameEnd = nameEndBehind(text, nameStart);
        if (nameEnd > nameStart && !standsAt(text, nameStart, Blank) && standsAt(text, nameEnd, CommentEnd))
            return {
                {start, nameEnd + length(CommentEnd)}, withoutBlanksBehind(between(text, nameStart, nameEnd)), begins};
    }
    return {};
}

// Nothing if the blocks of a text are not in plain order.
std::optional<std::vector<NamedBlock>> plainBlocks(std::string_view text)
{
    std::vector<NamedBlock> blocks;
    NameTable names;
    int behind = 0;
    for (NamedMarker begin = nextMarker(text, 0); begin.place.start >= 0; begin = nextMarker(text, behind)) {
        const NamedMarker end = nextMarker(text, begin.place.end);
        if (!begin.begins || end.begins || end.name != begin.name || begin.place.start < behind ||
            end.place.start < begin.place.end || !names.insert(begin.name, 0))
            return std::nullopt;
        behind = end.place.end;
        // A block needs a character between its lines to be one.
        if (end.place.start > begin.place.end)
            blocks.push_back({begin.name,
                              {begin.place.start, end.place.end - begin.place.start, begin.place.end,
                               end.place.start - begin.place.end},
                              standsAt(text, begin.place.end, '\n')});
    }
    return blocks;
}

/// Those of a text that comes again, kept with it.
struct PlainBlocks : TextCut::Derived
{
    explicit PlainBlocks(const TextCut &cut) : blocks(plainBlocks(cut.text())) {}

    std::optional<std::vector<NamedBlock>> blocks;
};

// ---- Files as users leave them: markers may be damaged, or have names that are never retained. ----

struct Extent
{
    int begin = -1; // behind the first begin marker
    int end = -1;   // in front of the last end marker

    bool isBlock() const { return begin >= 0 && end > begin; }
    bool isEmpty() const { return begin >= 0 && end == begin; }
    std::string_view in(std::string_view text) const { return trimmed(between(text, begin, end)); }
    void add(bool begins, const Marker &place)
    {
        if (!begins)
            end = place.start;
        else if (begin < 0)
            begin = place.end;
    }
};

struct MarkedName
{
    std::string_view name; // in its text
    int first = 0;         // of its markers
    Extent any;            // by all markers that a person takes for one
    Extent retained;       // by those that count
};

// The names on the marker comments of a text, each once, in order.
std::vector<MarkedName> markedNames(std::string_view text)
{
    std::vector<MarkedName> names;
    std::unordered_map<std::string_view, size_t> places;
    for (int at = indexOf(text, MarkerWords); at >= 0; at = indexOf(text, MarkerWords, at + 1)) {
        const bool begins = standsAt(text, at, BeginWords);
        const int start = commentStartBefore(text, at);
        if (start < 0 || (!begins && !standsAt(text, at, EndWords)))
            continue;
        const int nameStart = at + length(begins ? BeginWords : EndWords);
        const std::string_view line = text.substr(0, text.find('\n', static_cast<size_t>(nameStart)));
        const int close = indexOf(line, CommentEnd, nameStart);
        const std::string_view name = between(line, nameStart, close < 0 ? length(line) : close);
        const auto [known, isNew] = places.emplace(trimmed(name), names.size());
        if (isNew)
            names.push_back({trimmed(name), start, {}, {}});
        MarkedName &one = names[known->second];
        one.any.add(begins, {start, close < 0 ? length(line) : close + length(CommentEnd)});
        if (close >= 0 && withoutBlanksBehind(name) == trimmed(name)) // blanks only, and none in front
            one.retained.add(begins, {start, close + length(CommentEnd)});
    }
    return names;
}

std::string replacementOf(std::string_view oldText, const Block &kept, std::string_view newText, const Block &place)
{
    std::string replacement(kept.in(oldText));
    replaceAll(replacement, BodyOfTheNewText, place.bodyIn(newText));
    return replacement;
}

// Puts all blocks into their places at once.
void splice(std::string_view oldText, const std::vector<NamedBlock> &oldBlocks, std::string &newText,
            const std::vector<NamedBlock> &newBlocks)
{
    NameTable kept;
    kept.reserve(static_cast<int>(oldBlocks.size()));
    for (size_t i = 0; i < oldBlocks.size(); ++i)
        kept.insert(oldBlocks[i].name, static_cast<int>(i));
    const bool expands = indexOf(oldText, BodyOfTheNewText) >= 0;
    std::string result;
    result.reserve(newText.size() + oldText.size());
    int copied = 0;
    for (const NamedBlock &place : newBlocks) {
        const int number = kept.find(place.name);
        if (number < 0 || !place.beginsLine)
            continue;
        const Block &old = oldBlocks[static_cast<size_t>(number)].block;
        result += between(newText, copied, place.block.start);
        if (expands)
            result += replacementOf(oldText, old, newText, place.block);
        else
            result += old.in(oldText);
        copied = place.block.start + place.block.length;
    }
    result += between(newText, copied, length(newText));
    newText = std::move(result);
}

} // namespace

QStringList userBlockNames(std::string_view text)
{
    QStringList names;
    for (Begin begin = nextBegin(text, 0); begin.end >= 0; begin = nextBegin(text, begin.end))
        names.append(toText(begin.name));
    return names;
}

bool GenerateCode_Handle_KeepUserCode(std::string_view oldText, std::string &newText, const QString &name)
{
    const std::string blockName = toCode(name);
    const Block kept = findBlock(oldText, blockName);
    const Block place = kept.found() ? findBlock(newText, blockName) : Block();
    if (!place.found())
        return true;
    replaceAt(newText, place.start, place.length, replacementOf(oldText, kept, newText, place));
    return true;
}

bool GenerateCode_Handle_KeepUserCode_EXT(std::string_view oldText, std::string &newText)
{
    putUserBlocksBack(oldText, newText);
    return true;
}

bool putUserBlocksBack(std::string_view oldText, std::string &newText, const TextCut *cut)
{
    // Equal texts keep their blocks, as most files of a project do.
    if (oldText == newText && indexOf(oldText, BodyOfTheNewText) < 0)
        return true;
    const auto oldBlocks = plainBlocks(oldText);
    if (oldBlocks) {
        const auto found = cut ? std::nullopt : plainBlocks(newText);
        const auto &newBlocks = cut ? cut->plan<PlainBlocks>().blocks : found;
        if (newBlocks) {
            splice(oldText, *oldBlocks, newText, *newBlocks);
            return true;
        }
    }
    if (indexOf(oldText, EndWords) < 0)
        return false;
    for (const QString &name : userBlockNames(newText))
        GenerateCode_Handle_KeepUserCode(oldText, newText, name);
    return false;
}

QStringList repeatedUserBlocks(std::string_view oldText, std::string_view newText)
{
    const QStringList former = userBlockNames(oldText);
    QStringList repeated = userBlockNames(newText);
    repeated.erase(std::remove_if(repeated.begin(), repeated.end(),
                                  [&former](const QString &name) { return former.count(name) < 2; }),
                   repeated.end());
    repeated.removeDuplicates();
    return repeated;
}

QStringList expandedUserBlocks(std::string_view oldText, std::string_view newText)
{
    QStringList expanded;
    if (indexOf(oldText, BodyOfTheNewText) < 0)
        return expanded;
    for (const QString &name : userBlockNames(newText)) {
        const std::string blockName = toCode(name);
        const Block former = findBlock(oldText, blockName);
        const Block block = findBlock(newText, blockName);
        const bool expands = former.found() && indexOf(former.in(oldText), BodyOfTheNewText) >= 0;
        if (expands && !(block.found() && block.in(newText) == former.in(oldText)))
            expanded.append(name);
    }
    return expanded;
}

QStringList lostUserBlocks(std::string_view oldText, std::string_view newText, std::string_view sample)
{
    const QStringList carried = userBlockNames(newText);
    const QSet<QString> carriedNames(carried.begin(), carried.end());
    std::vector<Extent> kept;
    std::vector<MarkedName> others;
    for (const MarkedName &one : markedNames(oldText)) {
        if (one.retained.isBlock() && carriedNames.contains(toText(one.name)))
            kept.push_back(one.retained);
        else if (!one.any.isEmpty() && !(one.any.isBlock() && one.any.in(oldText).empty()))
            others.push_back(one);
    }
    if (others.empty())
        return {};
    const std::vector<MarkedName> samples = markedNames(sample);
    QStringList lost;
    for (const MarkedName &one : others) {
        // What lies in a block that is carried over goes with it as plain text.
        const bool goesAlong = std::any_of(kept.begin(), kept.end(), [&](const Extent &outer) {
            return outer.begin <= one.first && one.first < outer.end;
        });
        const bool isSample =
            one.any.isBlock() && std::any_of(samples.begin(), samples.end(), [&](const MarkedName &other) {
                return other.name == one.name && other.any.isBlock() && other.any.in(sample) == one.any.in(oldText);
            });
        if (!goesAlong && !isSample)
            lost.append(toText(one.name));
    }
    return lost;
}

} // namespace ChipLoom
