// The window on the machine's screen: its size, its pixels. Every call belongs on the thread that made it.
#pragma once

#include "platform/host/viewport.h"
#include "platform/linux/display/display.h"
#include "platform/linux/display/frame.h"

#include <SDL_video.h>

#include <memory>
#include <optional>
#include <string>

namespace cardsong::display {

class SdlWindow {
public:
    // An empty text, or why there is no window.
    [[nodiscard]] std::string Open(const DisplayOptions& options);
    // Shows `frame` and gives the one shown before in exchange; only rows in which they differ are sent.
    void Show(Frame& frame);
    // Sends everything again: the window was uncovered, or has a new size.
    void Redraw();
    // Brings it before the windows of other programs, from the task bar too, as far as the desktop allows.
    void Raise();
    // Forgets the window without closing it: its server is gone. Any thread.
    void Abandon() { static_cast<void>(m_window.release()); }
    const host::Viewport& Place() const { return m_viewport; }
    SDL_Point Size() const;
    SDL_Window& Raw() const { return *m_window; }

private:
    SDL_Window* CreateInWindow(int scale);
    // Draws what shows the screen's rows; returns where that is on the surface.
    SDL_Rect DrawRows(SDL_Surface& surface, const RowRange& rows) const;
    void SendRows(SDL_Surface& surface, const std::vector<RowRange>& ranges);

    struct DestroyWindow {
        void operator()(SDL_Window* window) const { SDL_DestroyWindow(window); }
    };
    std::unique_ptr<SDL_Window, DestroyWindow> m_window;
    std::optional<host::Turn> m_turn; // nothing: as the full screen needs
    host::Viewport m_viewport;
    Frame m_shown;
};

} // namespace cardsong::display
