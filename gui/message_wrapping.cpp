#include "gui/message_wrapping.h"

#include <algorithm>

namespace {

constexpr WCHAR kLineFeed = 10;
constexpr WCHAR kCarriageReturn = 13;
constexpr WCHAR kFirstVisible = 33;
constexpr WCHAR kFirstIdeograph = 0x4E00;
constexpr WCHAR kLastIdeograph = 0x9FA5;

bool IsSeparator(WCHAR unit)
{
    return unit < kFirstVisible;
}

bool IsBreak(WCHAR unit)
{
    return unit == kLineFeed || unit == kCarriageReturn;
}

bool IsIdeograph(WCHAR unit)
{
    return unit >= kFirstIdeograph && unit <= kLastIdeograph;
}

class Wrapping {
public:
    Wrapping(WStringView text, int roomPx, const TextWidth& widthOf)
        : m_text(text), m_roomPx(roomPx), m_mostUnits(static_cast<std::size_t>(std::max(roomPx, 1))), m_widthOf(widthOf)
    {
    }

    std::vector<MessageLine> Lines()
    {
        while (m_lines.size() < kMostMessageLines && SkipSeparators()) {
            const std::size_t start = m_at;
            const bool isBroken = TakeLine();
            m_lines.push_back({ start, m_at - start });
            if (isBroken)
                TakeBreak();
        }
        return std::move(m_lines);
    }

private:
    bool IsAtEnd() const { return m_at == m_text.size(); }
    bool IsAtBreak() const { return IsAtEnd() || IsBreak(m_text[m_at]); }
    bool Fits(std::size_t from, std::size_t to) const { return m_widthOf(m_text.substr(from, to - from)) <= m_roomPx; }
    bool IsInsidePair(std::size_t at) const
    {
        return at > 0 && at < m_text.size() && (m_text[at - 1] & 0xFC00) == 0xD800 && (m_text[at] & 0xFC00) == 0xDC00;
    }

    // False at the end of the text.
    bool SkipSeparators()
    {
        while (!IsAtEnd() && IsSeparator(m_text[m_at]))
            ++m_at;
        return !IsAtEnd();
    }

    // An ideograph, or the rest of a word: nothing where a separator stands.
    std::size_t UnitEnd() const
    {
        if (!IsAtEnd() && IsIdeograph(m_text[m_at]))
            return m_at + 1;
        const auto rest = m_text.substr(m_at);
        const auto end = std::ranges::find_if(rest, [](WCHAR unit) { return IsSeparator(unit) || IsIdeograph(unit); });
        return m_at + static_cast<std::size_t>(end - rest.begin());
    }

    // Goes on to the end of the line. True when a break or the text's end stands there.
    bool TakeLine()
    {
        const std::size_t start = m_at;
        while (TakeUnit(start, UnitEnd()) && !IsAtBreak()) {
            if (IsSeparator(m_text[m_at]))
                ++m_at;
        }
        return IsAtBreak();
    }

    // Takes the unit up to `end` into the line that began at `start`, or what there is room for. False when the line is
    // full.
    bool TakeUnit(std::size_t start, std::size_t end)
    {
        const std::size_t limit = start + m_mostUnits;
        if (end - m_at > m_mostUnits || !Fits(m_at, end)) {
            m_at = PartThatFits(start, std::min(end, std::max(limit, m_at)));
            return false;
        }
        if (end > limit || !Fits(start, end))
            return false;
        m_at = end;
        return true;
    }

    // How far a line goes that cannot hold all from here to `end`: one character, where nothing stands in it yet and
    // even that is too wide.
    std::size_t PartThatFits(std::size_t start, std::size_t end) const
    {
        std::size_t stop = m_at;
        for (std::size_t tooFar = end + 1; tooFar - stop > 1;) { // text grows no narrower
            const std::size_t middle = stop + (tooFar - stop) / 2;
            (Fits(start, middle) ? stop : tooFar) = middle;
        }
        if (stop > m_at && IsInsidePair(stop))
            --stop;
        if (stop > start)
            return stop;
        return start + (IsInsidePair(start + 1) ? 2 : 1);
    }

    // The break is used up, and each line feed that follows directly is an empty line.
    void TakeBreak()
    {
        if (IsAtEnd())
            return;
        ++m_at;
        while (m_lines.size() < kMostMessageLines && !IsAtEnd() && m_text[m_at] == kLineFeed)
            m_lines.push_back({ m_at++, 0 });
    }

    const WStringView m_text;
    const int m_roomPx;
    const std::size_t m_mostUnits;
    const TextWidth& m_widthOf;
    std::size_t m_at = 0;
    std::vector<MessageLine> m_lines;
};

} // namespace

std::vector<MessageLine> WrapMessage(WStringView text, int roomPx, const TextWidth& widthOf)
{
    return Wrapping(text, roomPx, widthOf).Lines();
}
