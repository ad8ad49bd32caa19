#include "platform/linux/gdi/context.h"
#include "platform/linux/gdi/coverage.h"
#include "platform/linux/gdi/text_lines.h"

#include <optional>

namespace cardsong::gdi {
namespace {

// One DrawTextW call: where it draws and in what.
struct TextPainter {
    const Context& context;
    const FontFace& face;
    RECT clip; // the target's pixels
};

RECT BoxOf(std::int64_t left, std::int64_t top, int widthPx, int heightPx)
{
    return RectOf(RangeOf(left, widthPx), RangeOf(top, heightPx));
}

void FillBox(const TextPainter& painter, const RECT& box, COLORREF color)
{
    ForEachVisiblePart(painter.context, Intersect(box, painter.clip),
                       [&](const RECT& part) { FillPixels(painter.context.target, part, PixelFromColor(color)); });
}

// `left`, `base`: the run's start on the base line.
void BlendRun(const TextPainter& painter, const TextRun& run, std::int64_t left, std::int64_t base)
{
    const RECT box = BoxOf(left + run.maskLeft, base + run.maskTop, run.maskWidth, run.maskHeight);
    const RECT shown = Intersect(box, painter.clip);
    if (run.mask.empty() || IsEmpty(shown))
        return;
    const std::uint16_t ink = PixelFromColor(painter.context.textColor);
    ForEachVisiblePart(painter.context, shown, [&](const RECT& part) {
        for (LONG y = part.top; y < part.bottom; ++y) {
            const auto row = static_cast<std::ptrdiff_t>(y - box.top) * run.maskRowBytes;
            const std::uint8_t* coverage = run.mask.data() + row + (part.left - box.left);
            BlendRow(painter.context.target.At(part.left, y), coverage,
                     static_cast<std::size_t>(part.right - part.left), ink);
        }
    });
}

// Draws one line whose cell has its corner at `left`, `top` of the target.
void PaintLine(const TextPainter& painter, std::u16string_view line, std::int64_t left, std::int64_t top)
{
    const FontFace& face = painter.face;
    if (painter.context.backMode == OPAQUE)
        FillBox(painter, BoxOf(left, top, TextWidth(face, line), face.HeightPx()), painter.context.backColor);
    while (!line.empty()) {
        const std::size_t units = RunUnits(face, line);
        const auto text = line.substr(0, units);
        const int width = MeasuredRun(face, text).WidthPx();
        // Ink may lean out of its cell by a letter at most. A run further outside is not rendered.
        if (left - face.emPx < painter.clip.right && left + width + face.emPx > painter.clip.left)
            BlendRun(painter, RenderedRun(face, text), left, top + face.ascentPx);
        left += width;
        line.remove_prefix(units);
    }
}

void Underline(const TextPainter& painter, std::u16string_view line, std::size_t unit, std::int64_t left,
               std::int64_t top)
{
    const std::vector<int> extents = TextExtents(painter.face, line);
    const int from = unit > 0 ? extents[unit - 1] : 0;
    FillBox(painter, BoxOf(left + from, top + painter.face.ascentPx + 1, extents[unit] - from, 1),
            painter.context.textColor);
}

// The text of one DrawTextW call, cut and placed.
struct Placement {
    std::u16string_view text;
    std::optional<std::size_t> underlined;
    UINT format;
    RECT box; // the context's own coordinates
    std::int64_t Width() const { return std::int64_t{ box.right } - box.left; }
    std::int64_t Height() const { return std::int64_t{ box.bottom } - box.top; }
    bool Has(UINT flag) const { return (format & flag) != 0; }
    bool IsSingleLine() const { return Has(DT_SINGLELINE); }
};

std::vector<TextLine> LinesOf(const FontFace& face, const Placement& placement)
{
    if (placement.IsSingleLine())
        return { { 0, placement.text.size() } };
    std::optional<LineRoom> room;
    if (placement.Has(DT_WORDBREAK) && placement.Width() >= 0) {
        const auto width = static_cast<int>(std::min<std::int64_t>(placement.Width(), INT32_MAX));
        room = { width, !placement.Has(DT_CENTER) && !placement.Has(DT_RIGHT) };
    }
    return CutLines(face, placement.text, room);
}

std::int64_t TopOf(const FontFace& face, const Placement& placement)
{
    if (placement.IsSingleLine() && placement.Has(DT_VCENTER))
        return placement.box.top + placement.Height() / 2 - face.HeightPx() / 2;
    if (placement.IsSingleLine() && placement.Has(DT_BOTTOM))
        return std::int64_t{ placement.box.bottom } - face.HeightPx();
    return placement.box.top;
}

std::int64_t LeftOf(const Placement& placement, int widthPx)
{
    if (placement.Has(DT_CENTER))
        return (std::int64_t{ placement.box.left } + placement.box.right - widthPx) / 2;
    if (placement.Has(DT_RIGHT))
        return std::int64_t{ placement.box.right } - widthPx;
    return placement.box.left;
}

// The line as shown: shortened if that was asked for.
std::u16string ShownLine(const FontFace& face, const Placement& placement, const TextLine& line)
{
    const auto text = placement.text.substr(line.start, line.units);
    if (!placement.Has(DT_WORD_ELLIPSIS))
        return std::u16string(text);
    return ShortenLine(face, text, static_cast<int>(std::clamp<std::int64_t>(placement.Width(), 0, INT32_MAX)));
}

// Text that is cut at its rectangle ends with the first line that reaches past the bottom.
void DropLinesBelow(const FontFace& face, const Placement& placement, std::vector<TextLine>& lines)
{
    if (placement.Has(DT_NOCLIP) || placement.Has(DT_CALCRECT))
        return;
    const auto whole = static_cast<std::size_t>(std::max<std::int64_t>(0, placement.Height()) / face.HeightPx());
    if (lines.size() > whole + 1)
        lines.resize(whole + 1);
}

void PaintLines(const TextPainter& painter, const Placement& placement, const std::vector<TextLine>& lines,
                std::int64_t top)
{
    const POINT origin = painter.context.origin;
    for (const TextLine& line : lines) {
        if (top + origin.y >= painter.clip.bottom)
            return;
        const std::u16string shown = ShownLine(painter.face, placement, line);
        const std::int64_t left = LeftOf(placement, TextWidth(painter.face, shown)) + origin.x;
        PaintLine(painter, shown, left, top + origin.y);
        const std::size_t marked = placement.underlined.value_or(SIZE_MAX) - line.start;
        if (placement.underlined && *placement.underlined >= line.start && marked < line.units && marked < shown.size())
            Underline(painter, shown, marked, left, top + origin.y);
        top += painter.face.HeightPx();
    }
}

int WidestLine(const FontFace& face, const Placement& placement, const std::vector<TextLine>& lines)
{
    int widest = 0;
    for (const TextLine& line : lines)
        widest = std::max(widest, TextWidth(face, ShownLine(face, placement, line)));
    return widest;
}

LONG ToCoordinate(std::int64_t value)
{
    return static_cast<LONG>(std::clamp<std::int64_t>(value, INT32_MIN, INT32_MAX));
}

// Draws or, with DT_CALCRECT, only measures. Returns the height from the rectangle's top to the end of the text.
int PlaceText(const Context& context, const FontFace& face, const Placement& placement, RECT& rect)
{
    std::vector<TextLine> lines = LinesOf(face, placement);
    DropLinesBelow(face, placement, lines);
    const std::int64_t top = TopOf(face, placement);
    const std::int64_t bottom = top + static_cast<std::int64_t>(lines.size()) * face.HeightPx();
    if (placement.Has(DT_CALCRECT)) {
        rect.right = ToCoordinate(std::int64_t{ rect.left } + WidestLine(face, placement, lines));
        rect.bottom = ToCoordinate(bottom);
    } else {
        const RECT clip = placement.Has(DT_NOCLIP) ? context.target.Bounds() : ToTarget(context, placement.box);
        if (!IsEmpty(clip))
            PaintLines({ context, face, clip }, placement, lines, top);
    }
    const LONG height = ToCoordinate(bottom - placement.box.top);
    const bool isPlacedLow = placement.IsSingleLine() && (placement.Has(DT_VCENTER) || placement.Has(DT_BOTTOM));
    return height == 0 && isPlacedLow ? 1 : height; // 0 would say that the call failed
}

// The call with an empty text of length -1: it measures a rectangle without a width, yet returns a line's height.
int PlaceNothing(const FontFace& face, UINT format, RECT& rect)
{
    if ((format & DT_CALCRECT) != 0) {
        rect.right = rect.left;
        rect.bottom = (format & DT_SINGLELINE) != 0 ? rect.top + face.HeightPx() : rect.top;
    }
    return face.HeightPx();
}

const FontFace& FaceIn(const Context& context)
{
    return FaceOf(*Find<Font>(context.font.Get()));
}

} // namespace
} // namespace cardsong::gdi

