#include "controls/seek_slider.h"

#include "common/rect.h"
#include "gui/gif_bitmap.h"

#include <algorithm>
#include <limits>

namespace {

// The slider behind the subclass procedure, which gets no pointer of its own, and the procedure before it.
SeekSlider* g_seekSlider = nullptr;
WNDPROC g_previousProcedure = nullptr;

constexpr long long kLowestPosition = std::numeric_limits<int>::min();
constexpr float kBeyondInt = 2147483648.0F; // the first float that an int does not hold

} // namespace

SeekSlider::SeekSlider(HWND owner, UINT identifier, LPCWSTR playedImagePath, LPCWSTR backgroundImagePath)
    : m_identifier(identifier), m_window(GetWindow(owner, GW_CHILD)), m_owner(owner),
      m_playedImage(LoadGifBitmap(playedImagePath)), m_backgroundImage(LoadGifBitmap(backgroundImagePath))
{
    if (g_seekSlider != nullptr)
        g_seekSlider->GiveWindowBack();
    if (m_window == nullptr)
        return;
    GetClientRect(m_window, &m_client);
    g_seekSlider = this;
    g_previousProcedure = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&SeekSlider::SliderProcedure)));
}

SeekSlider::~SeekSlider()
{
    if (g_seekSlider == this)
        GiveWindowBack();
}

void SeekSlider::GiveWindowBack()
{
    if (IsWindow(m_window))
        SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(g_previousProcedure));
    g_seekSlider = nullptr;
}

void SeekSlider::SetRange(int a, int b)
{
    m_minimum = std::min(a, b);
    m_maximum = std::max(a, b);
}

void SeekSlider::GetRange(int* minimum, int* maximum) const
{
    *minimum = m_minimum;
    *maximum = m_maximum;
}

int SeekSlider::SetPos(int position)
{
    if (position < m_minimum || position > m_maximum)
        return 0;
    m_position = position;
    Invalidate();
    return 1;
}

int SeekSlider::SetStep(int step)
{
    if (step <= 0)
        return 0;
    m_step = step;
    return 1;
}

int SeekSlider::OffsetPos(int delta)
{
    return MoveTo(static_cast<long long>(m_position) + delta);
}

int SeekSlider::MoveTo(long long position)
{
    m_position = static_cast<int>(std::clamp<long long>(position, kLowestPosition, m_maximum));
    Invalidate();
    return m_position == position ? 1 : 0;
}

float SeekSlider::RangeSize() const
{
    return static_cast<float>(static_cast<long long>(m_maximum) - m_minimum);
}

void SeekSlider::Invalidate()
{
    if (m_window != nullptr) // no window would mean all windows
        InvalidateRect(m_window, nullptr, FALSE);
}

LRESULT CALLBACK SeekSlider::SliderProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: g_seekSlider->Paint(); return 0;
    case WM_LBUTTONDOWN: g_seekSlider->Tap(LOWORD(static_cast<ULONG_PTR>(lParam))); return 1;
    case WM_NCHITTEST:
        // A static control without SS_NOTIFY calls itself transparent on desktop systems, and the tap would go to the
        // window behind it; the device's static controls take it.
        return HTCLIENT;
    default: return CallWindowProcW(g_previousProcedure, window, message, wParam, lParam);
    }
}

void SeekSlider::Tap(int xPx)
{
    const int widthPx = WidthOf(m_client);
    if (widthPx == 0)
        return;
    const float wanted = RangeSize() * static_cast<float>(xPx) / static_cast<float>(widthPx);
    const int position = wanted < kBeyondInt ? static_cast<int>(wanted) : std::numeric_limits<int>::max();
    MoveTo(position);
    PostMessageW(m_owner, kSliderMovedMessage, m_identifier, position);
}

void SeekSlider::Paint()
{
    // The minimum is not taken off the position: the bar shows positions that count from 0.
    const float range = RangeSize();
    m_fraction = range > 0.0F ? std::clamp(static_cast<float>(m_position) / range, 0.0F, 1.0F) : 0.0F;
    const int playedPx = static_cast<int>(static_cast<float>(WidthOf(m_client)) * m_fraction);
    PAINTSTRUCT paint = {};
    const HDC context = BeginPaint(m_window, &paint);
    if (m_playedImage && m_backgroundImage)
        DrawImages(context, playedPx);
    else
        DrawPlain(context, playedPx);
    EndPaint(m_window, &paint);
}

void SeekSlider::DrawImages(HDC context, int playedPx)
{
    StretchBlt(context, 0, 0, WidthOf(m_client), HeightOf(m_client), m_backgroundImage.Context(context), 0, 0,
               m_backgroundImage.WidthPx(), m_backgroundImage.HeightPx(), SRCCOPY);
    const int sourcePx = static_cast<int>(static_cast<float>(m_playedImage.WidthPx()) * m_fraction);
    StretchBlt(context, 0, 0, playedPx, HeightOf(m_client), m_playedImage.Context(context), 0, 0, sourcePx,
               m_playedImage.HeightPx(), SRCCOPY);
}

void SeekSlider::DrawPlain(HDC context, int playedPx)
{
    FillRect(context, &m_client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    const RECT played = { m_client.left, m_client.top, m_client.left + playedPx, m_client.bottom };
    FillRect(context, &played, static_cast<HBRUSH>(GetStockObject(GRAY_BRUSH)));
}
