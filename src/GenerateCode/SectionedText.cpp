#include "GenerateCode/SectionedText.h"

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/TextEngine.h"

#include <QMutex>

namespace ChipLoom {

// ---- Pieces ----

const SectionedText::State SectionedText::Untouched{};

SectionedText::State &SectionedText::change(size_t piece)
{
    if (m_states.empty())
        m_states.resize(m_cut->pieces().size());
    return m_states[piece];
}

SectionedText::Content &SectionedText::contentOf(State &state)
{
    if (state.content < 0) {
        state.content = static_cast<int>(m_contents.size());
        m_contents.emplace_back();
    }
    return m_contents[static_cast<size_t>(state.content)];
}

const SectionedText *SectionedText::editedBody(const State &state) const
{
    const bool isEdited = state.content >= 0 && !m_contents[static_cast<size_t>(state.content)].body.empty();
    return isEdited ? &m_contents[static_cast<size_t>(state.content)].body.front() : nullptr;
}

const std::string &SectionedText::textOf(const State &state) const
{
    static const std::string none;
    return state.content < 0 ? none : m_contents[static_cast<size_t>(state.content)].text;
}

std::string &SectionedText::settle(size_t piece, std::string text)
{
    State &changed = change(piece);
    changed.shape = State::Shape::Written;
    Content &content = contentOf(changed);
    content.body.clear();
    content.text = std::move(text);
    return content.text;
}

const TextCut &SectionedText::cutOf(size_t piece) const
{
    const State &now = state(piece);
    const SectionedText *body = editedBody(now);
    return body ? *body->m_cut : *m_cut->body(piece, now.shape == State::Shape::Kept);
}

SectionedText &SectionedText::bodyOf(size_t piece)
{
    State &changed = change(piece);
    std::vector<SectionedText> &body = contentOf(changed).body;
    if (body.empty())
        body.push_back(SectionedText(m_cut->body(piece, changed.shape == State::Shape::Kept)));
    if (changed.shape == State::Shape::AsItWas)
        changed.shape = State::Shape::Opened;
    return body.front();
}

void SectionedText::appendPiece(size_t piece, Parts &parts) const
{
    const TextCut::Piece &place = m_cut->pieces()[piece];
    const State &now = state(piece);
    const SectionedText *body = editedBody(now);
    const auto appendBody = [&] {
        if (body)
            body->appendTo(parts);
        else
            parts.push_back(m_cut->between(place.bodyStart, place.bodyEnd()));
    };
    switch (now.shape) {
    case State::Shape::AsItWas:
        parts.push_back(m_cut->between(place.start, place.end()));
        break;
    case State::Shape::Opened:
        parts.push_back(m_cut->between(place.start, place.bodyStart));
        appendBody();
        parts.push_back(m_cut->between(place.bodyEnd(), place.end()));
        break;
    case State::Shape::Kept:
        appendBody();
        if (!body)
            parts.push_back("\n");
        break;
    case State::Shape::Bare:
        appendBody();
        break;
    case State::Shape::Written:
        parts.push_back(textOf(now));
        break;
    }
}

std::string SectionedText::pieceText(size_t piece) const
{
    Parts parts;
    appendPiece(piece, parts);
    return textOf(parts);
}

void SectionedText::appendTo(Parts &parts) const
{
    if (m_states.empty() && m_cut)
        parts.push_back(m_cut->text());
    // What was left alone is one part.
    int untouched = 0;
    for (size_t i = 0; i < m_states.size(); ++i) {
        if (m_states[i].shape == State::Shape::AsItWas)
            continue;
        const TextCut::Piece &piece = m_cut->pieces()[i];
        parts.push_back(m_cut->between(untouched, piece.start));
        appendPiece(i, parts);
        untouched = piece.end();
    }
    if (!m_states.empty())
        parts.push_back(m_cut->between(untouched, length(m_cut->text())));
}

SectionedText::Parts SectionedText::parts() const
{
    Parts parts;
    parts.reserve(m_states.size() * 2 + 1);
    appendTo(parts);
    return parts;
}

std::string SectionedText::textOf(const Parts &parts)
{
    size_t size = 0;
    for (const std::string_view part : parts)
        size += part.size();
    std::string text;
    text.reserve(size);
    for (const std::string_view part : parts)
        text += part;
    return text;
}

std::string SectionedText::joined() const
{
    return m_states.empty() ? m_cut ? m_cut->text() : std::string() : textOf(parts());
}

void SectionedText::takeEdits(SectionedText &&other)
{
    Q_ASSERT(m_cut == other.m_cut);
    for (size_t i = 0; i < other.m_states.size(); ++i) {
        const State &edited = other.m_states[i];
        if (edited.shape == State::Shape::AsItWas)
            continue;
        Q_ASSERT(state(i).shape == State::Shape::AsItWas);
        State &changed = change(i);
        changed.shape = edited.shape;
        if (edited.content >= 0)
            contentOf(changed) = std::move(other.m_contents[static_cast<size_t>(edited.content)]);
    }
}

// ---- Sections ----

// Whether the section is this piece as it was, and not one within it or within a text.
bool SectionedText::isWhole(TextCut::Place place) const
{
    return place.outermost && state(static_cast<size_t>(place.piece)).shape == State::Shape::AsItWas;
}

// In the body of the piece; none if the section is the piece itself, if that is a text by now, or if the name stands in
// several places of it.
TextCut::Place SectionedText::placeWithin(TextCut::Place place, const QString &name) const
{
    const auto piece = static_cast<size_t>(place.piece);
    const bool isCut = !place.outermost && state(piece).shape != State::Shape::Written;
    return isCut ? cutOf(piece).place(name) : TextCut::Place();
}

std::string &SectionedText::section(const QString &name)
{
    m_none.clear();
    const TextCut::Place place = placeOf(name);
    if (place.piece < 0)
        return m_none;
    const auto at = static_cast<size_t>(place.piece);
    return state(at).shape == State::Shape::Written ? contentOf(change(at)).text : settle(at, pieceText(at));
}

std::shared_ptr<const TextCut> SectionedText::keptBody(const QString &name) const
{
    const TextCut::Place place = placeOf(name);
    if (place.piece < 0)
        return nullptr;
    const auto at = static_cast<size_t>(place.piece);
    if (isWhole(place))
        return m_cut->body(at, true);
    const State &now = state(at);
    if (placeWithin(place, name).piece >= 0)
        return editedBody(now) ? editedBody(now)->keptBody(name)
                               : SectionedText(m_cut->body(at, now.shape == State::Shape::Kept)).keptBody(name);
    const std::string text = pieceText(at);
    const SectionSpan span = findSection(text, name);
    return span.found() ? std::make_shared<const TextCut>(ChipLoom::keptBody(text, span), true) : nullptr;
}

bool SectionedText::put(TextCut::Place place, const QString &name, State::Shape shape, std::string text)
{
    if (place.piece < 0)
        return false;
    const auto at = static_cast<size_t>(place.piece);
    const bool goes = place.outermost && state(at).shape == State::Shape::Opened && shape == State::Shape::Written;
    if (isWhole(place) || goes) {
        State &changed = change(at);
        changed = {shape};
        if (!text.empty())
            contentOf(changed).text = std::move(text);
        return true;
    }
    if (const TextCut::Place inner = placeWithin(place, name); inner.piece >= 0)
        return bodyOf(at).put(inner, name, shape, std::move(text));
    std::string &around = section(name);
    const SectionSpan span = findSection(around, name);
    if (!span.found())
        return false;
    ChipLoom::replaceSection(around, span, shape == State::Shape::Kept ? ChipLoom::keptBody(around, span) : text);
    return true;
}

void SectionedText::unwrap(TextCut::Place place)
{
    if (!place.outermost)
        return;
    State &changed = change(static_cast<size_t>(place.piece));
    if (changed.shape == State::Shape::AsItWas || changed.shape == State::Shape::Opened)
        changed.shape = State::Shape::Bare;
}

bool SectionedText::handleSection(const QString &name, bool keep)
{
    return setShape(placeOf(name), name, keep ? State::Shape::Kept : State::Shape::Written);
}

SectionedText::Spot SectionedText::spotOf(const QString &name) const
{
    const TextCut::Place outer = placeOf(name);
    if (outer.piece < 0 || outer.outermost)
        return {name, outer, {}};
    return {name, outer, m_cut->body(static_cast<size_t>(outer.piece), false)->place(name)};
}

const SectionedText::Spots &SectionedText::spotsOf(const void *asker, const std::function<QStringList()> &names) const
{
    struct Found : TextCut::Derived
    {
        Spots spots;
    };
    static const SectionedText empty{std::string()};
    if (!m_cut)
        return empty.spotsOf(asker, names);
    return m_cut
        ->derived<Found>(asker,
                         [&] {
                             auto made = std::make_unique<Found>();
                             for (const QString &name : names())
                                 made->spots.push_back(spotOf(name));
                             return made;
                         })
        .spots;
}

std::shared_ptr<const TextCut> SectionedText::keptBody(const Spot &spot) const
{
    return isWhole(spot.outer) ? m_cut->body(static_cast<size_t>(spot.outer.piece), true) : keptBody(spot.name);
}

bool SectionedText::replaceSection(const Spot &spot, std::string text)
{
    return put(spot.outer, spot.name, State::Shape::Written, std::move(text));
}

bool SectionedText::isGone(const Spot &spot) const
{
    if (spot.outer.piece < 0)
        return false;
    const State &now = state(static_cast<size_t>(spot.outer.piece));
    return now.shape == State::Shape::Written && textOf(now).empty();
}

bool SectionedText::handleSection(const Spot &spot, bool keep)
{
    const State::Shape made = keep ? State::Shape::Kept : State::Shape::Written;
    if (spot.inner.outermost) {
        const auto outer = static_cast<size_t>(spot.outer.piece);
        const auto inner = static_cast<size_t>(spot.inner.piece);
        const State::Shape shape = state(outer).shape;
        const bool isOpen = shape == State::Shape::AsItWas || shape == State::Shape::Opened;
        if (isOpen && bodyOf(outer).state(inner).shape == State::Shape::AsItWas) {
            bodyOf(outer).change(inner).shape = made;
            return true;
        }
    }
    return setShape(spot.outer, spot.name, made);
}

bool SectionedText::setShape(TextCut::Place place, const QString &name, State::Shape shape)
{
    if (place.piece < 0)
        return false;
    const auto at = static_cast<size_t>(place.piece);
    if (isWhole(place)) {
        change(at).shape = shape;
        return true;
    }
    // Most that are not outermost: those in the handlers.
    if (const TextCut::Place inner = placeWithin(place, name); inner.piece >= 0)
        return bodyOf(at).setShape(inner, name, shape);
    return put(place, name, shape, {});
}

bool SectionedText::replaceSection(const QString &name, std::string text)
{
    return put(placeOf(name), name, State::Shape::Written, std::move(text));
}

// ---- Templates, and the edit of TextEngine.h ----

const SectionedText *codeTemplate(const QString &path)
{
    static QMutex mutex;
    static QHash<QString, std::shared_ptr<const SectionedText>> templates;
    const QMutexLocker lock(&mutex);
    auto entry = templates.find(path);
    if (entry == templates.end()) {
        TextRead read = readSourceText(path);
        entry = templates.insert(path, read.ok ? std::make_shared<const SectionedText>(std::move(read.text)) : nullptr);
    }
    return entry->get();
}

SectionedText cutOnce(const QString &path, std::string text)
{
    static QMutex mutex;
    static QHash<QString, SectionedText> last;
    const QMutexLocker lock(&mutex);
    SectionedText &known = last[path];
    if (!known.cut() || known.cut()->text() != text)
        known = SectionedText(std::move(text));
    return known;
}

bool GenerateCode_Handle_Function(SectionedText &text, const QString &name, bool keep)
{
    return text.handleSection(name, keep);
}

} // namespace ChipLoom
