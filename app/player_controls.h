// What the main window owns while it lives: controls, pictures, the key row; and the two faces of its play button.
#pragma once

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
// The controls that only a chosen song gives a meaning: the faces that show first, and the slider, the first child.
void DisableControls(HWND window);
// Frees the controls' own resources; their windows go with their parent.
void FreeControls();

void ShowPlayFace();
void ShowPauseFace();
// The transport buttons that only a chosen song gives a meaning.
void EnableTransport(bool enable);
