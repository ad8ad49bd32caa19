// The compositor's screens: how many pixels one of a window's units has on them, and how large they are.
#pragma once

#include "platform/ce.h"
#include "platform/linux/display/wayland_objects.h"

#include <cstdint>
#include <vector>

namespace cardsong::display {

class WaylandOutputs {
public:
    static constexpr int kLargestScale = 8; // what a compositor says beyond it is cut

    void Add(wl_registry& registry, std::uint32_t name, std::uint32_t version);
    // Nothing for a name of something else.
    void Remove(std::uint32_t name);
    // The window is shown on `output` from now on, or no longer. Null: on one that is gone.
    void SetShown(const wl_output* output, bool isShown);
    // The largest scale of the screens that show the window; while none does, of all of them.
    int Scale() const;
    // The size of the first screen as its user sees it, in pixels and in a window's units; a common one while it is not
    // known.
    SIZE DesktopSizePx() const;
    SIZE DesktopSize() const;

private:
    bool IsDesktopKnown() const;

    struct Output {
        std::uint32_t name = 0;
        WaylandPtr<wl_output> object;
        int widthPx = 0; // 0: not known yet
        int heightPx = 0;
        bool isTurned = false; // by a quarter
        int scale = 1;
        bool isShown = false; // it shows the window, or a part of it
    };
    std::vector<std::unique_ptr<Output>> m_outputs;
};

} // namespace cardsong::display
