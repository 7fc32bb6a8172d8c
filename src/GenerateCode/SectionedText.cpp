#include "GenerateCode/SectionedText.h"

#include "GenerateCode/GeneratedFile.h"
#include "GenerateCode/TextEngine.h"

#include <QMutex>

namespace ChipLoom {

namespace {

/// The same in a text that is not cut.
bool writeIn(QString &text, const Statement &wanted, SectionedText::Part part, const SectionedText::Writer &writer,
             bool all)
{
    bool any = false;
    for (int from = 0; !text.isEmpty() && (all || !any);) {
        QString written;
        if (wanted.kind == Statement::Kind::Call) {
            const CallMatch call =
                findCall(text, wanted.name, wanted.arguments, part == SectionedText::Part::Line, from);
            if (!call.found())
                break;
            writer(written, call.arguments);
            text.replace(call.start, call.length, written);
            from = call.start + written.size();
        } else {
            AssignmentMatch match = findAssignment(text, wanted.name, from);
            while (match.found() && !match.closed) // a part of a sum
                match = findAssignment(text, wanted.name, match.start + match.length);
            if (!match.found())
                break;
            writer(written, {text.mid(match.valueStart, match.valueLength)});
            const bool value = part == SectionedText::Part::Value;
            const int start = value ? match.valueStart : match.start;
            text.replace(start, value ? match.valueLength : match.length, written);
            from = start + written.size();
        }
        any = true;
    }
    return any;
}

} // namespace

// ---- Pieces ----

const SectionedText::State SectionedText::Untouched{};

SectionedText::State &SectionedText::change(size_t piece)
{
    if (m_states.empty())
        m_states.resize(m_cut->pieces().size());
    return m_states[piece];
}

QString &SectionedText::settle(size_t piece, QString text)
{
    State &changed = change(piece);
    changed.shape = State::Shape::Written;
    changed.body.clear();
    changed.text = std::move(text);
    return changed.text;
}

const TextCut &SectionedText::cutOf(size_t piece) const
{
    const State &now = state(piece);
    return now.body.empty() ? *m_cut->body(static_cast<int>(piece), now.shape == State::Shape::Kept)
                            : *now.body.front().m_cut;
}

SectionedText &SectionedText::bodyOf(size_t piece)
{
    State &changed = change(piece);
    if (changed.body.empty())
        changed.body.push_back(
            SectionedText(m_cut->body(static_cast<int>(piece), changed.shape == State::Shape::Kept)));
    if (changed.shape == State::Shape::AsItWas)
        changed.shape = State::Shape::Opened;
    return changed.body.front();
}

void SectionedText::appendPiece(size_t piece, QString &text) const
{
    const TextCut::Piece &place = m_cut->pieces()[piece];
    const State &now = state(piece);
    const int bodyEnd = place.bodyStart + place.bodyLength;
    switch (now.shape) {
    case State::Shape::AsItWas:
        text.append(m_cut->text().midRef(place.start, place.length));
        break;
    case State::Shape::Opened:
        text.append(m_cut->text().midRef(place.start, place.bodyStart - place.start));
        now.body.front().appendTo(text);
        text.append(m_cut->text().midRef(bodyEnd, place.start + place.length - bodyEnd));
        break;
    case State::Shape::Kept:
        if (now.body.empty())
            text.append(m_cut->text().midRef(place.bodyStart, place.bodyLength)).append(QLatin1Char('\n'));
        else
            now.body.front().appendTo(text);
        break;
    case State::Shape::Written:
        text.append(now.text);
        break;
    }
}

QString SectionedText::pieceText(size_t piece) const
{
    QString text;
    appendPiece(piece, text);
    return text;
}

void SectionedText::appendTo(QString &text) const
{
    if (m_states.empty() && m_cut)
        text.append(m_cut->text());
    // What was left alone is appended in one go.
    int untouched = 0;
    for (size_t i = 0; i < m_states.size(); ++i) {
        if (m_states[i].shape == State::Shape::AsItWas)
            continue;
        const TextCut::Piece &piece = m_cut->pieces()[i];
        text.append(m_cut->text().midRef(untouched, piece.start - untouched));
        appendPiece(i, text);
        untouched = piece.start + piece.length;
    }
    if (!m_states.empty())
        text.append(m_cut->text().midRef(untouched));
    text.append(m_end);
}

QString SectionedText::joined() const
{
    if (m_states.empty() && m_end.isEmpty())
        return m_cut ? m_cut->text() : QString();
    QString text;
    text.reserve(m_cut->text().size());
    appendTo(text);
    return text;
}

bool SectionedText::trimEnd()
{
    m_end.clear();
    for (size_t i = m_cut ? m_cut->pieces().size() : 0; i-- > 0;) {
        const State &now = state(i);
        if (now.shape == State::Shape::Kept) {
            if (bodyOf(i).trimEnd())
                return true;
            continue;
        }
        QString text = pieceText(i);
        int length = text.size();
        while (length > 0 && text.at(length - 1) == QLatin1Char('\n'))
            --length;
        if (length < text.size()) {
            text.truncate(length);
            settle(i, text);
        }
        if (length > 0)
            return true;
    }
    return false;
}

void SectionedText::endWithBlankLine()
{
    if (trimEnd())
        m_end = QStringLiteral("\n\n");
}

// ---- Sections ----

// Whether the section is this piece as it was, and not one within it or within a text.
bool SectionedText::isWhole(TextCut::Place place) const
{
    return place.outermost && state(static_cast<size_t>(place.piece)).shape == State::Shape::AsItWas;
}

bool SectionedText::isWithin(TextCut::Place place, const QString &name) const
{
    const auto piece = static_cast<size_t>(place.piece);
    return !place.outermost && state(piece).shape != State::Shape::Written && cutOf(piece).place(name).piece >= 0;
}

QString &SectionedText::section(const QString &name)
{
    m_none.clear();
    const TextCut::Place place = placeOf(name);
    if (place.piece < 0)
        return m_none;
    const auto at = static_cast<size_t>(place.piece);
    return state(at).shape == State::Shape::Written ? change(at).text : settle(at, pieceText(at));
}

std::optional<SectionedText> SectionedText::keptBody(const QString &name) const
{
    const TextCut::Place place = placeOf(name);
    if (place.piece < 0)
        return std::nullopt;
    if (isWhole(place))
        return SectionedText(m_cut->body(place.piece, true));
    const State &now = state(static_cast<size_t>(place.piece));
    if (isWithin(place, name))
        return now.body.empty()
                   ? SectionedText(m_cut->body(place.piece, now.shape == State::Shape::Kept)).keptBody(name)
                   : now.body.front().keptBody(name);
    const QString text = pieceText(static_cast<size_t>(place.piece));
    const SectionSpan span = findSection(text, name);
    return span.found() ? std::optional(SectionedText(ChipLoom::keptBody(text, span), true)) : std::nullopt;
}

QString SectionedText::bodyText(const QString &name) const
{
    QString text;
    if (const TextCut::Place place = placeOf(name); isWhole(place)) {
        const TextCut::Piece &piece = m_cut->pieces()[static_cast<size_t>(place.piece)];
        text = m_cut->text().mid(piece.bodyStart, piece.bodyLength);
    } else if (const std::optional<SectionedText> body = keptBody(name)) {
        text = body->joined();
        text.chop(1);
    }
    return text;
}

bool SectionedText::put(const QString &name, State made)
{
    const TextCut::Place place = placeOf(name);
    if (place.piece < 0)
        return false;
    const auto at = static_cast<size_t>(place.piece);
    if (isWhole(place)) {
        change(at) = std::move(made);
        return true;
    }
    if (isWithin(place, name))
        return bodyOf(at).put(name, std::move(made));
    QString &text = section(name);
    const SectionSpan span = findSection(text, name);
    if (!span.found())
        return false;
    if (made.shape == State::Shape::Kept)
        made.text = made.body.empty() ? ChipLoom::keptBody(text, span) : made.body.front().joined();
    ChipLoom::replaceSection(text, span, made.text);
    return true;
}

bool SectionedText::handleSection(const QString &name, bool keep)
{
    return put(name, {keep ? State::Shape::Kept : State::Shape::Written, {}, {}});
}

bool SectionedText::replaceSection(const QString &name, SectionedText body)
{
    State made{State::Shape::Kept, {}, {}};
    made.body.push_back(std::move(body));
    return put(name, std::move(made));
}

bool SectionedText::replaceSection(const QString &name, const QString &text)
{
    return put(name, {State::Shape::Written, text, {}});
}

// ---- Statements ----

bool SectionedText::holds(const Statement &wanted) const
{
    const size_t count = m_cut ? m_cut->pieces().size() : 0;
    for (size_t i = 0; i < count; ++i) {
        const TextCut::Piece &piece = m_cut->pieces()[i];
        const State &now = state(i);
        const bool isWritten = now.shape == State::Shape::Written;
        bool here = false;
        if (piece.kind != TextCut::Piece::Kind::Section)
            here = piece.is(wanted) && !(isWritten && now.text.isEmpty());
        else if (isWritten)
            here = now.text.contains(wanted.name);
        else
            here = now.body.empty() ? cutOf(i).holds(wanted) : now.body.front().holds(wanted);
        if (here)
            return true;
    }
    return false;
}

bool SectionedText::writePiece(size_t piece, const Statement &wanted, Part part, const Writer &writer)
{
    const TextCut::Piece &place = m_cut->pieces()[piece];
    if (state(piece).shape == State::Shape::Written)
        return writeIn(change(piece).text, wanted, part, writer, false);
    const int end = place.start + place.length;
    const int bodyEnd = place.bodyStart + place.bodyLength;
    if (part == Part::Line && end == bodyEnd)
        return false;
    // A longer name keeps what it begins with.
    const int before = place.name.size() - wanted.name.size();
    const bool isInner = part == Part::Value || (part == Part::Statement && wanted.kind == Statement::Kind::Call);
    const int from = isInner ? place.bodyStart + (part == Part::Value ? 0 : before) : place.start + before;
    const int to = isInner ? bodyEnd : end;
    const QString &text = m_cut->text();
    QString written;
    written.reserve(2 * place.length);
    written.append(text.constData() + place.start, from - place.start);
    writer(written, place.samples);
    written.append(text.constData() + to, end - to);
    settle(piece, std::move(written));
    return true;
}

bool SectionedText::write(const Statement &wanted, Part part, const Writer &writer, bool all)
{
    bool any = false;
    const size_t count = m_cut ? m_cut->pieces().size() : 0;
    for (size_t i = 0; i < count && (all || !any); ++i) {
        const TextCut::Piece &piece = m_cut->pieces()[i];
        if (piece.kind != TextCut::Piece::Kind::Section) {
            any = (piece.is(wanted) && writePiece(i, wanted, part, writer)) || any;
            continue;
        }
        const State &now = state(i);
        if (now.shape == State::Shape::Written)
            any = writeIn(change(i).text, wanted, part, writer, all) || any;
        else if (!now.body.empty() || cutOf(i).holds(wanted))
            any = bodyOf(i).write(wanted, part, writer, all) || any;
    }
    return any;
}

// ---- Templates, and the edits of TextEngine.h ----

const SectionedText *codeTemplate(const QString &path)
{
    static QMutex mutex;
    static QHash<QString, std::shared_ptr<const SectionedText>> templates;
    const QMutexLocker lock(&mutex);
    auto entry = templates.find(path);
    if (entry == templates.end()) {
        const TextRead read = readSourceText(path);
        entry = templates.insert(path, read.ok ? std::make_shared<const SectionedText>(read.text) : nullptr);
    }
    return entry->get();
}

bool GenerateCode_Handle_Function(SectionedText &text, const QString &name, bool keep)
{
    return text.handleSection(name, keep);
}

bool rewriteCall(SectionedText &text, const QString &function, const QStringList &arguments)
{
    return text.writeFirst({Statement::Kind::Call, function, static_cast<int>(arguments.size())},
                           SectionedText::Part::Statement,
                           [&](QString &call, const QStringList &) { appendCall(call, function, arguments); });
}

bool rewriteCalls(SectionedText &text, const QString &function, int argumentCount, const QString &replacement)
{
    return text.writeAll({Statement::Kind::Call, function, argumentCount}, SectionedText::Part::Statement,
                         [&](QString &call, const QStringList &) { call += replacement; });
}

bool rewriteAssignments(SectionedText &text, const QString &member, const QString &value)
{
    return text.writeAll({Statement::Kind::Assignment, member}, SectionedText::Part::Statement,
                         [&](QString &assigned, const QStringList &) { appendAssignment(assigned, member, value); });
}

} // namespace ChipLoom
