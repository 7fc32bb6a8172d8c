#pragma once

#include "GenerateCode/CodeText.h"
#include "GenerateCode/NameTable.h"

#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace ChipLoom {

/// A call or an assignment that an edit looks for.
struct Statement
{
    enum class Kind { Call, Assignment };

    Kind kind = Kind::Call;
    QString name = {}; ///< of the function, or the left side; a longer name that ends with it will do
    int arguments = 1; ///< of a call
};

/// Where a text is cut: at its outermost sections and, if it is code, at its calls and assignments. Found once, never
/// changed, and shared by all copies of the text.
class TextCut
{
public:
    struct Piece
    {
        enum class Kind { Plain, Section, Call, Assignment };

        Kind kind = Kind::Plain;
        int start = 0;
        int length = 0;    ///< with the line breaks behind a section or a call, and the blanks before a call
        int bodyStart = 0; ///< the body of a section; a call from its name to its ";"; the value of an assignment
        int bodyLength = 0;
        QString name = {};        ///< of a section or function; left side of an assignment
        QStringList samples = {}; ///< arguments of a call; value of an assignment

        int end() const { return start + length; }
        int bodyEnd() const { return bodyStart + bodyLength; }

        bool is(const Statement &wanted) const
        {
            const Kind meant = wanted.kind == Statement::Kind::Call ? Kind::Call : Kind::Assignment;
            return kind == meant && samples.size() == wanted.arguments &&
                   (name.size() == wanted.name.size() ? name == wanted.name : name.endsWith(wanted.name));
        }
    };

    struct Place
    {
        int piece = -1; ///< none where the name stands in more than one
        bool outermost = false;
    };

    TextCut(std::string text, bool isCode);
    ~TextCut();

    const std::string &text() const { return m_text; }
    std::string_view between(int start, int end) const { return ChipLoom::between(m_text, start, end); }
    const std::vector<Piece> &pieces() const { return m_pieces; }
    /// Of a section, within others or not.
    Place place(const QString &name) const
    {
        const int number = m_numbers.find(name);
        return number < 0 ? Place() : m_places[static_cast<size_t>(number)].second;
    }
    /// The names of the outermost sections.
    const QStringList &names() const { return m_outermost; }
    /// The body of a section, as it stands or with the line break that it gets when it is kept.
    std::shared_ptr<const TextCut> body(size_t piece, bool kept) const;

    /// What somebody made of the text once and for all.
    struct Derived
    {
        virtual ~Derived() = default;
    };
    /// Made when it is first asked for, and kept with the text. The key is an address that means this and nothing else
    /// as long as the text lives.
    template <class Made, class Make> const Made &derived(const void *key, Make make) const
    {
        const Derived *known = findDerived(key);
        return static_cast<const Made &>(known ? *known : addDerived(key, make));
    }
    /// The same of what is made of nothing but the text.
    template <class Made> const Made &plan() const
    {
        static const char key = 0;
        return derived<Made>(&key, [this] { return std::make_unique<Made>(*this); });
    }

private:
    struct Bodies;

    const Derived *findDerived(const void *key) const;
    const Derived *lookForDerived(const void *key) const;
    const Derived &addDerived(const void *key, const std::function<std::unique_ptr<Derived>()> &make) const;
    void cutPlain(int from, int to);
    void cutStatements(int from, int to);
    Piece callAt(int opening, int from, int to) const;
    Piece assignmentAt(int sign, int from, int to) const;

    std::string m_text;
    bool m_isCode;
    std::vector<Piece> m_pieces;
    std::vector<std::pair<QString, Place>> m_places; ///< of all names
    NameTable m_numbers;                             ///< of these
    QStringList m_outermost;
    std::vector<std::unique_ptr<Bodies>> m_bodies; ///< by piece
    mutable std::mutex m_mutex;                    ///< of what follows
    mutable std::vector<std::pair<const void *, std::unique_ptr<Derived>>> m_derived;
};

} // namespace ChipLoom
