// Any units as the text of a colour or a rectangle, and as two names that are compared. What is read and written again
// is read as the same.
#include "lyrics/settings_texts.h"
#include "lyrics/strip_rect.h"
#include "lyrics/text_similarity.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace {

constexpr LONG kMost = 999'999'999;

void Require(bool holds)
{
    if (!holds)
        std::abort();
}

void CheckRect(const RECT& rect)
{
    for (const LONG edge : { rect.left, rect.top, rect.right, rect.bottom })
        Require(edge >= -kMost && edge <= kMost);
    Require(rect.left >= 0 && rect.bottom >= 0);
    const RECT clipped = ClippedStripRect(rect);
    Require(clipped.left >= 0 && clipped.top >= 0 && clipped.right <= 284 && clipped.bottom <= 70);
    Require(clipped.left <= clipped.right && clipped.top <= clipped.bottom);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    std::vector<WCHAR> units(size); // no room behind the last unit
    std::copy_n(data, size, units.begin());
    const WStringView text(units.data(), units.size());
    const COLORREF color = ParseColor(text);
    Require(color == kNoColor || (color <= 0xFFFFFF && ParseColor(ColorText(color)) == color));
    CheckRect(ParseRect(text));

    const WStringView name = text.substr(0, size / 2);
    const WStringView other = text.substr(size / 2);
    const std::int32_t similarity = TextSimilarity(name, other);
    Require(similarity >= 0 &&
            similarity <= std::min(UnitsWithoutSpaces(name), static_cast<std::int32_t>(other.size())));
    Require(TextSimilarity(name, name) == UnitsWithoutSpaces(name));
    return 0;
}
