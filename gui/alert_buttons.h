// The buttons of an alert: those of its kind, each at its place.
#pragma once

#include "gui/alert_kinds.h"
#include "gui/skin_button_row.h"

class AlertButtons : public SkinButtonRow {
public:
    // Makes the buttons as children of `owner`.
    void Create(HWND owner, HMODULE strings, const AlertLook& look);
    // Frees the images and forgets the buttons; their windows go with the owner.
    void Free() { ForgetButtons(); }
};
