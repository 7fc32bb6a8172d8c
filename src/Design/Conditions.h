#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace ChipLoom {

// The two condition languages of the database, each parsed once and evaluated many times. Neither has parentheses.

/// A condition on a mode control: tokens alone.
///
/// With the flag it is a conjunction of disjunctions ("&" splits first), without it a disjunction of conjunctions. An
/// empty piece matches nothing. A term holding "!" is met while no token equals its word. An expression that is empty
/// stands for no condition and is met.
class ControlCondition
{
public:
    ControlCondition() = default;
    ControlCondition(const QString &expression, bool andFlag);

    bool isEmpty() const { return m_groups.empty(); }
    bool isMet(const QStringList &receivedTokens) const;
    /// The tokens by whose coming or going a condition that fails could be met, in order.
    QStringList unmetWords(const QStringList &receivedTokens) const;
    /// Whether the control listens to this token: some term names it.
    bool mentions(const QString &token) const;

private:
    struct Term
    {
        QString word;
        bool negated = false;

        bool isMet(const QStringList &tokens) const;
    };

    std::vector<std::vector<Term>> m_groups;
    bool m_andOfOrs = true;
};

/// Values of parameters by name: what a `ParameterCondition` compares with, and the
/// memory that lets a value survive leaving its mode.
class ParameterValues
{
public:
    /// The value of a name, or nothing for a name that was never set.
    std::optional<QString> value(const QString &name) const;
    void set(const QString &name, const QString &value);
    void clear();

private:
    QHash<QString, QString> m_values;
};

/// A condition on parameters, values, DMA requests and interrupts: comparisons of values, and tokens.
///
/// A conjunction of disjunctions. A term is, by the first that it contains, "!=", "=", ">" or "<" (then a comparison of
/// a parameter with a value), "!" (no token equals the word) or a bare word (some token equals it). Numbers are
/// decimal, or hexadecimal with "0x"; "=" and "!=" compare trimmed texts where one side is no number; ">" and "<" are
/// then not met, and no comparison is met for a name without a value. An empty expression is not met: whoever has no
/// condition does not ask.
class ParameterCondition
{
public:
    ParameterCondition() = default;
    explicit ParameterCondition(const QString &expression);

    bool isMet(const ParameterValues &values, const QStringList &tokens) const;

    /// The tokens that it names, in order.
    QStringList words() const;

    /// What a condition that fails hangs on: tokens by whose coming or going, and parameters by another value of which
    /// it could be met; in order.
    struct Unmet
    {
        QStringList words;
        QStringList parameters;
    };
    Unmet unmet(const ParameterValues &values, const QStringList &tokens) const;

    /// The same, kept for each distinct text. Expressions come from the database, so their number is bounded.
    static const ParameterCondition &of(const QString &expression);

private:
    enum class Form { Differs, Equals, Greater, Less, Absent, Present, Never };

    struct Term
    {
        Form form = Form::Never;
        QString left;
        QString right;

        bool isMet(const ParameterValues &values, const QStringList &tokens) const;
    };

    static Term parseTerm(const QString &text);

    std::vector<std::vector<Term>> m_groups;
};

/// Reads a number as the conditions do: trimmed, in any case, base 16 behind "0x" and base 10 otherwise.
std::optional<qint64> conditionNumber(const QString &text);

} // namespace ChipLoom
