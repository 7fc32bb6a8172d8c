#include "GenerateCode/TextCut.h"

#include "GenerateCode/TextEngine.h"

#include <QHash>

#include <algorithm>
#include <utility>

namespace ChipLoom {

namespace {

/// The stretches between the markers of user blocks, asked for from front to back.
class UserStretches
{
public:
    explicit UserStretches(std::string_view text) : m_text(text) { findFrom(0); }

    /// The end of the stretch that `at` lies in, or `at`.
    int skipped(int at)
    {
        while (m_end >= 0 && at > m_end)
            findFrom(m_end);
        return m_end >= 0 && at > m_start ? m_end : at;
    }

private:
    void findFrom(int from)
    {
        m_start = indexOf(m_text, "add user code begin", from);
        m_end = m_start < 0 ? -1 : indexOf(m_text, "add user code end", m_start);
    }

    std::string_view m_text;
    int m_start = -1;
    int m_end = -1;
};

/// The line that opens or closes a section.
struct MarkerLine
{
    int start = 0;
    int end = 0; ///< behind its line break
    bool closes = false;
    QString name;
};

// What a user writes is no marker, whatever it looks like.
std::vector<MarkerLine> markerLines(std::string_view text)
{
    std::vector<MarkerLine> lines;
    int at = indexOf(text, '[');
    if (at < 0)
        return lines;
    UserStretches user(text);
    for (; at >= 0; at = indexOf(text, '[', at + 1)) {
        if (const int behind = user.skipped(at); behind != at) {
            at = behind;
            continue;
        }
        const bool closes = standsAt(text, at + 1, '/');
        const int nameStart = at + (closes ? 3 : 2);
        const int bracket = standsAt(text, nameStart - 1, '#') ? indexOf(text, ']', nameStart) : -1;
        const int end = bracket < 0 ? -1 : lineEndBehind(text, bracket + 1);
        if (end >= 0)
            lines.push_back({at, end, closes, toText(between(text, nameStart, bracket))});
    }
    return lines;
}

bool isOfLeftSide(char c)
{
    return isWord(c) || c == '.' || c == '-' || c == '>' || c == '[' || c == ']';
}

} // namespace

struct TextCut::Bodies
{
    std::once_flag once[2];
    std::shared_ptr<const TextCut> cut[2];
};

TextCut::TextCut(std::string text, bool isCode) : m_text(std::move(text)), m_isCode(isCode)
{
    const std::vector<MarkerLine> lines = markerLines(m_text);
    QHash<QString, size_t> lastClosing;
    for (size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].closes)
            lastClosing.insert(lines[i].name, i);
    }
    int plain = 0;
    for (size_t i = 0; i < lines.size(); ++i) {
        const size_t close = lastClosing.value(lines[i].name, 0);
        if (lines[i].closes || close <= i || lines[close].start == lines[i].end)
            continue;
        cutPlain(plain, lines[i].start);
        const int piece = static_cast<int>(m_pieces.size());
        for (size_t inner = i; inner < close; ++inner) {
            if (lines[inner].closes)
                continue;
            const QString &name = lines[inner].name;
            int known = m_numbers.find(name);
            if (known < 0) {
                known = static_cast<int>(m_places.size());
                m_places.emplace_back(name, Place{piece, inner == i});
                m_numbers.insert(m_places.back().first, known);
            }
            Place &place = m_places[static_cast<size_t>(known)].second;
            if (lastClosing.value(name, inner) > close || place.piece != piece)
                place = {};
        }
        plain = lines[close].end;
        while (standsAt(m_text, plain, '\n'))
            ++plain;
        m_pieces.push_back({Piece::Kind::Section, lines[i].start, plain - lines[i].start, lines[i].end,
                            lines[close].start - lines[i].end, lines[i].name});
        m_bodies.resize(m_pieces.size());
        m_bodies.back() = std::make_unique<Bodies>();
        i = close;
    }
    cutPlain(plain, length(m_text));
    for (const auto &[name, place] : m_places) {
        if (place.outermost)
            m_outermost.append(name);
    }
}

TextCut::~TextCut() = default;

