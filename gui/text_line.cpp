#include "gui/text_line.h"

namespace {

constexpr int kPointsPerInch = 72;

} // namespace

UniqueFont CreatePlainFont(HDC context, int sizePoints)
{
    LOGFONTW description = {};
    description.lfHeight = -(sizePoints * GetDeviceCaps(context, LOGPIXELSY) / kPointsPerInch);
    return UniqueFont(CreateFontIndirectW(&description));
}

void DrawTextLine(HDC target, WStringView text, const RECT& box, HFONT font, COLORREF color, UINT placement)
{
    if (text.empty())
        return;
    const SelectedObject selected(target, font);
    const int modeBefore = SetBkMode(target, TRANSPARENT);
    const COLORREF colorBefore = SetTextColor(target, color);
    RECT area = box;
    DrawTextW(target, text.data(), static_cast<int>(text.size()), &area, DT_SINGLELINE | placement);
    SetTextColor(target, colorBefore);
    SetBkMode(target, modeBefore);
}
