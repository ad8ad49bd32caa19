#include "platform/linux/gdi/text_lines.h"

#include <algorithm>

namespace cardsong::gdi {
namespace {

constexpr std::u16string_view kEllipsis = u"...";

bool IsBlank(char16_t unit)
{
    return unit == u' ' || unit == u'\t';
}
bool IsLineEnd(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

// Ideographs, kana, hangul and full-width forms: a line may break before and after each of them.
bool IsIdeographic(char16_t unit)
{
    return (unit >= 0x2E80 && unit < 0xA000) || (unit >= 0xAC00 && unit < 0xD7B0) ||
           (unit >= 0xF900 && unit < 0xFB00) || (unit >= 0xFF00 && unit < 0xFFF0);
}

// Closing punctuation that never begins a line.
bool ClosesPhrase(char16_t unit)
{
    constexpr std::u16string_view kClosing =
        u",.!?;:)]}\u3001\u3002\uFF0C\uFF0E\uFF01\uFF1F\uFF1B\uFF1A\uFF09\u300B\u300D\u300F\u3011\u2026\u2019\u201D";
    return kClosing.find(unit) != std::u16string_view::npos;
}

bool MayBreakBefore(std::u16string_view text, std::size_t at)
{
    const char16_t before = text[at - 1];
    const char16_t after = text[at];
    if (IsBlank(after) || ClosesPhrase(after) || (after & 0xFC00) == 0xDC00)
        return false;
    return IsBlank(before) || IsIdeographic(before) || IsIdeographic(after);
}

// Cuts one paragraph; its first unit is unit `start` of the whole text. Blanks at a break belong to no line, except
// where `room` keeps those that fit.
void CutWords(const FontFace& face, std::u16string_view paragraph, std::size_t start, LineRoom room,
              std::vector<TextLine>& lines)
{
    const int widthPx = room.widthPx;
    const std::vector<int> extents = TextExtents(face, paragraph);
    std::size_t lineStart = 0;
    std::size_t lastBreak = 0;
    const auto widthTo = [&](std::size_t end) {
        return extents[end - 1] - (lineStart > 0 ? extents[lineStart - 1] : 0);
    };
    const auto endLine = [&](std::size_t end) {
        while (end > lineStart && end < paragraph.size() && IsBlank(paragraph[end - 1]) &&
               !(room.keepsBlanks && widthTo(end) <= widthPx))
            --end;
        lines.push_back({ start + lineStart, end - lineStart });
    };
    for (std::size_t at = 1; at <= paragraph.size(); ++at) {
        // Blanks may hang over the edge, anything that is seen may not.
        if (!IsBlank(paragraph[at - 1]) && widthTo(at) > widthPx && lastBreak > lineStart) {
            endLine(lastBreak);
            lineStart = lastBreak;
        }
        if (at < paragraph.size() && MayBreakBefore(paragraph, at))
            lastBreak = at;
    }
    endLine(paragraph.size());
}

} // namespace

PrefixedText ResolvePrefixes(std::u16string_view text)
{
    PrefixedText shown;
    shown.text.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == u'&' && i + 1 < text.size()) { // the last of all marks nothing and is shown
            ++i;
            if (text[i] != u'&')
                shown.underlined = shown.text.size();
        }
        shown.text.push_back(text[i]);
    }
    return shown;
}

std::vector<TextLine> CutLines(const FontFace& face, std::u16string_view text, std::optional<LineRoom> room)
{
    std::vector<TextLine> lines;
    std::size_t start = 0;
    while (start <= text.size()) {
        std::size_t end = start;
        while (end < text.size() && !IsLineEnd(text[end]))
            ++end;
        const auto paragraph = text.substr(start, end - start);
        if (room && !paragraph.empty())
            CutWords(face, paragraph, start, *room, lines);
        else
            lines.push_back({ start, end - start });
        if (end == text.size())
            break;
        start = end + 1;
        if (start < text.size() && IsLineEnd(text[start]) && text[start] != text[end])
            ++start; // CR and LF, in either order, are one
        if (start == text.size())
            break; // a line end at the very end opens no further line
    }
    return lines;
}

std::u16string ShortenLine(const FontFace& face, std::u16string_view line, int widthPx)
{
    if (TextWidth(face, line) <= widthPx)
        return std::u16string(line);
    const int room = widthPx - TextWidth(face, kEllipsis);
    const std::vector<int> extents = TextExtents(face, line);
    const auto fit = std::upper_bound(extents.begin(), extents.end(), room) - extents.begin();
    auto kept = static_cast<std::size_t>(fit);
    if (kept > 0 && kept < line.size() && (line[kept] & 0xFC00) == 0xDC00)
        --kept;
    return std::u16string(line.substr(0, kept)).append(kEllipsis);
}

} // namespace cardsong::gdi
