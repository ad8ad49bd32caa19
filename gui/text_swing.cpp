#include "gui/text_swing.h"

namespace {

bool IsPair(WStringView text, std::size_t at)
{
    return at + 1 < text.size() && (text[at] & 0xFC00) == 0xD800 && (text[at + 1] & 0xFC00) == 0xDC00;
}

int UnitsAfter(WStringView text, std::size_t start)
{
    return IsPair(text, start) ? 2 : 1;
}

int UnitsBefore(WStringView text, std::size_t start)
{
    return start >= 2 && IsPair(text, start - 2) ? 2 : 1;
}

} // namespace

bool TextSwing::Step(WStringView text, int roomPx, const std::function<int(WStringView)>& widthPx)
{
    const std::size_t before = Start();
    if (before > text.size() || widthPx(text) <= roomPx) {
        Reset();
        return before != 0;
    }
    m_offset += m_offset < 0 ? UnitsBefore(text, before) : UnitsAfter(text, before);
    if (m_offset > 0 && widthPx(text.substr(Start())) <= roomPx)
        m_offset = -m_offset;
    return true;
}
