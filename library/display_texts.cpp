#include "library/display_texts.h"

#include <string>

const WCHAR* FormatPlayTime(std::uint32_t seconds)
{
    static WCHAR s_text[24];
    const std::uint32_t hours = seconds / 3600;
    const std::uint32_t minutes = seconds % 3600 / 60;
    const std::uint32_t rest = seconds % 60;
    if (seconds == 0)
        wsprintfW(s_text, TEXT("--:--"));
    else if (hours == 0)
        wsprintfW(s_text, TEXT("%d:%02d"), minutes, rest);
    else
        wsprintfW(s_text, TEXT("%d:%02d:%02d"), hours, minutes, rest);
    return s_text;
}

WString DecimalText(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return WString(digits.begin(), digits.end());
}

SIZE MeasureText(const WCHAR* text, HFONT font)
{
    SIZE size = {};
    if (text == nullptr)
        return size;
    const HDC screen = GetDC(nullptr);
    const HGDIOBJ before = SelectObject(screen, font);
    GetTextExtentExPointW(screen, text, static_cast<int>(WStringView(text).size()), 0, nullptr, nullptr, &size);
    SelectObject(screen, before);
    ReleaseDC(nullptr, screen);
    return size;
}
