#include "gui/alert_message_window_messages.h"

#include "common/rect.h"
#include "common/trace_log.h"
#include "gui/alert_kinds.h"
#include "gui/caption_text.h"
#include "platform/screen_size.h"

#include <utility>

namespace {

constexpr DWORD kAlertTrace = 9;
constexpr UINT_PTR kCloseTimer = 100;
constexpr int kFontPoints = 14;
constexpr DWORD kAnimationFlags = 0xFFFFFFFF; // the image library's own
constexpr int kForEver = -1;

void LogSent(UINT message, WPARAM wParam, LPARAM lParam)
{
    TraceLog(kAlertTrace, TEXT("Alert Win Sent Message = %d, wParam = %d, lParam = %d"), message,
             static_cast<int>(wParam), static_cast<int>(lParam));
}

void LogDrawItem(WPARAM wParam, LPARAM lParam)
{
    TraceLog(kAlertTrace, TEXT("Alert Win Receive Message = WM_DRAWITEM, wParam = %d, lParam = %d"),
             static_cast<int>(wParam), static_cast<int>(lParam));
}

} // namespace

constexpr AlertWindow::MessageEntry AlertWindow::kMessages[] = {
    { WM_CREATE, &AlertWindow::OnCreate },   { WM_SIZE, &AlertWindow::OnSize },
    { WM_PAINT, &AlertWindow::OnPaint },     { WM_DRAWITEM, &AlertWindow::OnDrawItem },
    { WM_COMMAND, &AlertWindow::OnCommand }, { WM_TIMER, &AlertWindow::OnTimer },
    { WM_CLOSE, &AlertWindow::OnClose },     { WM_DESTROY, &AlertWindow::OnDestroy },
};

LRESULT CALLBACK AlertWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_NCCREATE: {
        auto* const created = static_cast<AlertWindow*>(reinterpret_cast<CREATESTRUCTW*>(lParam)->lpCreateParams);
        created->m_window = window;
        SetWindowLongPtrW(window, 0, reinterpret_cast<LONG_PTR>(created));
        break;
    }
    case WM_ERASEBKGND: // painting covers all
    case WM_KEYDOWN:    // only its buttons answer an alert
    case WM_SYSKEYDOWN: return 1;
    case WM_CTLCOLORSTATIC: return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    default: break;
    }
    auto* const alert = reinterpret_cast<AlertWindow*>(GetWindowLongPtrW(window, 0));
    for (const MessageEntry& entry : kMessages) {
        if (entry.message == message && alert != nullptr)
            return (alert->*entry.handler)(wParam, lParam);
    }
    LogSent(message, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

AlertWindow::AlertWindow(AlertRequest request, std::shared_ptr<AlertLife> life)
    : m_request(std::move(request)), m_life(std::move(life)), m_look(AlertLookOf(m_request.kind)),
      m_soundIsPending(m_look.sounds)
{
    m_text.title = std::move(m_request.title);
    m_text.message = std::move(m_request.message);
}

// ---- birth ----

bool AlertWindow::Show(HWND window)
{
    if (window == nullptr) {
        TearDown();
        BecomeFree();
        return false;
    }
    ShowWindow(window, SW_SHOW);
    UpdateWindow(window);
    if (m_isEnding)
        return false;
    m_life->window = window;
    m_life->state = AlertState::Shown;
    return true;
}

LRESULT AlertWindow::OnCreate(WPARAM, LPARAM)
{
    const HDC context = GetDC(m_window);
    m_text.font = CreateCaptionFont(context, kFontPoints);
    ReleaseDC(m_window, context);
    m_buttons.Create(m_window, m_request.strings.Get(), m_look);
    if (m_look.closesAfterMs != 0)
        SetTimer(m_window, kCloseTimer, m_look.closesAfterMs, nullptr);
    if (m_look.animation != nullptr)
        SetWindowPos(m_window, HWND_TOPMOST, m_look.place.left, m_look.place.top, WidthOf(m_look.place),
                     HeightOf(m_look.place), 0);
    return 0;
}

LRESULT AlertWindow::OnSize(WPARAM, LPARAM)
{
    if (m_look.animation != nullptr)
        return 0;
    const HDC context = GetDC(m_window);
    WrapAlertMessage(context, m_text, WidthOf(m_look.place));
    ReleaseDC(m_window, context);
    return 0;
}

// ---- showing ----

LRESULT AlertWindow::OnPaint(WPARAM, LPARAM)
{
    PAINTSTRUCT paint;
    const HDC screen = BeginPaint(m_window, &paint);
    if (m_look.animation == nullptr)
        PaintPicture(screen);
    else
        DrawAlertTitle(screen, m_text, WidthOf(m_look.place));
    EndPaint(m_window, &paint);
    if (m_look.animation != nullptr && m_animatedScreen == nullptr)
        PlayAnimation();
    SetFocus(m_window);
    return 0;
}

void AlertWindow::PaintPicture(HDC screen)
{
    if (!m_picture) {
        m_picture = DrawAlertPicture(screen, m_look.background, m_text);
        m_buttonGround = m_picture.Get();
        m_buttons.SetBackgroundSource(&m_buttonGround);
    }
    CopyAlertPicture(screen, m_picture.Get());
}

void AlertWindow::PlayAnimation()
{
    RECT place{};
    GetWindowRect(m_window, &place);
    m_animatedScreen = GetDC(nullptr);
    PlayGifAnim(m_look.animation, m_animatedScreen, &place, nullptr, kAnimationFlags, kForEver, kSkinKeyColor);
}

LRESULT AlertWindow::OnDrawItem(WPARAM wParam, LPARAM lParam)
{
    LogDrawItem(wParam, lParam);
    const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    m_buttons.DrawItem(request);
    PlaySoundOnce(request.CtlID);
    return TRUE;
}

void AlertWindow::PlaySoundOnce(UINT drawnId)
{
    if (drawnId != kAlertOkId || !std::exchange(m_soundIsPending, false))
        return;
    if (const LPCWSTR sound = AlertSoundPath(m_request.sound))
        PlaySoundW(sound, nullptr, SND_ASYNC | SND_FILENAME);
}

// ---- answers ----

LRESULT AlertWindow::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const UINT id = LOWORD(wParam);
    if (id >= kFirstAlertAnswer && id <= kLastAlertAnswer) {
        Answer(id);
        return 0;
    }
    LogSent(WM_COMMAND, wParam, lParam);
    return SendMessageW(m_request.owner, WM_COMMAND, wParam, lParam);
}

