#include "app/player_window.h"

#include "app/command_ids.h"
#include "common/string_table.h"

PlayerWindow g_window;

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
    g_window.slider =
        std::make_unique<SeekSlider>(window, kSeekSliderId, TEXT("\\Windows\\gui_musicplayer_progress_but_full.gif"),
                                     TEXT("\\Windows\\gui_musicplayer_progress_but_normal.gif"));
    g_window.slider->SetRange(0, kSeekSliderMaximum);
}

void CreateSoftKeys(HWND window)
{
    constexpr int ids[] = { kCommandExit, kCommandPlayListWindow, kCommandAudioSettings };
    const ButtonCaption captions[] = {
        { nullptr, kStringExit, kLabelPoints, kLabelColor },
        { nullptr, kStringPlayList, kLabelPoints, kLabelColor },
        { TEXT(""), 0, kLabelPoints, kLabelColor },
    };
    g_window.softKeys.Create(window, g_hStringModule, static_cast<int>(std::size(ids)), ids, captions);
}

} // namespace

void CreateControls(HWND window)
{
    CreateSlider(window);
    CreateSoftKeys(window);
    CreatePlayerButtons(g_window.buttons, window, PlayerButtonKind::Music);
    for (const WORD hidden : { kCommandPause, kCommandShuffleOn, kCommandRepeatAll, kCommandRepeatSingle })
        g_window.buttons.Show(hidden, SW_HIDE);
}

void DisableControls(HWND window)
{
    for (const WORD face : kFirstFaces)
        g_window.buttons.Enable(face, false);
    EnableWindow(GetWindow(window, GW_CHILD), FALSE);
}

void FreeControls()
{
    g_window.slider.reset();
    g_window.softKeys.Destroy();
    g_window.buttons.Destroy();
}

void ShowPlayFace()
{
    g_window.buttons.Show(kCommandPlay, SW_SHOW);
    g_window.buttons.Show(kCommandPause, SW_HIDE);
}

void ShowPauseFace()
{
    g_window.buttons.Show(kCommandPause, SW_SHOW);
    g_window.buttons.Show(kCommandPlay, SW_HIDE);
}

void EnableTransport(bool enable)
{
    for (const WORD id : kTransport)
        g_window.buttons.Enable(id, enable);
}
