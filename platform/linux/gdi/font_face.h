// A font ready for text: its metrics and the description that the text library wants. Knows no context and no drawing.
#pragma once

#include "platform/linux/ce/gdi.h"

#include <pango/pangocairo.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace cardsong::gdi {

struct Font;

// A taller font than any screen shows would only cost memory.
constexpr LONG kMaxEmPx = 256;

struct FreePangoDescription {
    void operator()(PangoFontDescription* description) const { pango_font_description_free(description); }
};

struct FontFace {
    std::uint64_t serial = 0; // unlike for any other face of the process
    LOGFONTW asked{};
    std::unique_ptr<PangoFontDescription, FreePangoDescription> description;
    int emPx = 0;
    int ascentPx = 0;
    int descentPx = 0;
    int averageWidthPx = 0;
    int widestPx = 0;

    int HeightPx() const { return ascentPx + descentPx; }
};

// The face that `font` asks for; never null. The text library is loaded at the first call.
const FontFace& FaceOf(Font& font);
// The one layout that shapes text, with the context that sets how glyphs are rendered.
PangoLayout* SharedLayout();

} // namespace cardsong::gdi
