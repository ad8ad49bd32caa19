#include "lyrics/lrc_groups.h"

#include "lyrics/lrc_time_tag.h"

#include <algorithm>

namespace {

constexpr WCHAR kFirstPrintable = 0x20;

} // namespace

bool LrcGroups::Next(LrcGroup& group)
{
    group.timesMs.clear();
    group.text.clear();
    if (m_rest.empty() || !TakeTags(group.timesMs))
        return false;
    const std::size_t end = std::min(m_rest.find(TEXT('[')), m_rest.size());
    std::copy_if(m_rest.begin(), m_rest.begin() + static_cast<std::ptrdiff_t>(end), std::back_inserter(group.text),
                 [](WCHAR unit) { return unit >= kFirstPrintable; });
    m_rest.remove_prefix(end);
    return true;
}

// False when a tag has no end.
bool LrcGroups::TakeTags(std::vector<std::int32_t>& timesMs)
{
    while (!m_rest.empty() && m_rest.front() == TEXT('[')) {
        const std::size_t end = m_rest.find(TEXT(']'));
        if (end == WStringView::npos)
            return false;
        if (const auto timeMs = ReadTimeTag(m_rest.substr(1, end - 1)))
            timesMs.push_back(*timeMs);
        m_rest.remove_prefix(end + 1);
    }
    return true;
}
