#pragma once

#include <QHash>
#include <QString>

namespace ChipLoom {

/// Finds the first of some names that is the same as another without comparing it with each of them.
class NameIndex
{
public:
    /// What makes two names the same: `IsPinNameSame` or `IsSignalSame`.
    enum class Of { Pins, Signals };

    explicit NameIndex(Of kind) : m_kind(kind) {}

    void reserve(int names) { m_first.reserve(names); }
    /// The number of the name is the count of those before it.
    void append(const QString &name);
    /// The number of the first name that is the same, or -1.
    int find(const QString &name) const;

private:
    template <typename Use> void forEachPiece(const QString &name, Use use) const;

    Of m_kind;
    int m_count = 0;
    QHash<QString, int> m_first; ///< by what a name consists of
};

} // namespace ChipLoom
