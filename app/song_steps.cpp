#include "app/song_steps.h"

#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/player_state.h"

namespace {

// Keeps the commands that a change of songs sends from starting another one.
class StepGuard {
public:
    StepGuard() : m_entered(!IsStepping())
    {
        if (m_entered)
            g_stepBusy = 1;
    }
    ~StepGuard()
    {
        if (m_entered)
            g_stepBusy = 0;
    }
    StepGuard(const StepGuard&) = delete;
    StepGuard& operator=(const StepGuard&) = delete;
    [[nodiscard]] bool MayStep() const { return m_entered && IsSongLoaded(); }

private:
    bool m_entered;
};

void ChangeSongs(HWND window)
{
    const bool wasPlaying = IsPlaying();
    SendMessageW(window, WM_COMMAND, MAKEWPARAM(kCommandStop, kStopQuietly), 0);
    SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
    if (!wasPlaying)
        SendMessageW(window, WM_COMMAND, kCommandPlay, 0);
}

} // namespace

void StepToNext(HWND window)
{
    const StepGuard guard;
    if (!guard.MayStep())
        return;
    if (g_currentNumber >= PlayList.GetCount()) {
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
        return;
    }
    MakeCurrent(g_currentNumber + 1);
    ChangeSongs(window);
}

void StepToPrevious(HWND window)
{
    const StepGuard guard;
    if (!guard.MayStep() || g_currentNumber <= 1)
        return;
    MakeCurrent(g_currentNumber - 1);
    ChangeSongs(window);
}
