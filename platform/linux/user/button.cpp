// The class "button": push buttons drawn by the system, and buttons that their owner draws. A press is a press of the
// pointer or of the space bar; it becomes a click when it ends on the button.
#include "platform/linux/user/control_data.h"
#include "platform/linux/user/window_class.h"

namespace cardsong::user {

namespace {

constexpr LONG_PTR kTypeMask = 0xF;
constexpr LONG_PTR kPressed = 0x0200;  // the pointer or the space bar went down on the button
constexpr LONG_PTR kClicking = 0x0400; // amid BM_CLICK
constexpr LONG_PTR kPublicStates = 0x00FF;

LONG_PTR TypeOf(HWND button)
{
    return GetWindowLongPtrW(button, GWL_STYLE) & kTypeMask;
}

bool IsOwnerDrawn(HWND button)
{
    return TypeOf(button) == BS_OWNERDRAW;
}

bool HasState(HWND button, LONG_PTR bit)
{
    return (ControlState(button) & bit) != 0;
}

void ChangeState(HWND button, LONG_PTR bit, bool on)
{
    const LONG_PTR state = ControlState(button);
    SetControlState(button, on ? state | bit : state & ~bit);
}

void NotifyParent(HWND button, WORD notice)
{
    const auto id = static_cast<WORD>(GetDlgCtrlID(button));
    SendMessageW(GetParent(button), WM_COMMAND, MAKEWPARAM(id, notice), reinterpret_cast<LPARAM>(button));
}

void AskOwnerToDraw(HWND button, HDC context, UINT action)
{
    const HWND parent = GetParent(button);
    SendMessageW(parent, WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(context), reinterpret_cast<LPARAM>(button));
    DRAWITEMSTRUCT request{};
    request.CtlType = ODT_BUTTON;
    request.CtlID = static_cast<UINT>(GetDlgCtrlID(button));
    request.itemAction = action;
    if (HasState(button, BST_PUSHED))
        request.itemState |= ODS_SELECTED;
    if (HasState(button, BST_FOCUS))
        request.itemState |= ODS_FOCUS;
    if (IsWindowEnabled(button) == FALSE)
        request.itemState |= ODS_DISABLED;
    request.hwndItem = button;
    request.hDC = context;
    GetClientRect(button, &request.rcItem);
    SendMessageW(parent, WM_DRAWITEM, request.CtlID, reinterpret_cast<LPARAM>(&request));
}

void DrawEdge(HDC context, const RECT& rect, int light, int shade)
{
    const RECT edges[] = { { rect.left, rect.top, rect.right, rect.top + 1 },
                           { rect.left, rect.top, rect.left + 1, rect.bottom },
                           { rect.left, rect.bottom - 1, rect.right, rect.bottom },
                           { rect.right - 1, rect.top, rect.right, rect.bottom } };
    const int brushes[] = { light, light, shade, shade };
    for (int i = 0; i < 4; ++i)
        FillRect(context, &edges[i], static_cast<HBRUSH>(GetStockObject(brushes[i])));
}

void DrawPushButton(HWND button, HDC context)
{
    SendMessageW(GetParent(button), WM_CTLCOLORBTN, reinterpret_cast<WPARAM>(context),
                 reinterpret_cast<LPARAM>(button)); // told, though its brush does not show on a push button
    RECT rect{};
    GetClientRect(button, &rect);
    const bool isPushed = HasState(button, BST_PUSHED);
    FillRect(context, &rect, static_cast<HBRUSH>(GetStockObject(LTGRAY_BRUSH)));
    if (TypeOf(button) == BS_DEFPUSHBUTTON) {
        DrawEdge(context, rect, BLACK_BRUSH, BLACK_BRUSH);
        rect = { rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1 };
    }
    DrawEdge(context, rect, isPushed ? DKGRAY_BRUSH : WHITE_BRUSH, isPushed ? WHITE_BRUSH : DKGRAY_BRUSH);
    const COLORREF color = IsWindowEnabled(button) == FALSE ? RGB(0x80, 0x80, 0x80) : RGB(0, 0, 0);
    const COLORREF previous = SetTextColor(context, color);
    DrawControlText(button, context, rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    SetTextColor(context, previous);
}

void Draw(HWND button, HDC context, UINT action)
{
    if (IsOwnerDrawn(button))
        AskOwnerToDraw(button, context, action);
    else
        DrawPushButton(button, context);
}

// Draws at once, not at the next WM_PAINT.
void DrawNow(HWND button, UINT action)
{
    if (IsWindowVisible(button) == FALSE)
        return;
    const HDC context = GetDC(button);
    if (context == nullptr)
        return;
    Draw(button, context, action);
    ReleaseDC(button, context);
}

void Paint(HWND button)
{
    PAINTSTRUCT paint{};
    if (const HDC context = BeginPaint(button, &paint))
        Draw(button, context, ODA_DRAWENTIRE);
    EndPaint(button, &paint);
}

void SetPushed(HWND button, bool isPushed)
{
    if (HasState(button, BST_PUSHED) == isPushed)
        return;
    ChangeState(button, BST_PUSHED, isPushed);
    DrawNow(button, ODA_SELECT);
}

bool IsInside(HWND button, LPARAM at)
{
    RECT client{};
    GetClientRect(button, &client);
    const auto x = static_cast<SHORT>(LOWORD(static_cast<ULONG_PTR>(at)));
    const auto y = static_cast<SHORT>(HIWORD(static_cast<ULONG_PTR>(at)));
    return x >= 0 && x < client.right && y >= 0 && y < client.bottom;
}

// Drawing may hand the focus on at once; the press begins only after that, so that losing the focus does not end it.
void BeginPress(HWND button)
{
    SetCapture(button);
    SetFocus(button);
    ChangeState(button, kPressed, true);
    SendMessageW(button, BM_SETSTATE, TRUE, 0);
}

void EndPress(HWND button, bool isInside)
{
    if (!HasState(button, kPressed))
        return;
    const bool wasPushed = HasState(button, BST_PUSHED);
    ChangeState(button, kPressed, false);
    if (wasPushed)
        SendMessageW(button, BM_SETSTATE, FALSE, 0);
    ReleaseCapture();
    if (wasPushed && isInside)
        NotifyParent(button, BN_CLICKED);
}

void LosePress(HWND button)
{
    if (!HasState(button, kPressed))
        return;
    ChangeState(button, kPressed, false);
    if (HasState(button, BST_PUSHED))
        SendMessageW(button, BM_SETSTATE, FALSE, 0);
}

void SecondPress(HWND button)
{
    const bool notifies = (GetWindowLongPtrW(button, GWL_STYLE) & BS_NOTIFY) != 0;
    if (IsOwnerDrawn(button) || notifies)
        NotifyParent(button, BN_DOUBLECLICKED);
    else
        BeginPress(button);
}

void ChangeFocusState(HWND button, bool hasFocus)
{
    ChangeState(button, BST_FOCUS, hasFocus);
    DrawNow(button, ODA_FOCUS);
    if (!hasFocus && HasState(button, kPressed) && GetCapture() == button)
        ReleaseCapture();
    if ((GetWindowLongPtrW(button, GWL_STYLE) & BS_NOTIFY) != 0)
        NotifyParent(button, hasFocus ? BN_SETFOCUS : BN_KILLFOCUS);
}

void Click(HWND button)
{
    if (HasState(button, kClicking))
        return;
    ChangeState(button, kClicking, true);
    SendMessageW(button, WM_LBUTTONDOWN, 0, 0);
    SendMessageW(button, WM_LBUTTONUP, 0, 0);
    ChangeState(button, kClicking, false);
}

LRESULT DialogCode(HWND button)
{
    switch (TypeOf(button)) {
    case BS_PUSHBUTTON: return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON: return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    default: return DLGC_BUTTON;
    }
}

void SetType(HWND button, WPARAM type, bool redraw)
{
    const LONG_PTR style = GetWindowLongPtrW(button, GWL_STYLE);
    SetWindowLongPtrW(button, GWL_STYLE, (style & ~kTypeMask) | (static_cast<LONG_PTR>(type) & kTypeMask));
    if (redraw)
        InvalidateRect(button, nullptr, TRUE);
}

// The pointer moved while it is down.
void DragPress(HWND button, WPARAM buttons, LPARAM at)
{
    if ((buttons & MK_LBUTTON) != 0 && GetCapture() == button)
        SendMessageW(button, BM_SETSTATE, IsInside(button, at) ? TRUE : FALSE, 0);
}

// Messages of state and look; nothing when `message` is none of them.
bool AnswerState(HWND button, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    result = 0;
    switch (message) {
    case BM_SETSTATE: SetPushed(button, wParam != 0); return true;
    case BM_GETSTATE: result = ControlState(button) & kPublicStates; return true;
    case BM_SETSTYLE: SetType(button, wParam, LOWORD(static_cast<ULONG_PTR>(lParam)) != 0); return true;
    case BM_CLICK: Click(button); return true;
    case WM_GETDLGCODE: result = DialogCode(button); return true;
    case WM_GETFONT: result = reinterpret_cast<LRESULT>(ControlFont(button)); return true;
    case WM_SETFONT:
        SetControlFont(button, reinterpret_cast<HFONT>(wParam));
        if (LOWORD(static_cast<ULONG_PTR>(lParam)) != 0)
            InvalidateRect(button, nullptr, TRUE);
        return true;
    default: return false;
    }
}

} // namespace

LRESULT CALLBACK ButtonProcedure(HWND button, UINT message, WPARAM wParam, LPARAM lParam)
{
    LRESULT result = 0;
    if (AnswerState(button, message, wParam, lParam, result))
        return result;
    switch (message) {
    case WM_PAINT: Paint(button); return 0;
    case WM_ERASEBKGND: return 1; // a button covers itself, an owner-drawn one as its owner likes
    case WM_ENABLE: InvalidateRect(button, nullptr, FALSE); return 0;
    case WM_LBUTTONDOWN: BeginPress(button); return 0;
    case WM_LBUTTONDBLCLK: SecondPress(button); return 0;
    case WM_LBUTTONUP: EndPress(button, IsInside(button, lParam)); return 0;
    case WM_MOUSEMOVE: DragPress(button, wParam, lParam); return 0;
    case WM_CAPTURECHANGED: LosePress(button); return 0;
    case WM_SETFOCUS: ChangeFocusState(button, true); return 0;
    case WM_KILLFOCUS: ChangeFocusState(button, false); return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE && !HasState(button, kPressed)) {
            SetCapture(button);
            ChangeState(button, kPressed, true);
            SendMessageW(button, BM_SETSTATE, TRUE, 0);
        }
        return 0;
    case WM_KEYUP:
        if (wParam == VK_SPACE)
            EndPress(button, true);
        return 0;
    default: return DefWindowProcW(button, message, wParam, lParam);
    }
}

} // namespace cardsong::user
