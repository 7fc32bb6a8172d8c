#pragma once

#include "GenerateCode/TextCut.h"

#include <memory>

namespace ChipLoom {

/// A text cut once at its outermost sections, which are then found by their name and edited apart from the rest. What
/// comes out is what the same edits make of the whole text. A copy shares what has not been edited.
class SectionedText
{
public:
    SectionedText() = default;
    explicit SectionedText(std::string text) : m_cut(std::make_shared<const TextCut>(std::move(text), false)) {}
    explicit SectionedText(std::shared_ptr<const TextCut> cut) : m_cut(std::move(cut)) {}

    /// The outermost section that has the name or holds the only section of that name, with its markers and the line
    /// breaks behind it: a text of its own to be edited, which keeps its place and name whatever becomes of it, and can
    /// be reached by what comes back until another section is edited. Where there is none an empty text, in which no
    /// edit finds anything.
    std::string &section(const QString &name);
    /// Where the text is cut, as long as nobody has edited it; null then, and for an empty text.
    const TextCut *cut() const { return m_states.empty() ? m_cut.get() : nullptr; }
    /// Whether an outermost section has the name.
    bool contains(const QString &name) const { return m_cut && m_cut->place(name).outermost; }
    /// The names of the outermost sections.
    QStringList names() const { return m_cut ? m_cut->names() : QStringList(); }

    /// The body of a section that is outermost or the only one of its name, as code, with the line break that it gets
    /// when it is kept; null where there is none.
    std::shared_ptr<const TextCut> keptBody(const QString &name) const;
    /// Puts a text in the place of a section, its markers included. False if there is none.
    bool replaceSection(const QString &name, std::string text);
    /// Takes the markers of an outermost section away, and the line breaks behind it. Nothing if it is gone already.
    /// `GenerateCode_Handle_Function`.
    bool handleSection(const QString &name, bool keep);

    /// A section and where it stands in all copies of a text, so that it need not be looked for by its name.
    struct Spot
    {
        QString name;
        TextCut::Place outer, inner; ///< none inside for an outermost section
    };
    using Spots = std::vector<Spot>;
    Spot spotOf(const QString &name) const;
    /// Those of sections whose names are the same each time that somebody asks, who is told by an address and lives as
    /// long as the text: found once for all copies of it.
    const Spots &spotsOf(const void *asker, const std::function<QStringList()> &names) const;
    /// The same of the `section` of each entry of a list that lives as long as the text.
    template <typename Entries> const Spots &spotsOf(const Entries &entries) const
    {
        return spotsOf(&entries, [&] {
            QStringList names;
            for (const auto &entry : entries)
                names.append(entry.section);
            return names;
        });
    }
    // The same of a section whose spot is known.
    std::shared_ptr<const TextCut> keptBody(const Spot &spot) const;
    bool replaceSection(const Spot &spot, std::string text);
    void unwrapSection(const Spot &spot) { unwrap(spot.outer); }
    bool handleSection(const Spot &spot, bool keep);
    /// Whether nothing is left of the outermost section there: what becomes of one within it does not matter any more.
    bool isGone(const Spot &spot) const;

    /// Takes over what was edited of a copy. What is edited here and there must be other outermost sections.
    void takeEdits(SectionedText &&other);

    /// What it is made of, one behind the other. They stand until the text is changed or gone.
    using Parts = std::vector<std::string_view>;
    Parts parts() const;
    std::string joined() const;

private:
    /// What became of a piece. Small, for there are many and most stay as they were.
    struct State
    {
        enum class Shape : quint8 {
            AsItWas,
            Opened,  ///< the markers stand round an edited body
            Kept,    ///< the body alone, with a line break behind it or edited
            Bare,    ///< the body alone
            Written, ///< a text
        };
        Shape shape = Shape::AsItWas;
        int content = -1; ///< in `m_contents`, or none: the body as it was, or an empty text
    };
    struct Content
    {
        std::string text;                ///< if written
        std::vector<SectionedText> body; ///< none or one
    };

    static const State Untouched;

    const State &state(size_t piece) const { return m_states.empty() ? Untouched : m_states[piece]; }
    Content &contentOf(State &state);
    /// Null where nobody has edited it.
    const SectionedText *editedBody(const State &state) const;
    const std::string &textOf(const State &state) const;
    State &change(size_t piece);
    std::string &settle(size_t piece, std::string text);
    TextCut::Place placeOf(const QString &name) const { return m_cut ? m_cut->place(name) : TextCut::Place(); }
    bool isWhole(TextCut::Place place) const;
    TextCut::Place placeWithin(TextCut::Place place, const QString &name) const;
    /// `Kept`, or `Written` with a text.
    bool put(TextCut::Place place, const QString &name, State::Shape shape, std::string text);
    void unwrap(TextCut::Place place);
    bool setShape(TextCut::Place place, const QString &name, State::Shape shape); ///< `Kept`, or gone
    SectionedText &bodyOf(size_t piece);
    const TextCut &cutOf(size_t piece) const;
    static std::string textOf(const Parts &parts);
    void appendTo(Parts &parts) const;
    void appendPiece(size_t piece, Parts &parts) const;
    std::string pieceText(size_t piece) const;

    std::shared_ptr<const TextCut> m_cut;
    std::vector<State> m_states; ///< by piece; empty before the first edit
    std::vector<Content> m_contents;
    std::string m_none;
};

/// A template of the resources, read and cut once for the whole run of the program; null where there is none.
const SectionedText *codeTemplate(const QString &path);

/// A text with its user's blocks, cut. The last one of a path is kept: most generations find the same blocks again.
SectionedText cutOnce(const QString &path, std::string text);

/// The edit of TextEngine.h, of sections that are outermost or the only ones of their name.
bool GenerateCode_Handle_Function(SectionedText &text, const QString &name, bool keep);

} // namespace ChipLoom
