// What the fonts of this machine can show. Knows no context and no drawing.
#pragma once

#include <string>

namespace cardsong::gdi {

// The family of the font in which text is drawn that holds `character`; empty when no installed font has its glyph.
[[nodiscard]] std::string FamilyThatShows(char32_t character);

} // namespace cardsong::gdi
