#include "platform/windows/screen/window_procedures.h"

#include "platform/windows/screen/device_screen.h"
#include "platform/windows/screen/screenshot.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <utility>
#include <vector>
#include <windowsx.h>

namespace cardsong::screen {
namespace {

constexpr wchar_t kProcedureProperty[] = L"CardsongProcedure";
constexpr LPARAM kFirstStroke = 1;
constexpr LPARAM kNoStroke = 0; // of a hand
constexpr LPARAM kRelease = LPARAM{ 1 } << 30 | LPARAM{ 1 } << 31;

thread_local bool t_screenWindowComes = false;
std::atomic<bool> g_exitWanted = false; // before there was a window to tell

std::mutex g_mutex;

std::vector<std::pair<ATOM, WNDPROC>>& Procedures()
{
    static std::vector<std::pair<ATOM, WNDPROC>> s_procedures;
    return s_procedures;
}

WNDPROC ProcedureOfClass(HWND window)
{
    const auto atom = static_cast<ATOM>(GetClassLongPtrW(window, GCW_ATOM));
    const std::lock_guard lock(g_mutex);
    for (const auto& [known, procedure] : Procedures()) {
        if (known == atom)
            return procedure;
    }
    return DefWindowProcW;
}

WNDPROC ProcedureOf(HWND window)
{
    const auto own = reinterpret_cast<WNDPROC>(GetPropW(window, kProcedureProperty));
    return own != nullptr ? own : ProcedureOfClass(window);
}

LPARAM ReducePoint(LPARAM packed)
{
    const LONG x = GET_X_LPARAM(packed);
    const LONG y = GET_Y_LPARAM(packed);
    const RECT reduced = Reduce({ x, y, x, y });
    return MAKELPARAM(reduced.left, reduced.top);
}

LRESULT DrawItem(WNDPROC procedure, HWND window, WPARAM wParam, LPARAM lParam)
{
    DRAWITEMSTRUCT request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    const int saved = SaveDC(request.hDC);
    UseDevicePixels(request.hDC);
    request.rcItem = Reduce(request.rcItem);
    const LRESULT result = CallWindowProcW(procedure, window, WM_DRAWITEM, wParam, reinterpret_cast<LPARAM>(&request));
    RestoreDC(request.hDC, saved);
    return result;
}

LRESULT Erase(WNDPROC procedure, HWND window, WPARAM wParam, LPARAM lParam)
{
    const auto context = reinterpret_cast<HDC>(wParam);
    const int saved = SaveDC(context);
    UseDevicePixels(context);
    const LRESULT result = CallWindowProcW(procedure, window, WM_ERASEBKGND, wParam, lParam);
    RestoreDC(context, saved);
    return result;
}

void PostKey(HWND window, UINT key, LPARAM stroke)
{
    PostMessageW(window, WM_KEYDOWN, key, stroke);
    PostMessageW(window, WM_KEYUP, key, stroke | kRelease);
}

// What lies above the screen's window and belongs to it, such as a list, would take the exit key for itself.
BOOL CALLBACK CloseIfOwned(HWND window, LPARAM screenWindow)
{
    for (HWND owner = GetWindow(window, GW_OWNER); owner != nullptr; owner = GetWindow(owner, GW_OWNER))
        if (owner == reinterpret_cast<HWND>(screenWindow) && IsWindowVisible(window) != FALSE)
            PostMessageW(window, WM_CLOSE, 0, 0);
    return TRUE;
}

BOOL CALLBACK MoveAlong(HWND window, LPARAM way)
{
    if (window == ScreenWindow() ||
        GetWindowLongPtrW(window, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(PlayersProcedure))
        return TRUE;
    const SIZE& by = *reinterpret_cast<const SIZE*>(way);
    RECT place{};
    GetWindowRect(window, &place);
    SetWindowPos(window, nullptr, place.left + by.cx, place.top + by.cy, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
    return TRUE;
}

// Moves the player's other windows along with the screen.
void TakeWindowsAlong()
{
    SIZE way = TakeWay();
    if (way.cx != 0 || way.cy != 0)
        EnumWindows(MoveAlong, reinterpret_cast<LPARAM>(&way));
}

// Answers the messages that a desktop sends to the screen's window and a device never does. False: the player answers.
bool AnswerDesktop(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)
{
    switch (message) {
    case WM_WINDOWPOSCHANGING: // the last message while the picture is still there
        if ((reinterpret_cast<const WINDOWPOS*>(lParam)->flags & SWP_HIDEWINDOW) != 0)
            KeepLastPicture();
        return false;
    case WM_CLOSE: PressExitKey(); return true;
    case WM_QUERYENDSESSION: result = TRUE; return true;
    case WM_ENDSESSION:
        if (wParam != FALSE) // the process ends with the answer: the player has to save now
            SendMessageW(ScreenWindow(), WM_KEYDOWN, VK_F24, kNoStroke);
        return true;
    case WM_DPICHANGED: {
        const RECT& wished = *reinterpret_cast<const RECT*>(lParam);
        TakeDpi(HIWORD(wParam), { wished.left, wished.top });
        return true;
    }
    case WM_MOVE: TakeWindowsAlong(); return false;
    case WM_NCDESTROY: ForgetScreenWindow(); return false;
    default: return false;
    }
}

bool IsMouse(UINT message)
{
    return message >= WM_MOUSEFIRST && message <= WM_MOUSELAST && message != WM_MOUSEWHEEL && message != WM_MOUSEHWHEEL;
}

} // namespace

LRESULT CALLBACK PlayersProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE && (GetWindowLongPtrW(window, GWL_STYLE) & WS_CHILD) == 0)
        HideLikeScreen(window);
    if (message == WM_NCCREATE && std::exchange(t_screenWindowComes, false)) {
        AdoptScreenWindow(window);
        const LRESULT goesOn = CallWindowProcW(ProcedureOf(window), window, message, wParam, lParam);
        SetWindowTextW(window, L"Cardsong"); // this message gave it the player's own name, which a device never shows
        return goesOn;
    }
    LRESULT answer = 0;
    if (window == ScreenWindow() && AnswerDesktop(message, wParam, lParam, answer))
        return answer;
    const WNDPROC procedure = ProcedureOf(window);
    if (message == WM_NCDESTROY)
        RemovePropW(window, kProcedureProperty);
    if (message == WM_DRAWITEM)
        return DrawItem(procedure, window, wParam, lParam);
    if (message == WM_ERASEBKGND)
        return Erase(procedure, window, wParam, lParam);
    if (IsMouse(message) || message == WM_SIZE)
        lParam = ReducePoint(lParam);
    return CallWindowProcW(procedure, window, message, wParam, lParam);
}

// Another thread may make a window of the class as soon as the system knows it: that window waits for its procedure.
ATOM RegisterPlayersClass(const WNDCLASSW& windowClass)
{
    const std::lock_guard lock(g_mutex);
    WNDCLASSW description = windowClass;
    description.lpfnWndProc = PlayersProcedure;
    const ATOM atom = RegisterClassW(&description);
    if (atom == 0)
        return 0;
    auto& known = Procedures();
    std::erase_if(known, [atom](const auto& entry) { return entry.first == atom; });
    known.emplace_back(atom, windowClass.lpfnWndProc);
    return atom;
}

LONG_PTR ReplaceProcedure(HWND window, WNDPROC procedure)
{
    const auto playersBefore = reinterpret_cast<LONG_PTR>(ProcedureOf(window));
    SetPropW(window, kProcedureProperty, reinterpret_cast<HANDLE>(procedure));
    const auto ours = reinterpret_cast<LONG_PTR>(&PlayersProcedure);
    const LONG_PTR before = SetWindowLongPtrW(window, GWLP_WNDPROC, ours);
    return before == ours ? playersBefore : before;
}

ScreenWindowComes::ScreenWindowComes(bool comes)
{
    t_screenWindowComes = comes;
}

ScreenWindowComes::~ScreenWindowComes()
{
    t_screenWindowComes = false;
    if (ScreenWindow() != nullptr && g_exitWanted.exchange(false))
        PressExitKey();
}

bool PressKey(UINT key)
{
    const HWND window = ScreenWindow();
    if (window == nullptr)
        return false;
    GUITHREADINFO state{};
    state.cbSize = sizeof state;
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &state);
    PostKey(state.hwndFocus != nullptr ? state.hwndFocus : window, key, kFirstStroke);
    return true;
}

void PressExitKey()
{
    const HWND window = ScreenWindow();
    g_exitWanted = window == nullptr;
    if (window == nullptr)
        return;
    EnumWindows(CloseIfOwned, reinterpret_cast<LPARAM>(window));
    PostKey(window, VK_F24, kNoStroke);
}

} // namespace cardsong::screen
