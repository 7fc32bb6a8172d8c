#include "GenerateCode/NameTable.h"

#include <bit>
#include <cstring>
#include <utility>

namespace ChipLoom {

void NameTable::reserve(int names)
{
    const size_t places = std::bit_ceil(static_cast<size_t>(names) * 2 + 2);
    if (places <= m_entries.size())
        return;
    const std::vector<Entry> former = std::exchange(m_entries, std::vector<Entry>(places));
    for (const Entry &entry : former) {
        if (entry.number >= 0)
            m_entries[placeOf(entry.name)] = entry;
    }
}

// Eight bytes at a time; the last ones of a longer name once more.
size_t NameTable::sumOf(std::string_view name)
{
    constexpr size_t Step = 8;
    constexpr quint64 Factor = 0x9e3779b97f4a7c15;
    quint64 sum = name.size();
    const auto add = [&](size_t at, size_t size) {
        quint64 piece = 0;
        std::memcpy(&piece, name.data() + at, size);
        sum = (sum ^ piece) * Factor;
        sum ^= sum >> 32;
    };
    if (name.size() < Step) {
        if (!name.empty())
            add(0, name.size());
        return sum;
    }
    for (size_t at = 0; at < name.size() - Step; at += Step)
        add(at, Step);
    add(name.size() - Step, Step);
    return sum;
}

// Where it stands or would be put.
size_t NameTable::placeOf(std::string_view name) const
{
    const size_t mask = m_entries.size() - 1;
    size_t place = sumOf(name) & mask;
    while (m_entries[place].number >= 0 && m_entries[place].name != name)
        place = (place + 1) & mask;
    return place;
}

bool NameTable::insert(std::string_view name, int number)
{
    if (m_entries.size() < (m_taken + 1) * 2)
        reserve(static_cast<int>(m_taken) * 2 + 8);
    Entry &entry = m_entries[placeOf(name)];
    if (entry.number >= 0)
        return false;
    entry = {name, number};
    ++m_taken;
    return true;
}

int NameTable::find(std::string_view name) const
{
    return m_entries.empty() ? -1 : m_entries[placeOf(name)].number;
}

int NumberedNames::add(const QString &name)
{
    const int known = m_numbers.find(name);
    if (known >= 0)
        return known;
    const int number = static_cast<int>(m_names.size());
    m_numbers.insert(m_names.emplace_back(name), number);
    return number;
}

} // namespace ChipLoom
