#include "platform/linux/gdi/text_run.h"

#include <algorithm>
#include <string>

namespace cardsong::gdi {
namespace {

// What the busiest screen shows at once, twice over. A title of forty ideographs takes 25 KB.
constexpr std::size_t kMaxCachedRuns = 64;
constexpr std::size_t kMaxCachedMaskBytes = 256 * 1024;
// Units shaped at a time: bounds the coverage of one run, however long a foreign text is.
constexpr int kMaxRunUnits = 512;
constexpr int kMaxRunWidthPx = 16384;

struct CachedRun {
    std::uint64_t faceSerial = 0;
    std::size_t hash = 0;
    std::uint64_t lastUse = 0;
    std::u16string text;
    TextRun run;
};

struct RunCache {
    std::vector<CachedRun> runs;
    std::size_t maskBytes = 0;
    std::uint64_t uses = 0;
    // What the shared layout holds, so that measuring and then drawing a text shapes it once.
    std::uint64_t shapedFace = 0;
    std::u16string shapedText;
};

RunCache& Cache()
{
    static RunCache* cache = new RunCache;
    return *cache;
}

struct Utf8Text {
    std::string bytes;
    std::vector<std::uint8_t> unitsOfCharacter;
};

// Control characters and line separators are blanks here: a run is one line, and a foreign text may hold anything.
Utf8Text ToUtf8(std::u16string_view text)
{
    Utf8Text out;
    out.bytes.reserve(text.size() * 3);
    for (std::size_t i = 0; i < text.size();) {
        gunichar character = text[i];
        std::uint8_t units = 1;
        const bool paired = (character & 0xFC00) == 0xD800 && i + 1 < text.size() && (text[i + 1] & 0xFC00) == 0xDC00;
        if (paired) {
            character = 0x10000 + ((character & 0x3FF) << 10) + (text[i + 1] & 0x3FFu);
            units = 2;
        } else if ((character & 0xF800) == 0xD800) {
            character = 0xFFFD;
        } else if (character < 0x20 || (character >= 0x7F && character < 0xA0) || character == 0x2028 ||
                   character == 0x2029) {
            character = ' ';
        }
        char bytes[6];
        out.bytes.append(bytes, static_cast<std::size_t>(g_unichar_to_utf8(character, bytes)));
        out.unitsOfCharacter.push_back(units);
        i += units;
    }
    return out;
}

PangoLayoutLine* ShapedLine()
{
    return pango_layout_get_line_readonly(SharedLayout(), 0);
}

void Shape(const FontFace& face, std::u16string_view text, const std::string& utf8)
{
    RunCache& cache = Cache();
    if (cache.shapedFace == face.serial && cache.shapedText == text)
        return;
    pango_layout_set_font_description(SharedLayout(), face.description.get());
    pango_layout_set_text(SharedLayout(), utf8.data(), static_cast<int>(utf8.size()));
    cache.shapedFace = face.serial;
    cache.shapedText = text;
}

// Width of each character in reading order, in the library's units; glyph runs come in the order of the eye.
std::vector<int> CharacterWidths(const Utf8Text& text)
{
    std::vector<int> widths(text.unitsOfCharacter.size(), 0);
    const PangoLayoutLine* line = ShapedLine();
    for (GSList* node = line != nullptr ? line->runs : nullptr; node != nullptr; node = node->next) {
        auto* glyphs = static_cast<PangoGlyphItem*>(node->data);
        const char* start = text.bytes.data();
        const auto first = static_cast<std::size_t>(g_utf8_pointer_to_offset(start, start + glyphs->item->offset));
        const auto count = static_cast<std::size_t>(glyphs->item->num_chars);
        if (first + count <= widths.size())
            pango_glyph_item_get_logical_widths(glyphs, start, widths.data() + first);
    }
    return widths;
}

void Measure(const FontFace& face, std::u16string_view text, TextRun& run)
{
    const Utf8Text utf8 = ToUtf8(text);
    Shape(face, text, utf8.bytes);
    const std::vector<int> widths = CharacterWidths(utf8);
    run.extentsPx.reserve(text.size());
    int sum = 0;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        sum += std::max(0, widths[i]);
        run.extentsPx.insert(run.extentsPx.end(), utf8.unitsOfCharacter[i], PANGO_PIXELS(sum));
    }
}

void PaintMask(TextRun& run)
{
    cairo_surface_t* surface = cairo_image_surface_create_for_data(run.mask.data(), CAIRO_FORMAT_A8, run.maskWidth,
                                                                   run.maskHeight, run.maskRowBytes);
    cairo_t* cairo = cairo_create(surface);
    cairo_move_to(cairo, -run.maskLeft, -run.maskTop);
    pango_cairo_show_layout_line(cairo, ShapedLine());
    cairo_destroy(cairo);
    cairo_surface_destroy(surface);
}

void Render(const FontFace& face, std::u16string_view text, TextRun& run)
{
    Shape(face, text, ToUtf8(text).bytes);
    run.isRendered = true;
    PangoRectangle ink{};
    if (PangoLayoutLine* line = ShapedLine())
        pango_layout_line_get_pixel_extents(line, &ink, nullptr);
    // Marks of a foreign text may pile up without end. What is cut here lies far outside the line.
    const int top = std::max(ink.y, -3 * face.HeightPx());
    ink.height = std::min(ink.y + ink.height, 2 * face.HeightPx()) - top;
    ink.y = top;
    ink.width = std::min(ink.width, 2 * kMaxRunWidthPx);
    if (ink.width <= 0 || ink.height <= 0)
        return;
    constexpr int kMargin = 1; // soft edges may reach past the announced box
    run.maskLeft = ink.x - kMargin;
    run.maskTop = ink.y - kMargin;
    run.maskWidth = ink.width + 2 * kMargin;
    run.maskHeight = ink.height + 2 * kMargin;
    run.maskRowBytes = cairo_format_stride_for_width(CAIRO_FORMAT_A8, run.maskWidth);
    run.mask.assign(static_cast<std::size_t>(run.maskRowBytes) * static_cast<std::size_t>(run.maskHeight), 0);
    PaintMask(run);
}

std::size_t MaskBytes(const CachedRun& cached)
{
    return cached.run.mask.size() * 4;
}

void ForgetOldest(RunCache& cache)
{
    const auto oldest = std::min_element(cache.runs.begin(), cache.runs.end(),
                                         [](const auto& a, const auto& b) { return a.lastUse < b.lastUse; });
    cache.maskBytes -= MaskBytes(*oldest);
    std::iter_swap(oldest, cache.runs.end() - 1);
    cache.runs.pop_back();
}

CachedRun& FindOrMeasure(const FontFace& face, std::u16string_view text)
{
    RunCache& cache = Cache();
    const std::size_t hash = std::hash<std::u16string_view>()(text);
    for (CachedRun& cached : cache.runs) {
        if (cached.hash == hash && cached.faceSerial == face.serial && cached.text == text) {
            cached.lastUse = ++cache.uses;
            return cached;
        }
    }
    while (cache.runs.size() >= kMaxCachedRuns || (cache.maskBytes > kMaxCachedMaskBytes && !cache.runs.empty()))
        ForgetOldest(cache);
    CachedRun made{ face.serial, hash, ++cache.uses, std::u16string(text), {} };
    Measure(face, text, made.run);
    cache.runs.push_back(std::move(made));
    return cache.runs.back();
}

} // namespace

