#include "app/player_controls.h"

#include "app/command_ids.h"
#include "common/string_table.h"

PlayerControls g_controls;

namespace {

constexpr RECT kSliderPlace{ 17, 139, 286, 15 }; // left, top, width, height
constexpr DWORD kSliderStyle = WS_CHILD | WS_VISIBLE | SS_SIMPLE;
constexpr COLORREF kLabelColor = RGB(0xFF, 0xFF, 0xFF);
constexpr int kLabelPoints = 14;

constexpr WORD kTransport[] = { kCommandPrevious,  kCommandBack5,       kCommandStop,      kCommandForward5,
                                kCommandNext,      kCommandShuffleOff,  kCommandShuffleOn, kCommandRepeatOff,
                                kCommandRepeatAll, kCommandRepeatSingle };
// The faces that show first; the others stay hidden behind them.
constexpr WORD kFirstFaces[] = { kCommandPrevious, kCommandBack5,      kCommandStop,     kCommandForward5,
                                 kCommandNext,     kCommandShuffleOff, kCommandRepeatOff };

// The slider takes over the first child of its owner, so this one comes before every other control.
void CreateSlider(HWND window)
{
    const HWND place = CreateWindowExW(0, TEXT("static"), TEXT(""), kSliderStyle, kSliderPlace.left, kSliderPlace.top,
                                       kSliderPlace.right, kSliderPlace.bottom, window, nullptr, g_hInstance, nullptr);
    EnableWindow(place, FALSE);
    g_controls.slider =
        std::make_unique<SeekSlider>(window, kSeekSliderId, TEXT("\\Windows\\gui_musicplayer_progress_but_full.gif"),
                                     TEXT("\\Windows\\gui_musicplayer_progress_but_normal.gif"));
    g_controls.slider->SetRange(0, kSeekSliderMaximum);
}

void CreateSoftKeys(HWND window)
{
    constexpr int ids[] = { kCommandExit, kCommandPlayListWindow, kCommandAudioSettings };
    const ButtonCaption captions[] = {
        { nullptr, kStringExit, kLabelPoints, kLabelColor },
        { nullptr, kStringPlayList, kLabelPoints, kLabelColor },
        { TEXT(""), 0, kLabelPoints, kLabelColor },
    };
    g_controls.softKeys.Create(window, g_hStringModule, static_cast<int>(std::size(ids)), ids, captions);
}

void EnableSlider(HWND window, BOOL enable)
{
    EnableWindow(GetWindow(window, GW_CHILD), enable);
}

void ShowFace(WORD face, bool isShown)
{
    g_controls.buttons.Show(face, isShown ? SW_SHOW : SW_HIDE);
}

void Change(WORD button, ButtonChange change)
{
    if (change != ButtonChange::Keep)
        g_controls.buttons.Enable(button, change == ButtonChange::Enable);
}

} // namespace

void CreateControls(HWND window)
{
    CreateSlider(window);
    CreateSoftKeys(window);
    CreatePlayerButtons(g_controls.buttons, window, PlayerButtonKind::Music);
    for (const WORD hidden : { kCommandPause, kCommandShuffleOn, kCommandRepeatAll, kCommandRepeatSingle })
        g_controls.buttons.Show(hidden, SW_HIDE);
}

void FreeControls()
{
    g_controls.slider.reset();
    g_controls.softKeys.Destroy();
    g_controls.buttons.Destroy();
}

void EnableSongControls(HWND window)
{
    for (const WORD id : kTransport)
        g_controls.buttons.Enable(id, true);
    EnableSlider(window, TRUE);
}

void DisableSongControls(HWND window)
{
    for (const WORD id : kTransport)
        g_controls.buttons.Enable(id, false);
    EnableSlider(window, FALSE);
}

void DisableFirstSongControls(HWND window)
{
    for (const WORD face : kFirstFaces)
        g_controls.buttons.Enable(face, false);
    EnableSlider(window, FALSE);
}

void ShowPlayFace()
{
    ShowFace(kCommandPlay, true);
    ShowFace(kCommandPause, false);
}

void ShowPauseFace()
{
    ShowFace(kCommandPause, true);
    ShowFace(kCommandPlay, false);
}

void ShowShuffleFace(bool isOn)
{
    ShowFace(kCommandShuffleOff, !isOn);
    ShowFace(kCommandShuffleOn, isOn);
}

void ShowRepeatFace(Repeat mode)
{
    ShowFace(kCommandRepeatOff, mode == Repeat::Off);
    ShowFace(kCommandRepeatAll, mode == Repeat::All);
    ShowFace(kCommandRepeatSingle, mode == Repeat::Single);
}

void ChangeStepButtons(const StepButtonChange& change)
{
    Change(kCommandPrevious, change.previous);
    Change(kCommandNext, change.next);
}
