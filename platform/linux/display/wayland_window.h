// The pixels of the player's window on a Wayland desktop: as many as its size and the scale of its screens ask for. The
// display's thread only.
#pragma once

#include "platform/host/viewport.h"
#include "platform/linux/display/display.h"
#include "platform/linux/display/wayland_buffers.h"
#include "platform/linux/display/wayland_objects.h"
#include "platform/linux/display/wayland_top_level.h"

#include <vector>

namespace cardsong::display {

class WaylandWindow {
public:
    WaylandWindow() = default;
    WaylandWindow(const WaylandWindow&) = delete;
    WaylandWindow& operator=(const WaylandWindow&) = delete;

    // Makes the window. It appears with its first frame, once the desktop has told its size. `globals` is borrowed;
    // nothing of it is missing.
    void Open(WaylandGlobals& globals, const DisplayOptions& options);
    void Close();
    // Obeys what the compositor has sent; call it when events were handed out. True if the window was drawn anew.
    bool Update();
    // Whether the compositor wants a new frame, and leaves a buffer for it.
    bool CanShow() const;
    // Shows `frame` and gives the one shown before in exchange.
    void Show(Frame& frame);
    // The pixel at a place in the window that is told in its own units.
    POINT PixelAt(double x, double y) const;
    const host::Viewport& Place() const { return m_viewport; }
    int Scale() const { return m_scale; }
    wl_surface* Surface() const { return m_surface.get(); }
    WaylandTopLevel& TopLevel() { return m_topLevel; }

private:
    void ListenToSurface();
    // Gives the surface as many pixels as it is to have now.
    void Fit();
    void Draw(WaylandBuffer& buffer) const;
    void Send(WaylandBuffer& buffer, const std::vector<RECT>& changed);
    void AskForCall();
    RECT WholeSurface() const;
    // Where these rows of the frame show on the surface.
    RECT PartOf(const RowRange& rows) const;

    WaylandGlobals* m_globals = nullptr;
    host::Turn m_turn = host::Turn::None;
    SIZE m_ownSize{};
    WaylandBuffers m_buffers;
    WaylandPtr<wl_surface> m_surface;
    WaylandTopLevel m_topLevel;
    WaylandPtr<wl_callback> m_call; // pending: the compositor does not want a new frame yet
    host::Viewport m_viewport;
    Frame m_shown;
    int m_scale = 1; // pixels along one of the window's units
    bool m_isConfigured = false;
    bool m_hasFrame = false;
    bool m_isStale = false; // all of it is to be drawn anew
};

} // namespace cardsong::display
