// The class "static": shows its text, and lets taps through unless it was told to notify.
#include "platform/linux/user/control_data.h"
#include "platform/linux/user/window_class.h"

namespace cardsong::user {

namespace {

void Paint(HWND control)
{
    PAINTSTRUCT paint{};
    const HDC context = BeginPaint(control, &paint);
    if (context != nullptr && !ControlText(control).empty()) {
        RECT client{};
        GetClientRect(control, &client);
        const LRESULT brush = SendMessageW(GetParent(control), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(context),
                                           reinterpret_cast<LPARAM>(control));
        if (brush != 0)
            FillRect(context, &client, reinterpret_cast<HBRUSH>(brush));
        const bool isSimple = (GetWindowLongPtrW(control, GWL_STYLE) & 0x1F) == SS_SIMPLE;
        DrawControlText(control, context, client, isSimple ? DT_SINGLELINE | DT_NOPREFIX : DT_WORDBREAK);
    }
    EndPaint(control, &paint);
}

bool Notifies(HWND control)
{
    return (GetWindowLongPtrW(control, GWL_STYLE) & SS_NOTIFY) != 0;
}

LRESULT NotifyOfTap(HWND control, WORD notice)
{
    if (Notifies(control))
        SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(static_cast<WORD>(GetDlgCtrlID(control)), notice),
                     reinterpret_cast<LPARAM>(control));
    return 0;
}

} // namespace

LRESULT CALLBACK StaticProcedure(HWND control, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: Paint(control); return 0;
    case WM_ERASEBKGND: return 1;
    case WM_NCHITTEST: return Notifies(control) ? HTCLIENT : HTTRANSPARENT;
    case WM_LBUTTONDOWN: return NotifyOfTap(control, STN_CLICKED);
    case WM_LBUTTONDBLCLK: return NotifyOfTap(control, STN_DBLCLK);
    case WM_GETDLGCODE: return DLGC_STATIC;
    case WM_ENABLE: InvalidateRect(control, nullptr, TRUE); return 0;
    case WM_GETFONT: return reinterpret_cast<LRESULT>(ControlFont(control));
    case WM_SETFONT:
        SetControlFont(control, reinterpret_cast<HFONT>(wParam));
        if (LOWORD(static_cast<ULONG_PTR>(lParam)) != 0)
            InvalidateRect(control, nullptr, TRUE);
        return 0;
    default: return DefWindowProcW(control, message, wParam, lParam);
    }
}

} // namespace cardsong::user
