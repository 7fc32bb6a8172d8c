#pragma once

#include <QString>

#include <array>
#include <string>
#include <string_view>

namespace ChipLoom {

// Code is a string of bytes, each of which is one character of Latin-1: a user's text passes unchanged, whatever its
// encoding. Values of the design are texts and become code when they are written.

/// What Latin-1 does not have becomes "?".
std::string toCode(QStringView text);
void append(std::string &code, QStringView text);

inline QString toText(std::string_view code)
{
    return QString::fromLatin1(code.data(), static_cast<int>(code.size()));
}

/// Letters and digits of Latin-1 and "_", by their code.
inline constexpr std::array<bool, 256> WordCharacters = [] {
    std::array<bool, 256> words{};
    for (size_t code = 0; code < words.size(); ++code) {
        const bool isAscii =
            (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || (code >= 'a' && code <= 'z') || code == '_';
        const bool isNumber = code == 0xb2 || code == 0xb3 || code == 0xb9 || (code >= 0xbc && code <= 0xbe);
        const bool isLetter =
            code == 0xaa || code == 0xb5 || code == 0xba || (code >= 0xc0 && code != 0xd7 && code != 0xf7);
        words[code] = isAscii || isNumber || isLetter;
    }
    return words;
}();
inline bool isWord(char c)
{
    return WordCharacters[static_cast<unsigned char>(c)];
}

inline bool isSpace(char c)
{
    return QChar(QLatin1Char(c)).isSpace();
}

std::string_view trimmed(std::string_view code);

// Places lie in a code or at its end, unless something else is said.

/// Behind the spaces that stand at a place.
inline int skipSpaces(std::string_view code, int from)
{
    while (from < static_cast<int>(code.size()) && isSpace(code[static_cast<size_t>(from)]))
        ++from;
    return from;
}

/// Behind the letters, digits and "_" that stand at a place.
inline int skipWord(std::string_view code, int from)
{
    while (from < static_cast<int>(code.size()) && isWord(code[static_cast<size_t>(from)]))
        ++from;
    return from;
}

/// Where something stands in a code at or behind `from`; -1 if nowhere.
inline int indexOf(std::string_view code, char what, int from = 0)
{
    const size_t at = code.find(what, static_cast<size_t>(from));
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

inline int indexOf(std::string_view code, std::string_view what, int from = 0)
{
    const size_t at = code.find(what, static_cast<size_t>(from));
    return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

inline int length(std::string_view code)
{
    return static_cast<int>(code.size());
}

/// From `start` up to `end`, which does not lie in front of it.
inline std::string_view between(std::string_view code, int start, int end)
{
    return code.substr(static_cast<size_t>(start), static_cast<size_t>(end - start));
}

/// Whether something stands at a place, which may lie behind the end but not in front of the start.
inline bool standsAt(std::string_view code, int at, std::string_view what)
{
    return at <= length(code) && code.substr(static_cast<size_t>(at)).starts_with(what);
}

inline bool standsAt(std::string_view code, int at, char what)
{
    return at < length(code) && code[static_cast<size_t>(at)] == what;
}

inline void replaceAt(std::string &code, int start, int size, std::string_view with)
{
    code.replace(static_cast<size_t>(start), static_cast<size_t>(size), with);
}

/// Puts a code in every place of another, which is not empty, from front to back. False if there was none.
bool replaceAll(std::string &code, std::string_view what, std::string_view with);

} // namespace ChipLoom