using namespace cardsong::gdi;

int DrawTextW(HDC handle, LPCWSTR text, int units, LPRECT rect, UINT format)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(handle);
    if (context == nullptr || rect == nullptr || units < -1)
        return 0;
    const FontFace& face = FaceIn(*context);
    if (units == 0)
        return face.HeightPx();
    std::u16string_view whole;
    if (text != nullptr)
        whole = units == -1 ? std::u16string_view(text) : std::u16string_view(text, static_cast<std::size_t>(units));
    if (whole.empty())
        return PlaceNothing(face, format, *rect);
    if ((format & DT_NOPREFIX) != 0 || whole.find(u'&') == std::u16string_view::npos)
        return PlaceText(*context, face, { whole, std::nullopt, format, *rect }, *rect);
    const PrefixedText shown = ResolvePrefixes(whole);
    return PlaceText(*context, face, { shown.text, shown.underlined, format, *rect }, *rect);
}

BOOL GetTextExtentExPointW(HDC handle, LPCWSTR text, int units, int maxExtentPx, int* fit, int* extentsPx, LPSIZE size)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(handle);
    if (context == nullptr || size == nullptr || units < 0 || maxExtentPx < -1 || (text == nullptr && units > 0))
        return FALSE;
    if (units == 0) {
        *size = { 0, 0 };
        if (fit != nullptr)
            *fit = 0;
        return TRUE;
    }
    const FontFace& face = FaceIn(*context);
    const std::vector<int> extents = TextExtents(face, std::u16string_view(text, static_cast<std::size_t>(units)));
    std::ptrdiff_t count = std::ssize(extents);
    if (fit != nullptr && maxExtentPx != -1)
        count = std::upper_bound(extents.begin(), extents.end(), maxExtentPx) - extents.begin();
    if (fit != nullptr)
        *fit = static_cast<int>(count);
    if (extentsPx != nullptr)
        std::copy_n(extents.begin(), count, extentsPx);
    *size = { extents.back(), face.HeightPx() };
    return TRUE;
}

BOOL GetTextMetricsW(HDC handle, TEXTMETRICW* metrics)
{
    const std::lock_guard lock(RoomLock());
    const Context* context = Find<Context>(handle);
    if (context == nullptr || metrics == nullptr)
        return FALSE;
    const FontFace& face = FaceIn(*context);
    *metrics = {};
    metrics->tmHeight = face.HeightPx();
    metrics->tmAscent = face.ascentPx;
    metrics->tmDescent = face.descentPx;
    metrics->tmInternalLeading = std::max(0, face.HeightPx() - face.emPx);
    metrics->tmAveCharWidth = face.averageWidthPx;
    metrics->tmMaxCharWidth = face.widestPx;
    metrics->tmWeight = face.asked.lfWeight != 0 ? face.asked.lfWeight : 400;
    metrics->tmDigitizedAspectX = 96;
    metrics->tmDigitizedAspectY = 96;
    metrics->tmFirstChar = 0x20;
    metrics->tmLastChar = 0xFFFD;
    metrics->tmDefaultChar = 0xFFFD;
    metrics->tmBreakChar = 0x20;
    metrics->tmItalic = face.asked.lfItalic;
    metrics->tmPitchAndFamily = 0x07; // scalable outlines of varying width
    return TRUE;
}
