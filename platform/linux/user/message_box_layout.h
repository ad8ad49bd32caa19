// Where the parts of a message box stand. Knows no window; measures text by the fonts it is given.
#pragma once

#include "platform/linux/ce/gdi.h"

#include <string>
#include <vector>

namespace cardsong::user {

struct MessageBoxParts {
    std::u16string text;
    std::u16string caption;
    bool hasSign = false;
    int buttonCount = 1; // at most three
};

struct MessageBoxLayout {
    RECT box{};  // on the screen
    RECT band{}; // this and what follows: inside the box
    RECT sign{}; // empty without one
    RECT message{};
    std::u16string shownText; // what of the text has room, with an ellipsis where some has not
    std::vector<RECT> buttons;
};

// The box stands in the middle of the screen and grows with its text up to the whole height.
MessageBoxLayout PlanMessageBox(const MessageBoxParts& parts, HFONT font);

} // namespace cardsong::user
