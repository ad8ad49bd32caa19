// Reads a dialog template as the resource compiler writes it (the form DLGTEMPLATE, not DLGTEMPLATEEX). Knows no
// window.
#pragma once

#include "platform/linux/ce/user.h"

#include <optional>
#include <string>
#include <vector>

namespace cardsong::user {

struct ControlTemplate {
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT units{}; // dialog units: left, top, width, height
    WORD id = 0;
    std::u16string className;
    std::u16string text;
    std::vector<std::byte> creationData;
};

struct DialogTemplate {
    DWORD style = 0;
    DWORD exStyle = 0;
    RECT units{};
    std::u16string className; // empty: the dialog class
    std::u16string text;
    WORD fontPoints = 0; // with DS_SETFONT
    std::u16string fontName;
    std::vector<ControlTemplate> controls;
};

// The template's memory holds all that its counts announce, as with the API. Nothing for the extended form.
std::optional<DialogTemplate> ReadDialogTemplate(const DLGTEMPLATE* source);

} // namespace cardsong::user
