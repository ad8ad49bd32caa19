#include "encoding/code_page.h"

#include <cstddef>

namespace {

constexpr bool IsBetween(unsigned byte, unsigned least, unsigned most)
{
    return byte >= least && byte <= most;
}

// A Big5 pair that GB2312 text is unlikely to hold: a low trail byte cannot be GB2312; lead bytes 0xAA to 0xAF are
// unassigned there; 0xA4 to 0xA9 are kana, Greek, Cyrillic and box drawing there, but common hanzi in Big5.
constexpr bool IsBig5Pair(unsigned lead, unsigned trail)
{
    if (!IsBetween(lead, 0xA1, 0xF9) || !(IsBetween(trail, 0x40, 0x7E) || IsBetween(trail, 0xA1, 0xFE)))
        return false;
    return trail < 0x7F || IsBetween(lead, 0xA4, 0xAF);
}

constexpr bool IsGb2312Pair(unsigned lead, unsigned trail)
{
    return IsBetween(lead, 0xA1, 0xF7) && IsBetween(trail, 0xA1, 0xFE);
}

} // namespace

std::int32_t GetCodePage(const char* text)
{
    std::size_t big5Pairs = 0;
    std::size_t gb2312Pairs = 0;
    const auto* cursor = reinterpret_cast<const unsigned char*>(text);
    while (cursor[0] != 0 && cursor[1] != 0) {
        if (IsBig5Pair(cursor[0], cursor[1])) {
            ++big5Pairs;
            cursor += 2;
        } else if (IsGb2312Pair(cursor[0], cursor[1])) {
            ++gb2312Pairs;
            cursor += 2;
        } else {
            ++cursor;
        }
    }
    if (big5Pairs == 0 && gb2312Pairs == 0)
        return kNoCodePage;
    return big5Pairs > gb2312Pairs ? kCodePageBig5 : kCodePageGb2312;
}
