#include "Design/Conditions.h"

#include <algorithm>
#include <array>
#include <memory>

namespace ChipLoom {

namespace {

constexpr QChar And('&');
constexpr QChar Or('|');
constexpr QChar Not('!');

QString wordOf(const QString &term)
{
    QString word = term.trimmed();
    word.remove(Not);
    return word.trimmed();
}

} // namespace

ControlCondition::ControlCondition(const QString &expression, bool andFlag) : m_andOfOrs(andFlag)
{
    if (expression.isEmpty())
        return;
    const QStringList groups = expression.split(andFlag ? And : Or);
    for (const QString &group : groups) {
        std::vector<Term> terms;
        const QStringList pieces = group.split(andFlag ? Or : And);
        for (const QString &piece : pieces)
            terms.push_back({wordOf(piece), piece.contains(Not)});
        m_groups.push_back(std::move(terms));
    }
}

bool ControlCondition::Term::isMet(const QStringList &tokens) const
{
    if (negated)
        return !tokens.contains(word);
    return !word.isEmpty() && tokens.contains(word);
}

bool ControlCondition::isMet(const QStringList &receivedTokens) const
{
    const auto met = [&](const Term &term) { return term.isMet(receivedTokens); };
    if (m_andOfOrs) {
        return std::all_of(m_groups.begin(), m_groups.end(),
                           [&](const auto &terms) { return std::any_of(terms.begin(), terms.end(), met); });
    }
    return std::any_of(m_groups.begin(), m_groups.end(),
                       [&](const auto &terms) { return std::all_of(terms.begin(), terms.end(), met); });
}

QStringList ControlCondition::unmetWords(const QStringList &receivedTokens) const
{
    QStringList words;
    const auto met = [&](const Term &term) { return term.isMet(receivedTokens); };
    for (const std::vector<Term> &terms : m_groups) {
        if (m_andOfOrs && std::any_of(terms.begin(), terms.end(), met))
            continue;
        for (const Term &term : terms) {
            if (!met(term) && !words.contains(term.word))
                words.append(term.word);
        }
    }
    return words;
}

bool ControlCondition::mentions(const QString &token) const
{
    for (const std::vector<Term> &terms : m_groups) {
        for (const Term &term : terms) {
            if (term.word == token)
                return true;
        }
    }
    return false;
}

std::optional<QString> ParameterValues::value(const QString &name) const
{
    const auto found = m_values.constFind(name);
    return found == m_values.constEnd() ? std::nullopt : std::optional(found.value());
}

void ParameterValues::set(const QString &name, const QString &value)
{
    m_values.insert(name, value);
}

void ParameterValues::clear()
{
    m_values.clear();
}

std::optional<qint64> conditionNumber(const QString &text)
{
    const QString lower = text.trimmed().toLower();
    const bool hexadecimal = lower.startsWith(QLatin1String("0x"));
    bool ok = false;
    const qint64 number = hexadecimal ? lower.midRef(2).toLongLong(&ok, 16) : lower.toLongLong(&ok, 10);
    return ok ? std::optional(number) : std::nullopt;
}

ParameterCondition::ParameterCondition(const QString &expression)
{
    const QStringList groups = expression.split(And);
    for (const QString &group : groups) {
        std::vector<Term> terms;
        const QStringList pieces = group.split(Or);
        for (const QString &piece : pieces)
            terms.push_back(parseTerm(piece.trimmed()));
        m_groups.push_back(std::move(terms));
    }
}

ParameterCondition::Term ParameterCondition::parseTerm(const QString &text)
{
    struct Operator
    {
        QLatin1String sign;
        Form form;
    };
    static const std::array<Operator, 4> Operators{{{QLatin1String("!="), Form::Differs},
                                                    {QLatin1String("="), Form::Equals},
                                                    {QLatin1String(">"), Form::Greater},
                                                    {QLatin1String("<"), Form::Less}}};
    for (const Operator &op : Operators) {
        if (!text.contains(op.sign))
            continue;
        const QStringList sides = text.split(op.sign);
        return {op.form, sides.at(0).trimmed(), sides.at(1).trimmed()};
    }
    const QString word = wordOf(text);
    if (text.contains(Not))
        return {Form::Absent, word, {}};
    return {word.isEmpty() ? Form::Never : Form::Present, word, {}};
}

bool ParameterCondition::Term::isMet(const ParameterValues &values, const QStringList &tokens) const
{
    if (form == Form::Never)
        return false;
    if (form == Form::Absent)
        return !tokens.contains(left);
    if (form == Form::Present)
        return tokens.contains(left);

    const std::optional<QString> present = values.value(left);
    if (!present)
        return false;
    const std::optional<qint64> a = conditionNumber(*present);
    const std::optional<qint64> b = conditionNumber(right);
    const bool numbers = a && b;
    const bool equal = numbers ? *a == *b : present->trimmed() == right;
    switch (form) {
    case Form::Equals:
        return equal;
    case Form::Differs:
        return !equal;
    case Form::Greater:
        return numbers && *a > *b;
    case Form::Less:
        return numbers && *a < *b;
    default:
        return false;
    }
}

bool ParameterCondition::isMet(const ParameterValues &values, const QStringList &tokens) const
{
    const auto met = [&](const Term &term) { return term.isMet(values, tokens); };
    return !m_groups.empty() && std::all_of(m_groups.begin(), m_groups.end(), [&](const auto &terms) {
        return std::any_of(terms.begin(), terms.end(), met);
    });
}

QStringList ParameterCondition::words() const
{
    QStringList words;
    for (const std::vector<Term> &terms : m_groups) {
        for (const Term &term : terms) {
            if (term.form == Form::Absent || term.form == Form::Present)
                words.append(term.left);
        }
    }
    return words;
}

ParameterCondition::Unmet ParameterCondition::unmet(const ParameterValues &values, const QStringList &tokens) const
{
    Unmet unmet;
    const auto met = [&](const Term &term) { return term.isMet(values, tokens); };
    for (const std::vector<Term> &terms : m_groups) {
        if (std::any_of(terms.begin(), terms.end(), met))
            continue;
        for (const Term &term : terms) {
            const bool isWord = term.form == Form::Absent || term.form == Form::Present;
            QStringList &list = isWord ? unmet.words : unmet.parameters;
            if (term.form != Form::Never && !list.contains(term.left))
                list.append(term.left);
        }
    }
    return unmet;
}

const ParameterCondition &ParameterCondition::of(const QString &expression)
{
    static QHash<QString, std::shared_ptr<const ParameterCondition>> parsed;
    std::shared_ptr<const ParameterCondition> &entry = parsed[expression];
    if (!entry)
        entry = std::make_shared<const ParameterCondition>(expression);
    return *entry;
}

} // namespace ChipLoom
