#include "app/transport.h"

#include "app/audio_manager.h"
#include "app/audio_priority.h"
#include "app/command_ids.h"
#include "app/current_song.h"
#include "app/interruption.h"
#include "app/lyrics_display.h"
#include "app/main_paint.h"
#include "app/play_list_filling.h"
#include "app/play_list_window.h"
#include "app/player_controls.h"
#include "app/player_state.h"
#include "app/title_ticker.h"
#include "app/unplayable_songs.h"
#include "controls/seek_slider.h"
#include "library/play_time_text.h"
#include "library/song_list_rows.h"
#include "library/song_title.h"
#include "library/text_measuring.h"
#include "playback/media_player.h"

namespace {

constexpr double kStepSeconds = 5.0;

void PauseSong(HWND window)
{
    ShowPlayFace();
    g_isPlaying = 0;
    Player().Pause();
    PauseLyrics(window);
}

void EnterPlaying(HWND window)
{
    g_isPlaying = 1;
    ShowPauseFace();
    EnableSongControls(window);
}

MediaFileEntry& ChooseEntry()
{
    MediaFileEntry* const marked = FindMarkedEntry();
    if (marked == nullptr) {
        MakeCurrent(1);
        ChangeStepButtons(WhenNoSongIsMarked(g_playModes));
        return *EntryAt(1);
    }
    g_currentNumber = marked->playMark;
    ChangeStepButtons(WhenMarkedSongPlays({ g_currentNumber, PlayList.GetCount() }, g_playModes));
    return *marked;
}

void BuildTitle(const WString& path)
{
    if (!g_titleText.empty())
        return;
    GetSongDisplayTitle(path.c_str(), g_titleText, static_cast<std::uint32_t>(g_currentNumber));
    g_titleWidthPx = MeasureText(g_titleText.c_str(), TitleFont()).cx;
}

// In the lists another row may have been marked meanwhile, or none is.
void ReturnMarkToPausedSong()
{
    if (EntryAt(g_currentNumber) != nullptr)
        MakeCurrent(g_currentNumber);
}

void GoToWhereInterruptionCame(HWND window)
{
    if (!IsInterrupted())
        return;
    SendMessageW(window, kSliderMovedMessage, 0, 0);
    EndInterruption();
}

enum class SongStart { Anew, WhereItWas };

// A song that was only paused goes on where it was.
SongStart StartOf(const WString& path)
{
    return Player().GetState() == PLAYER_PAUSED && Player().HasOpen(path) ? SongStart::WhereItWas : SongStart::Anew;
}

// Seconds that the song lasts, or a negative code.
double OpenOrResume(HWND window, const WString& path, SongStart start)
{
    MediaPlayer& player = Player();
    const int result = start == SongStart::WhereItWas ? player.Play() : player.OpenAndPlay(path.c_str(), window);
    return result == 0 ? player.GetDuration() : result;
}

void ShowSong(HWND window, MediaFileEntry& entry, double durationSeconds)
{
    g_totalText = FormatPlayTime(static_cast<unsigned>(durationSeconds));
    if (entry.duration == 0.0 && Player().KnowsDuration()) {
        entry.duration = durationSeconds;
        BuildSongListRows(PlayList, false);
    }
    StartTitleStrips();
    InvalidateRect(window, &kDisplayRect, FALSE);
}

// False when the song cannot be played.
bool PlayCurrent(HWND window)
{
    EnterPlaying(window);
    MediaFileEntry& entry = ChooseEntry();
    if (g_playModes.IsShuffleOn())
        entry.playedInShuffle = 1;
    const WString path = PathOf(entry);
    GoToWhereInterruptionCame(window);
    BuildTitle(path);
    const SongStart start = StartOf(path);
    const double durationSeconds = OpenOrResume(window, path, start);
    if (!IsTitleTimerRunning())
        g_titleTimer = SetTimer(window, kTitleTimer, kTitleTimerPeriodMs, nullptr);
    if (!(durationSeconds > 0))
        return false;
    ShowSong(window, entry, durationSeconds);
    if (start == SongStart::Anew)
        FindLyrics(window, path);
    else
        ShowLyrics(window);
    return true;
}

// A card may hold thousands of files that no decoder takes: one after the other, never one inside the other.
void PlayNextPlayable(HWND window)
{
    CardOfList card(PlayList);
    while (!PlayList.IsEmpty()) {
        g_songLoaded = 1;
        if (PlayCurrent(window))
            return;
        const AfterUnplayable then = TakeUnplayableSongOut(card);
        SendMessageW(window, WM_COMMAND, kCommandStop, 0);
        if (then == AfterUnplayable::Stop)
            return;
    }
    g_songLoaded = 0;
}

} // namespace

void PlayOrPause(HWND window)
{
    if (IsPlaying()) {
        PauseSong(window);
        return;
    }
    if (IsSongLoaded())
        ReturnMarkToPausedSong();
    g_songLoaded = 1;
    TakeBackSavedSongs();
    FillFromCard();
    PlayNextPlayable(window);
    RefreshOpenPlayListWindow(); // another song may be marked, and songs may have left
}

void StopSong(HWND window, WPARAM request)
{
    KeepAudioPriority();
    TellAudioManager(request);
    EndInterruption(); // whoever was waited for, the song does not come back
    if (IsPlaying())
        ShowPlayFace();
    StopLyrics(window); // before the title comes back, which the strip covers
    ResetTitleStrips();
    g_elapsedText = TEXT("0:00");
    if (HIWORD(request) != kStopQuietly) {
        InvalidateRect(window, nullptr, FALSE);
        UpdateWindow(window);
    }
    g_currentNumber = 0;
    g_songLoaded = 0;
    g_isPlaying = 0;
    KillTimer(window, g_titleTimer);
    g_titleTimer = 0;
    g_titleText.clear();
    Player().Stop();
    if (g_controls.slider)
        g_controls.slider->SetPos(0);
    DisableSongControls(window);
}

void SeekToSlider(WPARAM sliderId, LPARAM sliderPosition)
{
    if (IsInterrupted())
        Player().Seek(ShownPosition());
    else if (sliderId == kSeekSliderId)
        Player().Seek(Player().GetDuration() * static_cast<double>(sliderPosition) / kSeekSliderMaximum);
}

void StepBack5Seconds()
{
    const double before = Player().GetPosition();
    Player().Seek(before - kStepSeconds);
    // The forward key, not the back key: kept so on purpose.
    if (before <= 0)
        g_controls.buttons.Enable(kCommandForward5, false);
}

void StepForward5Seconds()
{
    const double before = Player().GetPosition();
    Player().Seek(before + kStepSeconds);
    if (before == Player().GetDuration())
        g_controls.buttons.Enable(kCommandForward5, false);
}
