#include "lyrics/lyrics_parser.h"

#include "lyrics/lrc_groups.h"

#include <algorithm>
#include <span>
#include <unordered_map>
#include <vector>

namespace {

// Texts that are the same without case have one number, so that comparing two of them costs nothing.
class TextNumbers {
public:
    std::size_t NumberOf(const WString& text)
    {
        WString lower = text;
        CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
        return m_numbers.try_emplace(std::move(lower), m_numbers.size()).first->second;
    }

private:
    std::unordered_map<WString, std::size_t> m_numbers;
};

struct StampedText {
    std::int32_t timeMs;
    std::size_t number;
    LyricText text;
};

std::vector<StampedText> CollectTexts(WStringView text)
{
    std::vector<StampedText> stamped;
    TextNumbers numbers;
    LrcGroups groups(text);
    for (LrcGroup group; groups.Next(group);) {
        if (group.timesMs.empty() || group.text.empty())
            continue;
        const std::size_t number = numbers.NumberOf(group.text);
        const auto shared = std::make_shared<const WString>(group.text);
        for (const std::int32_t timeMs : group.timesMs)
            stamped.push_back({ timeMs, number, shared });
    }
    std::ranges::stable_sort(stamped, {}, &StampedText::timeMs);
    return stamped;
}

// Joins the texts of one time, in the order in which they were read.
class LyricJoiner {
public:
    // `roomUnits`: what joined texts may still hold.
    explicit LyricJoiner(const StampedText& first, std::size_t& roomUnits)
        : m_number(first.number), m_first(first.text), m_roomUnits(roomUnits)
    {
    }

    void Join(const StampedText& next)
    {
        if (next.number == m_number)
            return;
        const std::size_t addedUnits = WStringView(kLyricJoint).size() + next.text->size();
        const std::size_t neededUnits = m_joined.empty() ? m_first->size() + addedUnits : addedUnits;
        if (neededUnits > m_roomUnits)
            return; // whether it is the same or not
        // Two texts with different numbers differ. A whole is compared once for each joint: either it is the same, and
        // gets the number, or the next joint doubles it.
        if (!m_joined.empty() && IsSameLyric(m_joined, *next.text)) {
            m_number = next.number;
            return;
        }
        m_roomUnits -= neededUnits;
        if (m_joined.empty())
            m_joined = *m_first;
        (m_joined += kLyricJoint) += *next.text;
        m_number = kNoNumber;
    }

    LyricText Take() { return m_joined.empty() ? m_first : std::make_shared<const WString>(std::move(m_joined)); }

private:
    static constexpr auto kNoNumber = static_cast<std::size_t>(-1);

    std::size_t m_number; // of the texts that are known to be the same as the whole
    LyricText m_first;
    WString m_joined; // empty: the whole is m_first
    std::size_t& m_roomUnits;
};

} // namespace

void ParseLrcText(WStringView text, LyricList lines)
{
    const std::vector<StampedText> stamped = CollectTexts(text.substr(0, text.find(WCHAR{ 0 })));
    std::size_t roomUnits = kMostJoinedUnits;
    for (std::size_t i = 0; i < stamped.size();) {
        const std::int32_t timeMs = stamped[i].timeMs;
        LyricJoiner joiner(stamped[i], roomUnits);
        while (++i < stamped.size() && stamped[i].timeMs == timeMs)
            joiner.Join(stamped[i]);
        lines.Append(timeMs, joiner.Take());
    }
}
