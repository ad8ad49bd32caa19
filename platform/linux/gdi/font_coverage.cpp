#include "platform/linux/gdi/font_coverage.h"

#include "platform/linux/gdi/font_face.h"
#include "platform/linux/gdi/objects.h"

namespace cardsong::gdi {
namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

} // namespace

std::string FamilyThatShows(char32_t character)
{
    const std::lock_guard lock(RoomLock());
    Font usual;
    const FontFace& face = FaceOf(usual);
    PangoContext* const context = pango_layout_get_context(SharedLayout());
    const std::unique_ptr<PangoFontset, Unref> fonts(
        pango_context_load_fontset(context, face.description.get(), pango_language_get_default()));
    const std::unique_ptr<PangoFont, Unref> font(fonts ? pango_fontset_get_font(fonts.get(), character) : nullptr);
    if (!font || pango_font_has_char(font.get(), character) == FALSE)
        return {};
    const std::unique_ptr<PangoFontDescription, FreePangoDescription> description(pango_font_describe(font.get()));
    return pango_font_description_get_family(description.get());
}

} // namespace cardsong::gdi