std::shared_ptr<const TextCut> TextCut::body(size_t piece, bool kept) const
{
    Bodies &bodies = *m_bodies[piece];
    std::call_once(bodies.once[kept], [&] {
        const Piece &section = m_pieces[piece];
        std::string text(between(section.bodyStart, section.bodyEnd()));
        if (kept)
            text += '\n';
        bodies.cut[kept] = std::make_shared<const TextCut>(std::move(text), true);
    });
    return bodies.cut[kept];
}

const TextCut::Derived *TextCut::findDerived(const void *key) const
{
    const std::lock_guard lock(m_mutex);
    return lookForDerived(key);
}

const TextCut::Derived &TextCut::addDerived(const void *key,
                                            const std::function<std::unique_ptr<Derived>()> &make) const
{
    const std::lock_guard lock(m_mutex);
    const Derived *known = lookForDerived(key); // by another thread, in between
    return known ? *known : *m_derived.emplace_back(key, make()).second;
}

const TextCut::Derived *TextCut::lookForDerived(const void *key) const
{
    const auto found =
        std::find_if(m_derived.begin(), m_derived.end(), [&](const auto &one) { return one.first == key; });
    return found == m_derived.end() ? nullptr : found->second.get();
}

void TextCut::cutPlain(int from, int to)
{
    if (m_isCode)
        cutStatements(from, to);
    else if (from < to)
        m_pieces.push_back({Piece::Kind::Plain, from, to - from});
}

void TextCut::cutStatements(int from, int to)
{
    for (int at = from; at < to; ++at) {
        const char c = m_text[static_cast<size_t>(at)];
        if (c != '(' && c != '=')
            continue;
        Piece piece = c == '(' ? callAt(at, from, to) : assignmentAt(at, from, to);
        if (piece.length == 0)
            continue;
        if (from < piece.start)
            m_pieces.push_back({Piece::Kind::Plain, from, piece.start - from});
        from = piece.start + piece.length;
        at = from - 1;
        m_pieces.push_back(std::move(piece));
    }
    if (from < to)
        m_pieces.push_back({Piece::Kind::Plain, from, to - from});
}

// With the blanks in front, the ";" and the line breaks behind it.
TextCut::Piece TextCut::callAt(int opening, int from, int to) const
{
    const std::string_view text = between(0, to);
    const auto charAt = [&](int at) { return text[static_cast<size_t>(at)]; };
    int name = opening;
    while (name > from && isWord(charAt(name - 1)))
        --name;
    if (name == opening)
        return {};
    Piece call{Piece::Kind::Call};
    int at = opening + 1;
    while (at < to && charAt(at) != ')') {
        if (!call.samples.isEmpty() && charAt(at++) != ',')
            return {};
        const int start = skipSpaces(text, at);
        const int word = standsAt(text, start, '&') ? start + 1 : start;
        at = skipWord(text, word);
        if (at == word)
            return {};
        call.samples.append(toText(between(start, at)));
    }
    if (at >= to)
        return {};
    ++at;
    if (standsAt(text, at, ';'))
        ++at;
    call.name = toText(between(name, opening));
    call.bodyStart = call.start = name;
    call.bodyLength = at - name;
    while (standsAt(text, at, '\n'))
        ++at;
    while (call.start > from && charAt(call.start - 1) == ' ')
        --call.start;
    call.length = at - call.start;
    return call;
}

TextCut::Piece TextCut::assignmentAt(int sign, int from, int to) const
{
    const std::string_view text = between(0, to);
    const auto charAt = [&](int at) { return text[static_cast<size_t>(at)]; };
    const int value = skipSpaces(text, sign + 1);
    const int end = skipWord(text, value);
    if (end == value || !standsAt(text, end, ';'))
        return {};
    int leftEnd = sign;
    while (leftEnd > from && isSpace(charAt(leftEnd - 1)))
        --leftEnd;
    int left = leftEnd;
    while (left > from && isOfLeftSide(charAt(left - 1)))
        --left;
    if (left == leftEnd)
        return {};
    return {Piece::Kind::Assignment,      left, end + 1 - left, value, end - value, toText(between(left, leftEnd)),
            {toText(between(value, end))}};
}

} // namespace ChipLoom
