#pragma once

#include <QStringView>

#include <vector>

namespace ChipLoom {

/// Finds the number of a name without comparing it with each of the others. The names outlive the table.
class NameTable
{
public:
    /// For so many names that it need not grow.
    void reserve(int names);
    /// The first number that a name is given holds.
    void insert(QStringView name, int number);
    /// -1 where there is none.
    int find(QStringView name) const;

private:
    struct Entry
    {
        const QChar *name = nullptr;
        int size = 0;
        int number = -1; ///< of a free place
    };
    size_t placeOf(QStringView name) const;
    static size_t sumOf(QStringView name);

    std::vector<Entry> m_entries; ///< a power of two, at most half of them taken
    size_t m_taken = 0;
};

/// Finds the first of some names that is the same as another. The names outlive the index.
class NameIndex
{
public:
    /// What makes two names the same: `IsPinNameSame` or `IsSignalSame`.
    enum class Of { Pins, Signals };

    explicit NameIndex(Of kind) : m_kind(kind) {}

    void reserve(int names) { m_first.reserve(names); }
    /// The number of the name is the count of those before it.
    void append(QStringView name);
    /// The number of the first name that is the same, or -1.
    int find(QStringView name) const;

private:
    template <typename Use> void forEachPiece(QStringView name, Use use) const;

    Of m_kind;
    int m_count = 0;
    NameTable m_first; ///< by what a name consists of
};

} // namespace ChipLoom
