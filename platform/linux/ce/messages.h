// Numbers of the API's messages, styles, keys and states that the player and its windows use. Knows no function.
#pragma once

#include "platform/linux/ce/types.h"

// ---- window messages ----
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_CANCELMODE = 0x001F;
constexpr UINT WM_NEXTDLGCTL = 0x0028;
constexpr UINT WM_DRAWITEM = 0x002B;
constexpr UINT WM_SETFONT = 0x0030;
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_WINDOWPOSCHANGING = 0x0046;
constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_NCCREATE = 0x0081;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_NCHITTEST = 0x0084;
constexpr UINT WM_GETDLGCODE = 0x0087;
constexpr UINT WM_KEYFIRST = 0x0100;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_SYSKEYUP = 0x0105;
constexpr UINT WM_SYSCHAR = 0x0106;
constexpr UINT WM_KEYLAST = 0x0109;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_CTLCOLORBTN = 0x0135;
constexpr UINT WM_CTLCOLORSTATIC = 0x0138;
constexpr UINT WM_MOUSEFIRST = 0x0200;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_MOUSELAST = 0x020E;
constexpr UINT WM_CAPTURECHANGED = 0x0215;
constexpr UINT WM_DEVICECHANGE = 0x0219;
constexpr UINT WM_USER = 0x0400;

inline const HWND HWND_BROADCAST = reinterpret_cast<HWND>(static_cast<ULONG_PTR>(0xFFFF));
inline const HWND HWND_TOP = reinterpret_cast<HWND>(static_cast<LONG_PTR>(0));
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(static_cast<LONG_PTR>(1));
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-1));
inline const HWND HWND_NOTOPMOST = reinterpret_cast<HWND>(static_cast<LONG_PTR>(-2));

// ---- activation, hit test, size ----
constexpr WORD WA_INACTIVE = 0;
constexpr WORD WA_ACTIVE = 1;
constexpr WORD WA_CLICKACTIVE = 2;
constexpr LRESULT HTTRANSPARENT = -1;
constexpr LRESULT HTNOWHERE = 0;
constexpr LRESULT HTCLIENT = 1;
constexpr WPARAM SIZE_RESTORED = 0;
constexpr WPARAM MK_LBUTTON = 1;

// ---- device change ----
constexpr WPARAM DBT_DEVICEARRIVAL = 0x8000;
constexpr WPARAM DBT_DEVICEREMOVECOMPLETE = 0x8004;
constexpr DWORD DBT_DEVTYP_PORT = 3;
struct DEV_BROADCAST_HDR {
    DWORD dbch_size;
    DWORD dbch_devicetype;
    DWORD dbch_reserved;
};
struct DEV_BROADCAST_PORT_W {
    DWORD dbcp_size;
    DWORD dbcp_devicetype;
    DWORD dbcp_reserved;
    WCHAR dbcp_name[1];
};

// ---- window styles ----
constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_GROUP = 0x00020000;
constexpr DWORD WS_TABSTOP = 0x00010000;
constexpr DWORD WS_EX_TOPMOST = 0x00000008;
constexpr DWORD WS_EX_TRANSPARENT = 0x00000020;
constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;
constexpr DWORD WS_EX_NOANIMATION = 0x04000000;
constexpr DWORD WS_EX_NOACTIVATE = 0x08000000;
constexpr UINT CS_VREDRAW = 0x0001;
constexpr UINT CS_HREDRAW = 0x0002;
constexpr UINT CS_DBLCLKS = 0x0008;
constexpr DWORD DS_SETFONT = 0x40;
constexpr DWORD DS_CONTROL = 0x400;

constexpr int GWLP_WNDPROC = -4;
constexpr int GWLP_HINSTANCE = -6;
constexpr int GWLP_HWNDPARENT = -8;
constexpr int GWLP_ID = -12;
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWLP_USERDATA = -21;
constexpr int DWLP_MSGRESULT = 0;
constexpr int DWLP_DLGPROC = sizeof(LRESULT);
constexpr int DLGWINDOWEXTRA = 32;

constexpr UINT GW_HWNDFIRST = 0;
constexpr UINT GW_HWNDLAST = 1;
constexpr UINT GW_HWNDNEXT = 2;
constexpr UINT GW_HWNDPREV = 3;
constexpr UINT GW_OWNER = 4;
constexpr UINT GW_CHILD = 5;

constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_SHOWNA = 8;
constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOREDRAW = 0x0008;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;

