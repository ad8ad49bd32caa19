#include "app/giving_way.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/command_ids.h"
#include "app/interruption.h"
#include "app/lyrics_display.h"
#include "app/player_state.h"
#include "playback/media_player.h"

namespace {

constexpr DWORD kGivesWayFrom = 2; // priority that pauses without the foreground; state in which another one sounds
constexpr DWORD kGoesOnUpTo = 1;

void PauseByInterruption(HWND window)
{
    SendMessageW(window, WM_COMMAND, kCommandPause, 0);
    BeginInterruption(Player().GetPosition());
}

// Play takes the song up where the interruption came.
void GoOnAfterInterruption(HWND window)
{
    SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
    EndInterruption();
}

DWORD FreshPriority()
{
    DWORD priority = g_audioPriority;
    ReadAudioPriority(priority);
    return priority;
}

DWORD ProcessOf(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process;
}

bool IsOwnWindow(HWND window, HWND other)
{
    return other != nullptr && ProcessOf(other) == ProcessOf(window);
}

// Of a window on another thread that comes to the front the system may tell nothing.
bool GoesToOwnWindow(HWND window, HWND other)
{
    return IsOwnWindow(window, other != nullptr ? other : GetForegroundWindow());
}

void LoseForeground(HWND window)
{
    if (IsPlaying() && FreshPriority() >= kGivesWayFrom)
        PauseByInterruption(window);
    PauseLyrics(window);
}

void RegainForeground(HWND window)
{
    if (!IsPlaying() && IsInterrupted() && FreshPriority() <= kGoesOnUpTo)
        GoOnAfterInterruption(window);
    if (IsPlaying())
        ShowLyrics(window);
}

} // namespace

void TakeActivation(HWND window, WPARAM wParam, LPARAM other)
{
    const auto otherWindow = reinterpret_cast<HWND>(other);
    if (LOWORD(wParam) == WA_ACTIVE && !IsOwnWindow(window, otherWindow))
        RegainForeground(window);
    else if (LOWORD(wParam) == WA_INACTIVE && !GoesToOwnWindow(window, otherWindow))
        LoseForeground(window);
}

void TakeAudioManagerState(HWND window, WPARAM wParam)
{
    if (IsOwnNotice(wParam))
        return;
    const DWORD state = HIWORD(wParam);
    if (state >= kGivesWayFrom && IsPlaying())
        PauseByInterruption(window);
    else if (state <= kGoesOnUpTo && !IsPlaying() && IsInterrupted())
        GoOnAfterInterruption(window);
}
