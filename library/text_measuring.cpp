#include "library/text_measuring.h"

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
