#include "ctl/text_forms.h"

#include <charconv>
#include <cstdio>

std::string Utf8(WStringView text)
{
    const auto units = static_cast<int>(text.size());
    std::string bytes(text.size() * 3, '\0');
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), units, bytes.data(), static_cast<int>(bytes.size()),
                                         nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(size > 0 ? size : 0));
    return bytes;
}

WString Utf16(std::string_view bytes)
{
    WString text(bytes.size(), 0);
    const int units = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), static_cast<int>(bytes.size()), text.data(),
                                          static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(units > 0 ? units : 0));
    return text;
}

std::string ValidUtf8(std::string_view bytes)
{
    return Utf8(Utf16(bytes));
}

std::string JsonString(std::string_view utf8)
{
    std::string text = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
            text += escape;
        } else {
            text += c;
        }
    }
    return text + '"';
}

bool ReadNumber(std::string_view text, DWORD& number)
{
    const bool isHexadecimal = text.starts_with("0x");
    if (isHexadecimal)
        text.remove_prefix(2);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, isHexadecimal ? 16 : 10);
    return error == std::errc() && end == text.data() + text.size();
}

std::string WithEscapes(std::string_view utf8)
{
    std::string line;
    for (const char c : utf8) {
        switch (c) {
        case '\t': line += "\\t"; break;
        case '\n': line += "\\n"; break;
        case '\r': line += "\\r"; break;
        case '\\': line += "\\\\"; break;
        default: line += c;
        }
    }
    return line;
}
