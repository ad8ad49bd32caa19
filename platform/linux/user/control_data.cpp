#include "platform/linux/user/control_data.h"

#include "platform/linux/user/desktop.h"

namespace cardsong::user {

namespace {

constexpr int kStateOffset = 0;
constexpr int kFontOffset = sizeof(LONG_PTR);

} // namespace

LONG_PTR ControlState(HWND control)
{
    return GetWindowLongPtrW(control, kStateOffset);
}

void SetControlState(HWND control, LONG_PTR state)
{
    SetWindowLongPtrW(control, kStateOffset, state);
}

HFONT ControlFont(HWND control)
{
    return reinterpret_cast<HFONT>(GetWindowLongPtrW(control, kFontOffset));
}

void SetControlFont(HWND control, HFONT font)
{
    SetWindowLongPtrW(control, kFontOffset, reinterpret_cast<LONG_PTR>(font));
}

std::u16string ControlText(HWND control)
{
    LockedDesktop desktop;
    const WindowRecord* const record = desktop->windows.Find(control);
    return record == nullptr ? std::u16string() : record->text;
}

void DrawControlText(HWND control, HDC context, RECT rect, UINT format)
{
    const auto text = ControlText(control);
    if (text.empty())
        return;
    const HFONT font = ControlFont(control);
    const HGDIOBJ previous = SelectObject(context, font == nullptr ? GetStockObject(SYSTEM_FONT) : font);
    SetBkMode(context, TRANSPARENT);
    DrawTextW(context, text.c_str(), -1, &rect, format);
    SelectObject(context, previous);
}

} // namespace cardsong::user
