// What the main window owns while it lives: controls, pictures, the key row; and the faces of its buttons.
#pragma once

#include "app/play_modes.h"
#include "app/step_button_rules.h"
#include "controls/player_buttons.h"
#include "controls/seek_slider.h"
#include "gui/soft_key_bar.h"
#include "platform/ce.h"

#include <memory>

struct PlayerControls {
    std::unique_ptr<SeekSlider> slider;
    SoftKeyBar softKeys;
    PlayerButtonSet buttons;
};

extern PlayerControls g_controls;

// Makes every control as a child of `window`, each in its place, with the faces of a stopped player shown.
void CreateControls(HWND window);
// Frees the controls' own resources; their windows go with their parent.
void FreeControls();

// What only a chosen song gives a meaning: the transport buttons but for play, and the slider, the first child.
void EnableSongControls(HWND window);
void DisableSongControls(HWND window);
// The same at the window's creation, where only the faces that show first are concerned.
void DisableFirstSongControls(HWND window);

void ShowPlayFace();
void ShowPauseFace();
void ShowShuffleFace(bool isOn);
void ShowRepeatFace(Repeat mode);
void ChangeStepButtons(const StepButtonChange& change);
