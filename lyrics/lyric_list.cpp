#include "lyrics/lyric_list.h"

namespace {

WString LowerCase(WStringView text)
{
    WString lower(text);
    CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
    return lower;
}

} // namespace

bool IsSameLyric(WStringView a, WStringView b)
{
    // Lower case has as many units.
    return a.size() == b.size() && (a == b || LowerCase(a) == LowerCase(b));
}

const LyricLine* ConstLyricList::Find(std::int32_t index) const
{
    return static_cast<const LyricLine*>(m_list.GetAt(index));
}

LyricLine* LyricList::Find(std::int32_t index) const
{
    return static_cast<LyricLine*>(m_list.GetAt(index));
}

int LyricList::Add(std::int32_t timeMs, LyricText text) const
{
    if (text == nullptr || text->empty())
        return 0;
    std::int32_t place = Count();
    while (place > 0 && Find(place - 1)->timeMs > timeMs)
        --place;
    LyricLine* const before = place > 0 ? Find(place - 1) : nullptr;
    if (before == nullptr || before->timeMs != timeMs)
        m_list.Add(new LyricLine{ timeMs, std::move(text) }, place);
    else if (!IsSameLyric(*before->text, *text))
        before->text = std::make_shared<const WString>(*before->text + kLyricJoint + *text);
    return 1;
}

void LyricList::Append(std::int32_t timeMs, LyricText text) const
{
    m_list.Add(new LyricLine{ timeMs, std::move(text) }, -1);
}

void LyricList::RemoveRepeats() const
{
    for (std::int32_t i = 1; i < Count();) {
        if (IsSameLyric(*At(i).text, *At(i - 1).text))
            delete static_cast<LyricLine*>(m_list.DeleteAt(i, 1));
        else
            ++i;
    }
}

void LyricList::FreeAll() const
{
    for (std::int32_t i = Count() - 1; i >= 0; --i)
        delete Find(i);
    m_list.DeleteAll();
}
