#include "GenerateCode/TextCut.h"

#include "GenerateCode/TextEngine.h"

#include <utility>

namespace ChipLoom {

namespace {

/// The stretches between the markers of user blocks, asked for from front to back.
class UserStretches
{
public:
    explicit UserStretches(const QString &text) : m_text(text) { find(0); }

    /// The end of the stretch that `at` lies in, or `at`.
    int skipped(int at)
    {
        while (m_end >= 0 && at > m_end)
            find(m_end);
        return m_end >= 0 && at > m_start ? m_end : at;
    }

private:
    void find(int from)
    {
        m_start = m_text.indexOf(QLatin1String("add user code begin"), from);
        m_end = m_start < 0 ? -1 : m_text.indexOf(QLatin1String("add user code end"), m_start);
    }

    const QString &m_text;
    int m_start = -1;
    int m_end = -1;
};

/// The line that opens or closes a section.
struct MarkerLine
{
    int start = 0;
    int end = 0; ///< behind its line break
    bool closes = false;
    QStringView name;
};

// What a user writes is no marker, whatever it looks like.
std::vector<MarkerLine> markerLines(const QString &text)
{
    std::vector<MarkerLine> lines;
    int at = text.indexOf(QLatin1Char('['));
    if (at < 0)
        return lines;
    UserStretches user(text);
    for (; at >= 0; at = text.indexOf(QLatin1Char('['), at + 1)) {
        if (const int behind = user.skipped(at); behind != at) {
            at = behind;
            continue;
        }
        const bool closes = text.midRef(at + 1, 1) == QLatin1String("/");
        const int nameStart = at + (closes ? 3 : 2);
        const int bracket =
            text.midRef(nameStart - 1, 1) == QLatin1String("#") ? text.indexOf(QLatin1Char(']'), at) : -1;
        const int end = bracket < 0 ? -1 : lineEndBehind(text, bracket + 1);
        if (end >= 0)
            lines.push_back({at, end, closes, QStringView(text).mid(nameStart, bracket - nameStart)});
    }
    return lines;
}

bool isWord(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}

bool isOfLeftSide(QChar c)
{
    return isWord(c) || c == QLatin1Char('.') || c == QLatin1Char('-') || c == QLatin1Char('>') ||
           c == QLatin1Char('[') || c == QLatin1Char(']');
}

} // namespace

struct TextCut::Bodies
{
    std::once_flag once[2];
    std::shared_ptr<const TextCut> cut[2];
};

TextCut::TextCut(QString text, bool isCode) : m_text(std::move(text)), m_isCode(isCode)
{
    const std::vector<MarkerLine> lines = markerLines(m_text);
    QHash<QStringView, size_t> lastClosing;
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
            const QString name = lines[inner].name.toString();
            const auto known = m_places.constFind(name);
            if (lastClosing.value(lines[inner].name, inner) > close ||
                (known != m_places.constEnd() && known->piece != piece))
                m_places.insert(name, {});
            else if (known == m_places.constEnd())
                m_places.insert(name, {piece, inner == i});
        }
        plain = lines[close].end;
        while (plain < m_text.size() && m_text.at(plain) == QLatin1Char('\n'))
            ++plain;
        m_pieces.push_back({Piece::Kind::Section, lines[i].start, plain - lines[i].start, lines[i].end,
                            lines[close].start - lines[i].end, lines[i].name.toString()});
        m_bodies.resize(m_pieces.size());
        m_bodies.back() = std::make_unique<Bodies>();
        i = close;
    }
    cutPlain(plain, m_text.size());
}

TextCut::~TextCut() = default;

QStringList TextCut::names() const
{
    QStringList names;
    for (auto place = m_places.begin(); place != m_places.end(); ++place) {
        if (place->outermost)
            names.append(place.key());
    }
    return names;
}

std::shared_ptr<const TextCut> TextCut::body(size_t piece, bool kept) const
{
    Bodies &bodies = *m_bodies[piece];
    std::call_once(bodies.once[kept], [&] {
        const Piece &section = m_pieces[piece];
        QString text = m_text.mid(section.bodyStart, section.bodyLength);
        if (kept)
            text += QLatin1Char('\n');
        bodies.cut[kept] = std::make_shared<const TextCut>(std::move(text), true);
    });
    return bodies.cut[kept];
}

const TextCut::Derived &TextCut::derived(const void *key, const std::function<std::unique_ptr<Derived>()> &make) const
{
    const std::lock_guard lock(m_mutex);
    for (const auto &[name, made] : m_derived) {
        if (name == key)
            return *made;
    }
    return *m_derived.emplace_back(key, make()).second;
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
        const QChar c = m_text.at(at);
        if (c != QLatin1Char('(') && c != QLatin1Char('='))
            continue;
        Piece piece = c == QLatin1Char('(') ? callAt(at, from, to) : assignmentAt(at, from, to);
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
    int name = opening;
    while (name > from && isWord(m_text.at(name - 1)))
        --name;
    if (name == opening)
        return {};
    Piece call{Piece::Kind::Call};
    const auto skipSpaces = [&](int at) {
        while (at < to && m_text.at(at).isSpace())
            ++at;
        return at;
    };
    int at = opening + 1;
    while (at < to && m_text.at(at) != QLatin1Char(')')) {
        if (!call.samples.isEmpty() && m_text.at(at++) != QLatin1Char(','))
            return {};
        const int start = at = skipSpaces(at);
        if (at < to && m_text.at(at) == QLatin1Char('&'))
            ++at;
        const int word = at;
        while (at < to && isWord(m_text.at(at)))
            ++at;
        if (at == word)
            return {};
        call.samples.append(m_text.mid(start, at - start));
    }
    if (at >= to)
        return {};
    ++at;
    if (at < to && m_text.at(at) == QLatin1Char(';'))
        ++at;
    call.name = m_text.mid(name, opening - name);
    call.bodyStart = call.start = name;
    call.bodyLength = at - name;
    while (at < to && m_text.at(at) == QLatin1Char('\n'))
        ++at;
    while (call.start > from && m_text.at(call.start - 1) == QLatin1Char(' '))
        --call.start;
    call.length = at - call.start;
    return call;
}

TextCut::Piece TextCut::assignmentAt(int sign, int from, int to) const
{
    int end = sign + 1;
    while (end < to && m_text.at(end).isSpace())
        ++end;
    const int value = end;
    while (end < to && isWord(m_text.at(end)))
        ++end;
    if (end == value || end >= to || m_text.at(end) != QLatin1Char(';'))
        return {};
    int leftEnd = sign;
    while (leftEnd > from && m_text.at(leftEnd - 1).isSpace())
        --leftEnd;
    int left = leftEnd;
    while (left > from && isOfLeftSide(m_text.at(left - 1)))
        --left;
    if (left == leftEnd)
        return {};
    return {Piece::Kind::Assignment,         left, end + 1 - left, value, end - value, m_text.mid(left, leftEnd - left),
            {m_text.mid(value, end - value)}};
}

} // namespace ChipLoom
