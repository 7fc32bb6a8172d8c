#include "GenerateCode/CodeText.h"

namespace ChipLoom {

void append(std::string &code, QStringView text)
{
    const size_t start = code.size();
    code.resize(start + static_cast<size_t>(text.size()));
    char *to = code.data() + start;
    for (const QChar c : text)
        *to++ = c.unicode() < 0x100 ? static_cast<char>(c.unicode()) : '?';
}

std::string toCode(QStringView text)
{
    std::string code;
    append(code, text);
    return code;
}

std::string_view trimmed(std::string_view code)
{
    while (!code.empty() && isSpace(code.front()))
        code.remove_prefix(1);
    while (!code.empty() && isSpace(code.back()))
        code.remove_suffix(1);
    return code;
}

bool replaceAll(std::string &code, std::string_view what, std::string_view with)
{
    size_t at = code.find(what);
    const bool any = at != std::string::npos;
    for (; at != std::string::npos; at = code.find(what, at + with.size()))
        code.replace(at, what.size(), with);
    return any;
}

} // namespace ChipLoom
