// Device contexts: where drawing goes, what of it is visible, what is selected. Knows no window and draws nothing
// itself.
#pragma once

#include "platform/linux/gdi/objects.h"

#include <cstdint>
#include <span>
#include <vector>

namespace cardsong::gdi {

struct Context final : Object {
    static constexpr ObjectKind kKind = ObjectKind::Context;
    Context() : Object(kKind) {}
    bool MayBeDeleted() const override { return !isScreen; }

    bool isScreen = false;
    bool isMonochrome = false; // as its bitmap
    Surface target;
    POINT origin{};                            // the target's pixel that the context calls 0,0
    std::vector<RECT> visible;                 // parts of the target that may be touched; disjoint
    alignas(4) std::uint16_t ownPixel[2] = {}; // what a fresh memory context draws on, with its row's padding

    HeldObject bitmap; // memory contexts only
    HeldObject brush;
    HeldObject pen;
    HeldObject font;
    COLORREF textColor = RGB(0, 0, 0);
    COLORREF backColor = RGB(255, 255, 255);
    int backMode = OPAQUE;
};

// Lets a new context hold what every context starts with, and gives it a handle; null when the table is full.
HDC AddContext(std::unique_ptr<Context> context);
// Counts a drawing call that reached the screen.
void NoteScreenDrawn();
// What was drawn in colours and is not white becomes black.
void ReduceToBlackAndWhite(const Surface& surface, const RECT& part);

// Calls `draw(part)` for each visible part of `rect`, which is in the target's pixels.
template <typename Draw>
void ForEachVisiblePart(const Context& context, const RECT& rect, Draw draw)
{
    bool drawn = false;
    for (const RECT& visible : context.visible) {
        const RECT part = Intersect(rect, visible);
        if (IsEmpty(part))
            continue;
        draw(part);
        if (context.isMonochrome)
            ReduceToBlackAndWhite(context.target, part);
        drawn = true;
    }
    if (drawn && context.isScreen)
        NoteScreenDrawn();
}

// `rect` of the context's own coordinates in the target's pixels, cut to the target.
RECT ToTarget(const Context& context, const RECT& rect);

} // namespace cardsong::gdi
