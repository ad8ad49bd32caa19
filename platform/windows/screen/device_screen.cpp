#include "platform/windows/screen/device_screen.h"

#include "platform/host/viewport.h"
#include "platform/screen_size.h"

#include <algorithm>
#include <atomic>

namespace cardsong::screen {
namespace {

constexpr LONG_PTR kCaption = WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX;
constexpr wchar_t kBackdropClass[] = L"CardsongBackdrop";

Frame g_frame = Frame::Window;
int g_scale = 1;
bool g_isSetUp = false;
UINT g_dpi = USER_DEFAULT_SCREEN_DPI; // of the frame around the screen
std::atomic<HWND> g_window = nullptr;
std::atomic<LONG> g_left = 0; // where the client area was last known to be
std::atomic<LONG> g_top = 0;

RECT Monitor(bool withoutTaskBar)
{
    MONITORINFO facts{};
    facts.cbSize = sizeof facts;
    GetMonitorInfoW(MonitorFromPoint({ 0, 0 }, MONITOR_DEFAULTTOPRIMARY), &facts);
    return withoutTaskBar ? facts.rcWork : facts.rcMonitor;
}

int FloorDivide(int value, int divisor)
{
    return value >= 0 ? value / divisor : -((divisor - 1 - value) / divisor);
}

int CeilDivide(int value, int divisor)
{
    return -FloorDivide(-value, divisor);
}

POINT FirstPlace(const RECT& area)
{
    return { (area.left + area.right - kScreenWidthPx * g_scale) / 2,
             (area.top + area.bottom - kScreenHeightPx * g_scale) / 2 };
}

void AddExStyle(HWND window, LONG_PTR style)
{
    SetWindowLongPtrW(window, GWL_EXSTYLE, GetWindowLongPtrW(window, GWL_EXSTYLE) | style);
}

// A black window of the whole monitor, which owns the screen window and so lies below it.
HWND MakeBackdrop()
{
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kBackdropClass;
    RegisterClassW(&description);
    const RECT monitor = Monitor(false);
    return CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE, kBackdropClass, L"", WS_POPUP | WS_VISIBLE,
                           monitor.left, monitor.top, monitor.right - monitor.left, monitor.bottom - monitor.top,
                           nullptr, nullptr, description.hInstance, nullptr);
}

POINT Origin()
{
    POINT origin{ g_left, g_top };
    if (const HWND window = g_window; window != nullptr) {
        origin = {};
        ClientToScreen(window, &origin);
    }
    return origin;
}

} // namespace

void SetUpScreen(const ScreenOptions& options)
{
    g_frame = options.frame;
    const RECT work = Monitor(true);
    const RECT whole = Monitor(false);
    if (options.frame == Frame::FullScreen)
        g_scale = std::max(1, host::ScaleOf(host::FitViewport(whole.right - whole.left, whole.bottom - whole.top)));
    else if (options.scale != 0)
        g_scale = options.scale;
    else
        g_scale =
            options.frame == Frame::Hidden ? 1 : host::ComfortableScale(work.right - work.left, work.bottom - work.top);
    g_dpi = GetDpiForSystem();
    const POINT place = FirstPlace(options.frame == Frame::FullScreen ? whole : work);
    g_left = place.x;
    g_top = place.y;
    g_isSetUp = true;
}

bool IsSetUp()
{
    return g_isSetUp;
}

bool IsHidden()
{
    return g_isSetUp && g_frame == Frame::Hidden;
}

int Scale()
{
    return g_scale;
}

HWND ScreenWindow()
{
    return g_window;
}

void AdoptScreenWindow(HWND window)
{
    LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE) | static_cast<LONG_PTR>(kDeviceStyle);
    if (g_frame == Frame::Window)
        style = (style & ~static_cast<LONG_PTR>(WS_POPUP)) | kCaption;
    SetWindowLongPtrW(window, GWL_STYLE, style);
    if (g_frame == Frame::FullScreen) {
        SetWindowLongPtrW(window, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(MakeBackdrop()));
        AddExStyle(window, WS_EX_APPWINDOW); // without it the task bar leaves out an owned window
    }
    const RECT place = PlaceOfScreenWindow();
    g_window = window;
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

void ForgetScreenWindow()
{
    g_window = nullptr;
}

RECT PlaceOfScreenWindow()
{
    const POINT origin = Origin();
    RECT place{ origin.x, origin.y, origin.x + kScreenWidthPx * g_scale, origin.y + kScreenHeightPx * g_scale };
    if (g_frame == Frame::Window)
        AdjustWindowRectExForDpi(&place, static_cast<DWORD>(kCaption), FALSE, 0, g_dpi);
    return place;
}

SIZE TakeWay()
{
    if (IsIconic(g_window))
        return {};
    const POINT now = Origin();
    return { now.x - g_left.exchange(now.x), now.y - g_top.exchange(now.y) };
}

void TakeDpi(UINT dpi, POINT outerCorner)
{
    g_dpi = dpi;
    const RECT place = PlaceOfScreenWindow();
    SetWindowPos(g_window, nullptr, outerCorner.x, outerCorner.y, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

// A window without opacity still has pixels to draw; one beyond every monitor has none.
void HideLikeScreen(HWND window)
{
    if (g_frame != Frame::Hidden)
        return;
    AddExStyle(window, WS_EX_TOOLWINDOW | WS_EX_LAYERED | WS_EX_TRANSPARENT);
    SetLayeredWindowAttributes(window, 0, 0, LWA_ALPHA);
}

RECT Enlarge(const RECT& rect)
{
    return { rect.left * g_scale, rect.top * g_scale, rect.right * g_scale, rect.bottom * g_scale };
}

RECT Reduce(const RECT& rect)
{
    return { FloorDivide(rect.left, g_scale), FloorDivide(rect.top, g_scale), CeilDivide(rect.right, g_scale),
             CeilDivide(rect.bottom, g_scale) };
}

POINT ToDesktop(POINT onScreen)
{
    const POINT origin = g_isSetUp ? Origin() : POINT{};
    return { origin.x + onScreen.x * g_scale, origin.y + onScreen.y * g_scale };
}

POINT FromDesktop(POINT onDesktop)
{
    const POINT origin = g_isSetUp ? Origin() : POINT{};
    return { FloorDivide(onDesktop.x - origin.x, g_scale), FloorDivide(onDesktop.y - origin.y, g_scale) };
}

void UseDevicePixels(HDC context)
{
    if (g_scale == 1 || context == nullptr)
        return;
    SetMapMode(context, MM_ANISOTROPIC);
    SetWindowExtEx(context, 1, 1, nullptr);
    SetViewportExtEx(context, g_scale, g_scale, nullptr);
    SetStretchBltMode(context, COLORONCOLOR); // each pixel is repeated
}

} // namespace cardsong::screen