LRESULT AlertWindow::OnTimer(WPARAM wParam, LPARAM lParam)
{
    if (wParam != kCloseTimer) {
        LogSent(WM_TIMER, wParam, lParam);
        return DefWindowProcW(m_window, WM_TIMER, wParam, lParam);
    }
    Answer(kAlertOkId);
    return 0;
}

// The owner hears of it when the window is gone, so that it may show the next alert.
void AlertWindow::Answer(UINT id)
{
    const HWND window = m_window;
    if (m_isEnding)
        return;
    PlaySoundW(nullptr, nullptr, 0);
    End();
    SendMessageW(m_request.owner, WM_COMMAND, id, reinterpret_cast<LPARAM>(window));
    LogSent(WM_COMMAND, id, reinterpret_cast<LPARAM>(window));
}

// ---- end ----

LRESULT AlertWindow::OnClose(WPARAM wParam, LPARAM lParam)
{
    LogSent(WM_CLOSE, wParam, lParam);
    return End() ? kAlertHasClosed : 0;
}

// False when it was begun before: other threads are heard in the midst of it.
bool AlertWindow::End()
{
    if (m_isEnding)
        return false;
    TearDown();
    DestroyWindow(m_window);
    BecomeFree();
    return true;
}

LRESULT AlertWindow::OnDestroy(WPARAM, LPARAM)
{
    if (!m_isEnding)
        TearDown();
    PostQuitMessage(0);
    return 0;
}

void AlertWindow::TearDown()
{
    m_isEnding = true;
    m_life->state = AlertState::Closing;
    if (m_window != nullptr && m_look.closesAfterMs != 0)
        KillTimer(m_window, kCloseTimer);
    if (m_animatedScreen != nullptr) {
        StopGifAnim();
        ReleaseDC(nullptr, m_animatedScreen);
    }
    if (m_request.disabled != nullptr)
        EnableWindow(m_request.disabled, TRUE); // while the window is still there: the other becomes active after it
    m_buttons.Free();
    m_picture.Reset();
    m_text = {};
    m_request.strings.Reset();
}

// From here on the alert may be shown again, by any thread.
void AlertWindow::BecomeFree()
{
    if (std::exchange(m_isFree, true))
        return;
    m_life->window = nullptr;
    m_life->state = AlertState::Free;
}
