// Where pointers, fingers and keyboards of a Wayland desktop send what they do.
#pragma once

#include "platform/linux/display/display.h"

namespace cardsong::display {

class TouchPanel;
class WaylandCursor;
class WaylandWindow;

// All of it is borrowed.
struct WaylandInput {
    WaylandWindow& window;
    TouchPanel& panel;
    WaylandCursor& cursor;
    const DisplayOptions& options;
};

} // namespace cardsong::display
