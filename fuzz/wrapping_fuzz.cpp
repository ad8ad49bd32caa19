// Any units as the message of an alert: it is cut into lines. What the wrapping promises for every text is checked.
#include "gui/message_wrapping.h"

#include <cstdlib>
#include <cstring>

namespace {

void Require(bool isTrue)
{
    if (!isTrue)
        std::abort();
}

// Some units take no room, others more than there may be.
int WidthOf(WStringView text)
{
    int width = 0;
    for (const WCHAR unit : text)
        width += unit % 7 * 9;
    return width;
}

bool IsCharacter(WStringView text)
{
    return text.size() == 1 || (text.size() == 2 && (text[0] & 0xFC00) == 0xD800 && (text[1] & 0xFC00) == 0xDC00);
}

// What separates words; everything else has to be shown.
void RequireSeparators(WStringView text)
{
    for (const WCHAR unit : text)
        Require(unit < 33);
}

void Check(WStringView text, int roomPx)
{
    const auto lines = WrapMessage(text, roomPx, WidthOf);
    Require(lines.size() <= kMostMessageLines);
    std::size_t end = 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto [start, length] = lines[i];
        Require(start >= end && (i == 0 || start > lines[i - 1].start) && start + length <= text.size());
        RequireSeparators(text.substr(end, start - end));
        end = start + length;
        WStringView shown = text.substr(start, length);
        while (!shown.empty() && shown.back() < 33)
            shown.remove_suffix(1);
        Require(WidthOf(shown) <= roomPx || IsCharacter(shown));
    }
    if (lines.size() < kMostMessageLines)
        RequireSeparators(text.substr(end));
}

} // namespace

// The first byte is the room, the rest the text.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    if (size == 0)
        return 0;
    std::vector<WCHAR> units((size - 1) / sizeof(WCHAR)); // of its own size, so that one unit too far is noticed
    if (!units.empty())
        std::memcpy(units.data(), data + 1, units.size() * sizeof(WCHAR));
    Check(WStringView(units.data(), units.size()), data[0]);
    return 0;
}
