#pragma once

#include <QString>
#include <QStringView>

#include <deque>
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

/// Names by numbers from 0 on, which they get in the order in which they come first.
class NumberedNames
{
public:
    /// The number of the name, given to it if it had none.
    int add(const QString &name);
    /// -1 where it has none.
    int find(QStringView name) const { return m_numbers.find(name); }
    const QString &name(int number) const { return m_names[static_cast<size_t>(number)]; }
    size_t size() const { return m_names.size(); }

private:
    std::deque<QString> m_names; ///< which the table looks into
    NameTable m_numbers;
};

} // namespace ChipLoom
