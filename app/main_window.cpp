#include "app/main_window.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/card_removal.h"
#include "app/card_scan.h"
#include "app/command_ids.h"
#include "app/foreground.h"
#include "app/giving_way.h"
#include "app/library_window.h"
#include "app/lyrics_display.h"
#include "app/main_paint.h"
#include "app/play_list_edits.h"
#include "app/play_list_window.h"
#include "app/player_commands.h"
#include "app/player_controls.h"
#include "app/player_end.h"
#include "app/player_keys.h"
#include "app/player_state.h"
#include "app/progress.h"
#include "app/registered_messages.h"
#include "app/song_end.h"
#include "app/status_answer.h"
#include "app/task_bar.h"
#include "app/title_ticker.h"
#include "app/transport.h"
#include "library/saved_play_list.h"
#include "lyrics/lyrics_strip.h"
#include "platform/screen_size.h"
#include "playback/media_player.h"

namespace {

void RepaintNow(HWND window)
{
    constexpr RECT screen{ 0, 0, kScreenWidthPx, kScreenHeightPx };
    InvalidateRect(window, &screen, FALSE);
    UpdateWindow(window);
}

// ---- notices of the list windows ----

struct NoticeEntry {
    UINT controlId;
    void (*rowTapped)(std::int32_t index);
};

constexpr NoticeEntry kNotices[] = {
    { kPlayListWindowId, MarkSongOfRow },
    { kLibraryWindowId, TurnCheckOfRow },
};

// ---- timers ----

enum class AfterTick { RepaintWindow, Nothing };

struct TimerEntry {
    UINT_PTR id;
    void (*tick)();
    AfterTick after;
};

void ScrollTitle()
{
    if (IsSongLoaded())
        ScrollTitleStrips(IsPlaying() ? TitleMotion::Moving : TitleMotion::Standing);
}

constexpr TimerEntry kTimers[] = {
    { kProgressTimerId, RefreshProgress, AfterTick::RepaintWindow },
    { kLyricsTimer, RefreshLyrics, AfterTick::Nothing },
    { kTitleTimer, ScrollTitle, AfterTick::RepaintWindow },
};

// ---- messages ----

LRESULT OnCreate(HWND window, WPARAM, LPARAM)
{
    RegisterWindowMessages();
    ForgetOwnNotices();
    SetWindowLongPtrW(window, GWL_EXSTYLE, GetWindowLongPtrW(window, GWL_EXSTYLE) | WS_EX_NOANIMATION);
    MoveWindow(window, 0, 0, kScreenWidthPx, kScreenHeightPx, TRUE);
    HideTaskBar();
    CreateControls(window);
    LoadBackground();
    DisableFirstSongControls(window);
    ReadAudioPriority(g_audioPriority);
    g_savedPlayList.Load(PlayList);
    StartLyrics();
    return 0;
}

LRESULT OnDestroy(HWND window, WPARAM, LPARAM)
{
    EndPlayer(window);
    return 0;
}

LRESULT OnActivate(HWND window, WPARAM wParam, LPARAM lParam)
{
    TakeActivation(window, wParam, lParam);
    return DefWindowProcW(window, WM_ACTIVATE, wParam, lParam); // gives the focus
}

LRESULT OnCommand(HWND window, WPARAM request, LPARAM control)
{
    ActOnCommand(window, request, control);
    return 0;
}

LRESULT OnNotify(HWND, WPARAM controlId, LPARAM index)
{
    for (const auto& notice : kNotices)
        if (notice.controlId == controlId)
            notice.rowTapped(static_cast<std::int32_t>(index));
    return 0;
}

LRESULT OnKeyDown(HWND window, WPARAM key, LPARAM details)
{
    ActOnKey(window, key, details);
    return 0;
}

// The dialog manager asks before it takes a key for itself; the window acts on the key there and then.
LRESULT OnGetDialogCode(HWND window, WPARAM, LPARAM lParam)
{
    const auto* const message = reinterpret_cast<const MSG*>(lParam);
    if (message != nullptr && message->message == WM_KEYDOWN && ActsWhenAsked(message->wParam))
        SendMessageW(window, WM_KEYDOWN, message->wParam, message->lParam);
    return 0;
}

LRESULT OnTimer(HWND window, WPARAM id, LPARAM)
{
    for (const auto& timer : kTimers) {
        if (timer.id != id)
            continue;
        timer.tick();
        if (timer.after == AfterTick::RepaintWindow)
            RepaintNow(window);
    }
    return 0;
}

LRESULT OnDrawItem(HWND, WPARAM, LPARAM lParam)
{
    const auto& request = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
    if (!g_controls.softKeys.DrawItem(request))
        g_controls.buttons.DrawItem(request);
    return TRUE;
}

using MessageHandler = LRESULT (*)(HWND window, WPARAM wParam, LPARAM lParam);

struct MessageEntry {
    UINT message;
    MessageHandler handler;
};

constexpr MessageEntry kMessages[] = {
    { WM_CREATE, OnCreate },
    { WM_DESTROY, OnDestroy },
    { WM_ACTIVATE, OnActivate },
    { WM_PAINT,
      [](HWND window, WPARAM, LPARAM) -> LRESULT {
          PaintMainWindow(window);
          return 0;
      } },
    { WM_ERASEBKGND,
      [](HWND, WPARAM wParam, LPARAM) -> LRESULT {
          EraseMainWindow(reinterpret_cast<HDC>(wParam));
          return 1;
      } },
    { WM_COMMAND, OnCommand },
    { WM_NOTIFY, OnNotify },
    { WM_KEYDOWN, OnKeyDown },
    { WM_GETDLGCODE, OnGetDialogCode },
    { WM_TIMER, OnTimer },
    { WM_DRAWITEM, OnDrawItem },
    { WM_DEVICECHANGE, TakeDeviceChange },
    { kGraphEventMessage,
      [](HWND window, WPARAM, LPARAM) -> LRESULT {
          TakeGraphEvents(window);
          return 0;
      } },
    { kSliderMovedMessage,
      [](HWND, WPARAM wParam, LPARAM lParam) -> LRESULT {
          SeekToSlider(wParam, lParam);
          return 0;
      } },
};

struct RegisteredMessageEntry {
    const UINT& message; // only a running system knows its number
    MessageHandler handler;
};

constexpr RegisteredMessageEntry kRegisteredMessages[] = {
    { g_msgAreYouMe,
      [](HWND window, WPARAM, LPARAM) -> LRESULT {
          ComeToFront(window);
          return 0;
      } },
    { g_msgAudioManager,
      [](HWND window, WPARAM wParam, LPARAM) -> LRESULT {
          TakeAudioManagerState(window, wParam);
          return 0;
      } },
    { g_msgUserAddSongs,
      [](HWND, WPARAM, LPARAM) -> LRESULT {
          AddCheckedSongs();
          return 0;
      } },
    { g_msgLyricsSettingChange,
      [](HWND, WPARAM, LPARAM) -> LRESULT {
          TakeLyricsSettings(); // a broadcast reaches no child
          return 0;
      } },
    { g_msgMassStorage, [](HWND window, WPARAM, LPARAM) { return SendMessageW(window, WM_COMMAND, kCommandExit, 0); } },
    { g_msgStatusRequest,
      [](HWND, WPARAM request, LPARAM) -> LRESULT {
          AnswerStatusRequest(request);
          return 0;
      } },
};

LRESULT CALLBACK MainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (WaitsForScan(window, message, wParam, lParam))
        return 0;
    for (const auto& entry : kMessages)
        if (entry.message == message)
            return entry.handler(window, wParam, lParam);
    for (const auto& entry : kRegisteredMessages)
        if (entry.message == message && message != 0)
            return entry.handler(window, wParam, lParam);
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

bool RegisterMainWindowClass(HINSTANCE instance)
{
    WNDCLASSW windowClass{};
    windowClass.style = CS_HREDRAW | CS_VREDRAW;
    windowClass.lpfnWndProc = MainWindowProcedure;
    windowClass.cbWndExtra = DLGWINDOWEXTRA;
    windowClass.hInstance = instance;
    windowClass.hIcon = LoadIconW(instance, kMainWindowClass);
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    windowClass.lpszClassName = kMainWindowClass;
    return RegisterClassW(&windowClass) != 0;
}