constexpr UINT PM_NOREMOVE = 0;
constexpr UINT PM_REMOVE = 1;
constexpr UINT PM_QS_INPUT = 0x00070000;
constexpr UINT PM_QS_PAINT = 0x00200000;
constexpr UINT PM_QS_SENDMESSAGE = 0x00400000;
constexpr UINT PM_QS_POSTMESSAGE = 0x00980000;

// ---- dialogs ----
constexpr UINT DM_GETDEFID = WM_USER + 0;
constexpr UINT DM_SETDEFID = WM_USER + 1;
constexpr WORD DC_HASDEFID = 0x534B;
constexpr LRESULT DLGC_WANTARROWS = 0x0001;
constexpr LRESULT DLGC_WANTTAB = 0x0002;
constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
constexpr LRESULT DLGC_WANTMESSAGE = 0x0004;
constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x0010;
constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x0020;
constexpr LRESULT DLGC_STATIC = 0x0100;
constexpr LRESULT DLGC_BUTTON = 0x2000;
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr UINT MB_OK = 0x00000000;
constexpr UINT MB_OKCANCEL = 0x00000001;
constexpr UINT MB_YESNO = 0x00000004;
constexpr UINT MB_ICONEXCLAMATION = 0x00000030;
constexpr UINT MB_DEFBUTTON2 = 0x00000100;

// ---- buttons and statics ----
constexpr DWORD BS_PUSHBUTTON = 0x0;
constexpr DWORD BS_DEFPUSHBUTTON = 0x1;
constexpr DWORD BS_OWNERDRAW = 0xB;
constexpr DWORD BS_NOTIFY = 0x4000;
constexpr UINT BM_GETCHECK = 0x00F0;
constexpr UINT BM_SETCHECK = 0x00F1;
constexpr UINT BM_GETSTATE = 0x00F2;
constexpr UINT BM_SETSTATE = 0x00F3;
constexpr UINT BM_SETSTYLE = 0x00F4;
constexpr UINT BM_CLICK = 0x00F5;
constexpr LRESULT BST_PUSHED = 0x0004;
constexpr LRESULT BST_FOCUS = 0x0008;
constexpr WORD BN_CLICKED = 0;
constexpr WORD BN_DOUBLECLICKED = 5;
constexpr WORD BN_SETFOCUS = 6;
constexpr WORD BN_KILLFOCUS = 7;
constexpr DWORD SS_SIMPLE = 0xB;
constexpr DWORD SS_NOTIFY = 0x0100;
constexpr WORD STN_CLICKED = 0;
constexpr WORD STN_DBLCLK = 1;
constexpr UINT ODT_BUTTON = 4;
constexpr UINT ODA_DRAWENTIRE = 1;
constexpr UINT ODA_SELECT = 2;
constexpr UINT ODA_FOCUS = 4;
constexpr UINT ODS_SELECTED = 0x0001;
constexpr UINT ODS_DISABLED = 0x0004;
constexpr UINT ODS_FOCUS = 0x0010;

// ---- keys ----
// Of the high word of a key message's second parameter: the key was down before; it goes up.
constexpr WORD KF_REPEAT = 0x4000;
constexpr WORD KF_UP = 0x8000;
constexpr WPARAM VK_TAB = 0x09;
constexpr WPARAM VK_RETURN = 0x0D;
constexpr WPARAM VK_SHIFT = 0x10;
constexpr WPARAM VK_ESCAPE = 0x1B;
constexpr WPARAM VK_SPACE = 0x20;
constexpr WPARAM VK_PRIOR = 0x21;
constexpr WPARAM VK_NEXT = 0x22;
constexpr WPARAM VK_LEFT = 0x25;
constexpr WPARAM VK_UP = 0x26;
constexpr WPARAM VK_RIGHT = 0x27;
constexpr WPARAM VK_DOWN = 0x28;
constexpr WPARAM VK_F24 = 0x87;
constexpr WPARAM VK_MEDIA_NEXT_TRACK = 0xB0;
constexpr WPARAM VK_MEDIA_PREV_TRACK = 0xB1;
constexpr WPARAM VK_MEDIA_STOP = 0xB2;
constexpr WPARAM VK_MEDIA_PLAY_PAUSE = 0xB3;
constexpr WPARAM VK_OEM_COMMA = 0xBC;
constexpr WPARAM VK_OEM_PERIOD = 0xBE;
