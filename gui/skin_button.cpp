#include "gui/skin_button.h"

#include "common/rect.h"
#include "common/string_table.h"
#include "gui/gif_bitmap.h"

#include <algorithm>

namespace {

constexpr int kDefaultFontSizePoints = 12;

} // namespace

void SkinButton::Reset(UINT controlId)
{
    Free();
    m_controlId = controlId;
    m_focusOwner = nullptr;
    m_window = nullptr;
    m_place = {};
    m_stringId = 0;
    m_textColor = 0;
    m_keyColor = kSkinKeyColor;
    m_fontSizePoints = kDefaultFontSizePoints;
    m_stringModule = nullptr;
}

bool SkinButton::Create(HWND focusOwner, HMODULE stringModule, UINT controlId, const RECT& place,
                        const ButtonCaption* caption, const ButtonImageSet* imageSet)
{
    m_focusOwner = focusOwner;
    m_stringModule = stringModule;
    m_controlId = controlId;
    m_place = place;
    if (caption != nullptr) {
        TakeCaption(*caption);
        if (caption->fontSizePoints != 0) {
            m_fontSizePoints = caption->fontSizePoints;
            m_textColor = caption->textColor;
        }
    }
    m_window = CreateWindowExW(0, TEXT("button"), TEXT(""), WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, place.left, place.top,
                               WidthOf(place), HeightOf(place), focusOwner,
                               reinterpret_cast<HMENU>(static_cast<UINT_PTR>(controlId)), g_hInstance, nullptr);
    if (m_window == nullptr)
        return false;
    if (imageSet != nullptr) {
        LoadFace(ButtonFace::Normal, imageSet->normal);
        LoadFace(ButtonFace::Pressed, imageSet->pressed);
        LoadFace(ButtonFace::Focus, imageSet->focus);
        LoadFace(ButtonFace::Disabled, imageSet->disabled);
    }
    return true;
}

void SkinButton::CopyFrom(const SkinButton& other)
{
    m_controlId = other.m_controlId;
    m_focusOwner = other.m_focusOwner;
    m_window = other.m_window;
    m_place = other.m_place;
    m_stringId = other.m_stringId;
    m_textColor = other.m_textColor;
    m_keyColor = other.m_keyColor;
    m_fontSizePoints = other.m_fontSizePoints;
    if (other.m_caption[0] != 0)
        m_caption = other.m_caption;
    m_images = other.m_images;
    m_backgroundSource = nullptr;
}

void SkinButton::Free()
{
    m_images.fill(nullptr);
    m_backgroundSource = nullptr;
    m_caption.fill(0);
}

void SkinButton::CopyCaption(WStringView text)
{
    m_caption.fill(0);
    std::ranges::copy(text.substr(0, kCaptionUnits - 1), m_caption.begin());
}

// The text, or the string when there is a module to look it up.
void SkinButton::TakeCaption(const ButtonCaption& caption)
{
    m_stringId = caption.stringId;
    if (caption.text != nullptr)
        CopyCaption(caption.text);
    else if (m_stringModule != nullptr && m_stringId > 0)
        CopyCaption(ReadString(m_stringModule, static_cast<UINT>(m_stringId)));
}

void SkinButton::SetCaption(const ButtonCaption& caption)
{
    m_caption.fill(0);
    TakeCaption(caption);
    if (caption.textColor != 0)
        m_textColor = caption.textColor;
    if (caption.fontSizePoints != 0)
        m_fontSizePoints = caption.fontSizePoints;
    Repaint();
}

void SkinButton::ReloadCaption()
{
    if (m_stringModule != nullptr && m_stringId > 0)
        CopyCaption(ReadString(m_stringModule, static_cast<UINT>(m_stringId)));
    Repaint();
}

void SkinButton::LoadFace(ButtonFace face, LPCWSTR path)
{
    const HBITMAP bitmap = LoadGifBitmap(path);
    m_images[static_cast<std::size_t>(face)] = bitmap != nullptr ? std::make_shared<SkinImage>(bitmap) : nullptr;
}

void SkinButton::SetImage(ButtonFace face, LPCWSTR path)
{
    LoadFace(face, path);
    Repaint();
}

void SkinButton::Enable(bool enable)
{
    EnableWindow(m_window, enable ? TRUE : FALSE);
}

bool SkinButton::IsEnabled() const
{
    return IsWindowEnabled(m_window) != FALSE;
}

void SkinButton::Show(int command)
{
    ShowWindow(m_window, command);
}

void SkinButton::Move(int x, int y)
{
    m_place = { x, y, x + WidthOf(m_place), y + HeightOf(m_place) };
    MoveWindow(m_window, x, y, WidthOf(m_place), HeightOf(m_place), FALSE);
}

void SkinButton::Resize(int widthPx, int heightPx)
{
    m_place.right = m_place.left + widthPx;
    m_place.bottom = m_place.top + heightPx;
    MoveWindow(m_window, m_place.left, m_place.top, widthPx, heightPx, FALSE);
}

void SkinButton::Repaint()
{
    if (m_window != nullptr) // no window would mean all windows
        InvalidateRect(m_window, nullptr, FALSE);
}

void SkinButton::MakeTopmost(bool topmost)
{
    if (topmost)
        SetWindowPos(m_window, HWND_TOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
}

// A button never keeps the keyboard focus: asked to draw itself with it, it hands the focus on, so that the keys go on
// reaching its owner.
void SkinButton::HandFocusOn(const DRAWITEMSTRUCT& request) const
{
    const bool isReleased = request.itemAction == ODA_SELECT && (request.itemState & ODS_SELECTED) == 0;
    if ((request.itemState & ODS_FOCUS) != 0 && (isReleased || request.itemAction == ODA_FOCUS) &&
        m_focusOwner != nullptr)
        SetFocus(m_focusOwner);
}
