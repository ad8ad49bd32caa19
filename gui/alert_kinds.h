// What each kind of alert shows and does, a row a kind. Knows no window.
#pragma once

#include "platform/ce.h"

#include <array>

// The numbers by which callers name the kinds. Any other number is a Plain alert.
enum AlertKind : int {
    kAlertError = 0, // closes by itself
    kAlertQuestion = 1,
    kAlertInfo = 2,
    kAlertPlain = 3,      // without a button
    kAlertProcessing = 4, // a small box with an animation; whoever was active waits for it
    kAlertBack = 5,
};

// Sounds of the kinds that have one. Any other number is silent.
enum AlertSound : int { kAlertInfoSound = 0, kAlertLowBatterySound = 1 };

// The answers: ids of the buttons, in the WM_COMMAND that the owner hears.
constexpr UINT kAlertOkId = 181;
constexpr UINT kAlertBackId = 183;
constexpr UINT kAlertYesId = 184;
constexpr UINT kAlertNoId = 185;
constexpr UINT kFirstAlertAnswer = 181;
constexpr UINT kLastAlertAnswer = 185;

constexpr UINT kNoAlertButton = 0;

struct AlertButton {
    UINT id;
    int xPx;
    int captionStringId;
};

struct AlertLook {
    RECT place;                         // left, top, right and bottom on the screen
    LPCWSTR background;                 // null: what lies under the window shows through
    LPCWSTR animation;                  // null: a title and a message
    std::array<AlertButton, 2> buttons; // left of each other
    bool sounds;
    UINT closesAfterMs; // with the answer OK; 0: never
};

// Borrowed for ever.
const AlertLook& AlertLookOf(int kind);
// Null: none.
LPCWSTR AlertSoundPath(int sound);
