#pragma once

#include <QChar>
#include <QStringView>

#include <algorithm>
#include <string_view>
#include <vector>

namespace ChipLoom {

/// Finds the number of a name without comparing it with each of the others. The names outlive the table and are all
/// texts or all code.
class NameTable
{
public:
    /// For so many names that it need not grow.
    void reserve(int names);
    /// The first number that a name is given holds. False if it had one.
    bool insert(std::string_view name, int number);
    bool insert(QStringView name, int number) { return insert(bytesOf(name), number); }
    /// -1 where there is none.
    int find(std::string_view name) const;
    int find(QStringView name) const { return find(bytesOf(name)); }

private:
    struct Entry
    {
        std::string_view name = {};
        int number = -1; ///< of a free place
    };
    static std::string_view bytesOf(QStringView name)
    {
        return {reinterpret_cast<const char *>(name.data()), static_cast<size_t>(name.size()) * sizeof(QChar)};
    }
    size_t placeOf(std::string_view name) const;
    static size_t sumOf(std::string_view name);

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

    /// What a name consists of: `use(piece)`.
    template <typename Use> static void forEachPiece(Of kind, QStringView name, Use use);

private:
    Of m_kind;
    int m_count = 0;
    NameTable m_first; ///< by what a name consists of
};

// A pin can have several names and a note in brackets behind them, "PD0/HEXT_IN [x]"; signals that share a pin are
// joined, "A;B".
template <typename Use> void NameIndex::forEachPiece(Of kind, QStringView name, Use use)
{
    const QChar separator = QLatin1Char(kind == Of::Pins ? '/' : ';');
    const bool isOne = std::all_of(name.begin(), name.end(),
                                   [&](QChar c) { return c != separator && c.unicode() > ' ' && c.unicode() < 0x7f; });
    if (isOne) {
        use(name);
        return;
    }
    QStringView rest = name;
    if (kind == Of::Pins) {
        rest = rest.trimmed();
        rest = rest.left(std::find(rest.begin(), rest.end(), QLatin1Char(' ')) - rest.begin());
    }
    for (;;) {
        const auto end = std::find(rest.begin(), rest.end(), separator);
        use(rest.left(end - rest.begin()).trimmed());
        if (end == rest.end())
            return;
        rest = rest.mid(end - rest.begin() + 1);
    }
}

} // namespace ChipLoom