std::size_t RunUnits(const FontFace& face, std::u16string_view text)
{
    const auto most = static_cast<std::size_t>(std::min(kMaxRunUnits, kMaxRunWidthPx / std::max(1, face.emPx)));
    if (text.size() <= most)
        return text.size();
    const bool splitsPair = (text[most - 1] & 0xFC00) == 0xD800 && (text[most] & 0xFC00) == 0xDC00;
    return splitsPair ? most - 1 : most;
}

const TextRun& MeasuredRun(const FontFace& face, std::u16string_view text)
{
    return FindOrMeasure(face, text).run;
}

const TextRun& RenderedRun(const FontFace& face, std::u16string_view text)
{
    CachedRun& cached = FindOrMeasure(face, text);
    if (!cached.run.isRendered) {
        Render(face, text, cached.run);
        Cache().maskBytes += MaskBytes(cached);
    }
    return cached.run;
}

int TextWidth(const FontFace& face, std::u16string_view text)
{
    int width = 0;
    while (!text.empty()) {
        const std::size_t units = RunUnits(face, text);
        width += MeasuredRun(face, text.substr(0, units)).WidthPx();
        text.remove_prefix(units);
    }
    return width;
}

std::vector<int> TextExtents(const FontFace& face, std::u16string_view text)
{
    std::vector<int> extents;
    extents.reserve(text.size());
    int before = 0;
    while (!text.empty()) {
        const std::size_t units = RunUnits(face, text);
        for (const int extent : MeasuredRun(face, text.substr(0, units)).extentsPx)
            extents.push_back(before + extent);
        before = extents.back();
        text.remove_prefix(units);
    }
    return extents;
}

} // namespace cardsong::gdi
