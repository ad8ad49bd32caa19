// How a skinned button draws itself; what it is and holds stands in skin_button.cpp.
#include "common/rect.h"
#include "gui/skin_button.h"
#include "gui/text_line.h"

#include <algorithm>
#include <optional>

namespace {

// Nothing when the request draws nothing.
std::optional<ButtonFace> FaceFor(const DRAWITEMSTRUCT& request)
{
    switch (request.itemAction) {
    case ODA_DRAWENTIRE: return (request.itemState & ODS_DISABLED) != 0 ? ButtonFace::Disabled : ButtonFace::Normal;
    case ODA_SELECT: return (request.itemState & ODS_SELECTED) != 0 ? ButtonFace::Pressed : ButtonFace::Normal;
    default: return std::nullopt;
    }
}

} // namespace

void SkinButton::DrawItem(const DRAWITEMSTRUCT& request)
{
    HandFocusOn(request);
    const auto face = FaceFor(request);
    if (!face)
        return;
    DrawFace(request.hDC, request.rcItem, *face);
    DrawCaption(request.hDC, request.rcItem);
}

void SkinButton::DrawItemComposed(const DRAWITEMSTRUCT& request)
{
    HandFocusOn(request);
    const auto face = FaceFor(request);
    if (!face)
        return;
    SkinImage* image = Face(*face);
    const RECT& item = request.rcItem;
    const int widthPx = std::max<int>(WidthOf(item), image != nullptr ? image->WidthPx() : 0);
    const int heightPx = std::max<int>(HeightOf(item), image != nullptr ? image->HeightPx() : 0);
    const RECT whole = { 0, 0, widthPx, heightPx };
    const UniqueBitmap copy(CreateCompatibleBitmap(request.hDC, widthPx, heightPx));
    const UniqueMemoryContext context(CreateCompatibleDC(request.hDC));
    const SelectedObject selected(context.Get(), copy.Get());
    const UniqueBrush seeThrough(CreateSolidBrush(m_keyColor));
    FillRect(context.Get(), &whole, seeThrough.Get());
    if (image != nullptr) {
        DrawBackground(request.hDC, item);
        BitBlt(context.Get(), 0, 0, image->WidthPx(), image->HeightPx(), image->Context(request.hDC), 0, 0, SRCCOPY);
    }
    DrawCaption(context.Get(), { 0, 0, WidthOf(item), HeightOf(item) });
    TransparentImage(request.hDC, item.left, item.top, widthPx, heightPx, context.Get(), 0, 0, widthPx, heightPx,
                     m_keyColor);
}

void SkinButton::DrawInto(HDC target)
{
    DrawFace(target, m_place, IsEnabled() ? ButtonFace::Normal : ButtonFace::Disabled);
    DrawCaption(target, m_place);
}

void SkinButton::DrawBackground(HDC target, const RECT& rect)
{
    if (m_backgroundSource == nullptr || *m_backgroundSource == nullptr)
        return;
    if (!m_backgroundContext)
        m_backgroundContext.Reset(CreateCompatibleDC(target));
    // Selected for this one copy only: the bitmap is another's, who may select it or put a new one in its place.
    const SelectedObject source(m_backgroundContext.Get(), *m_backgroundSource);
    BitBlt(target, rect.left, rect.top, WidthOf(rect), HeightOf(rect), m_backgroundContext.Get(), m_place.left,
           m_place.top, SRCCOPY);
}

void SkinButton::DrawFace(HDC target, const RECT& rect, ButtonFace face)
{
    SkinImage* image = Face(face);
    if (image == nullptr)
        return;
    DrawBackground(target, rect);
    image->DrawKeyed(target, rect.left, rect.top, m_keyColor);
}

void SkinButton::DrawCaption(HDC target, const RECT& rect)
{
    if (m_caption[0] != 0) // no font for nothing
        DrawTextLine(target, m_caption.data(), rect, m_font.Get(target, m_fontSizePoints), m_textColor,
                     DT_CENTER | DT_VCENTER);
}
