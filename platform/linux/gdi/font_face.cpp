#include "platform/linux/gdi/font_face.h"

#include "platform/linux/gdi/objects.h"

#include <cmath>
#include <vector>

namespace cardsong::gdi {
namespace {

constexpr const char* kDefaultFamily = "WenQuanYi Micro Hei";
// The program makes a font for each caption that it draws; only so many differ.
constexpr std::size_t kMaxFaces = 32;

struct TextLibrary {
    PangoFontMap* map = pango_cairo_font_map_new();
    PangoContext* context = pango_font_map_create_context(map);
    PangoLayout* layout = nullptr;

    TextLibrary()
    {
        cairo_font_options_t* options = cairo_font_options_create();
        cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
        cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
        cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
        pango_cairo_context_set_font_options(context, options);
        cairo_font_options_destroy(options);
        pango_cairo_context_set_resolution(context, 96);
        layout = pango_layout_new(context);
        pango_layout_set_single_paragraph_mode(layout, TRUE);
    }
};

// Lives until the process ends. It has a font map of its own: the library keeps one a thread, and not only the main
// thread draws.
TextLibrary& Library()
{
    static TextLibrary* library = new TextLibrary;
    return *library;
}

std::string FamilyOf(const LOGFONTW& asked)
{
    std::size_t units = 0;
    while (units < LF_FACESIZE && asked.lfFaceName[units] != 0)
        ++units;
    gchar* utf8 = g_utf16_to_utf8(reinterpret_cast<const gunichar2*>(asked.lfFaceName), static_cast<glong>(units),
                                  nullptr, nullptr, nullptr);
    std::string family = utf8 != nullptr && *utf8 != '\0' ? std::string(utf8) + "," : std::string();
    g_free(utf8);
    return family + kDefaultFamily;
}

// Fills in the metrics of `face` at `emPx`.
void MeasureFace(FontFace& face, int emPx)
{
    face.emPx = emPx;
    pango_font_description_set_absolute_size(face.description.get(), emPx * PANGO_SCALE);
    PangoFont* font = pango_font_map_load_font(Library().map, Library().context, face.description.get());
    cairo_scaled_font_t* scaled = font != nullptr ? pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(font)) : nullptr;
    if (scaled == nullptr || cairo_scaled_font_status(scaled) != CAIRO_STATUS_SUCCESS) {
        face.ascentPx = emPx; // no font on this machine: text is boxes, yet lines keep a height
        face.averageWidthPx = face.widestPx = emPx;
    } else {
        cairo_font_extents_t extents;
        cairo_scaled_font_extents(scaled, &extents);
        cairo_text_extents_t letter;
        cairo_scaled_font_text_extents(scaled, "x", &letter);
        face.ascentPx = static_cast<int>(std::lround(extents.ascent));
        face.descentPx = static_cast<int>(std::lround(extents.descent));
        face.widestPx = static_cast<int>(std::lround(extents.max_x_advance));
        face.averageWidthPx = static_cast<int>(std::lround(letter.x_advance));
    }
    if (font != nullptr)
        g_object_unref(font);
}

// Negative heights name the em, positive ones the whole line.
void SizeFace(FontFace& face, LONG asked)
{
    if (asked <= 0) {
        const LONG em = asked == 0 ? kDefaultEmPx : std::min(kMaxEmPx, -std::max(asked, -kMaxEmPx));
        MeasureFace(face, em);
        return;
    }
    const LONG height = std::min(asked, kMaxEmPx);
    MeasureFace(face, kMaxEmPx);
    const int em = std::max(1, height * face.emPx / std::max(1, face.HeightPx()));
    MeasureFace(face, em);
}

std::shared_ptr<FontFace> MakeFace(const LOGFONTW& asked)
{
    static std::uint64_t serial = 0;
    auto face = std::make_shared<FontFace>();
    face->serial = ++serial;
    face->asked = asked;
    face->description.reset(pango_font_description_new());
    pango_font_description_set_family(face->description.get(), FamilyOf(asked).c_str());
    const int weight = asked.lfWeight == 0 ? PANGO_WEIGHT_NORMAL : std::clamp(asked.lfWeight, 100, 900);
    pango_font_description_set_weight(face->description.get(), static_cast<PangoWeight>(weight));
    if (asked.lfItalic != 0)
        pango_font_description_set_style(face->description.get(), PANGO_STYLE_ITALIC);
    SizeFace(*face, asked.lfHeight);
    return face;
}

bool LooksAlike(const LOGFONTW& a, const LOGFONTW& b)
{
    return a.lfHeight == b.lfHeight && a.lfWeight == b.lfWeight && (a.lfItalic != 0) == (b.lfItalic != 0) &&
           std::u16string_view(a.lfFaceName, LF_FACESIZE) == std::u16string_view(b.lfFaceName, LF_FACESIZE);
}

} // namespace

const FontFace& FaceOf(Font& font)
{
    if (font.face)
        return *font.face;
    static auto* faces = new std::vector<std::shared_ptr<FontFace>>;
    for (const auto& known : *faces) {
        if (LooksAlike(known->asked, font.description)) {
            font.face = known;
            return *font.face;
        }
    }
    if (faces->size() >= kMaxFaces)
        faces->erase(faces->begin());
    faces->push_back(MakeFace(font.description));
    font.face = faces->back();
    return *font.face;
}

PangoLayout* SharedLayout()
{
    return Library().layout;
}

} // namespace cardsong::gdi

using namespace cardsong::gdi;

HFONT CreateFontIndirectW(const LOGFONTW* description)
{
    if (description == nullptr)
        return nullptr;
    const std::lock_guard lock(RoomLock());
    auto font = std::make_unique<Font>();
    font->description = *description;
    return static_cast<HFONT>(AddObject(std::move(font)));
}
