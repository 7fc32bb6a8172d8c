#include "GenerateCode/NameIndex.h"

#include <algorithm>

namespace ChipLoom {

// A pin can have several names and a note in brackets behind them, "PD0/HEXT_IN [x]"; signals that share a pin are
// joined, "A;B".
template <typename Use> void NameIndex::forEachPiece(const QString &name, Use use) const
{
    const QLatin1Char separator(m_kind == Of::Pins ? '/' : ';');
    const bool isOne = std::all_of(name.begin(), name.end(),
                                   [&](QChar c) { return c != separator && c.unicode() > ' ' && c.unicode() < 0x7f; });
    if (isOne) {
        use(name);
        return;
    }
    const QString names = m_kind == Of::Pins ? name.trimmed().section(QLatin1Char(' '), 0, 0) : name;
    for (const QString &piece : names.split(separator))
        use(piece.trimmed());
}

void NameIndex::append(const QString &name)
{
    forEachPiece(name, [this](const QString &piece) {
        if (!m_first.contains(piece))
            m_first.insert(piece, m_count);
    });
    ++m_count;
}

int NameIndex::find(const QString &name) const
{
    int first = -1;
    forEachPiece(name, [&](const QString &piece) {
        const int found = m_first.value(piece, -1);
        if (found >= 0 && (first < 0 || found < first))
            first = found;
    });
    return first;
}

} // namespace ChipLoom
