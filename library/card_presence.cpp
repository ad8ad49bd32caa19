#include "library/card_presence.h"

namespace {

bool IsNamed(const WIN32_FIND_DATAW& found)
{
    const WStringView name(found.cFileName);
    return name != TEXT(".") && name != TEXT("..");
}

} // namespace

bool IsCardInserted()
{
    WIN32_FIND_DATAW found;
    const HANDLE find = FindFirstFileW((WString(kCardFolder) + TEXT("\\*.*")).c_str(), &found);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    bool isInserted = IsNamed(found);
    while (!isInserted && FindNextFileW(find, &found) != FALSE)
        isInserted = IsNamed(found);
    FindClose(find);
    return isInserted;
}

bool IsSongThere(const MediaFileEntry& entry)
{
    WIN32_FIND_DATAW found;
    const HANDLE find = FindFirstFileW(PathOf(entry).c_str(), &found);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    FindClose(find);
    return true;
}

bool CardOfList::IsThere(std::int32_t first)
{
    if (m_found.fileName[0] != 0 && IsSongThere(m_found))
        return true;
    if (!IsCardInserted())
        return false;
    const std::int32_t count = m_list.Count();
    for (std::int32_t i = 0; i < count; ++i) {
        const MediaFileEntry& entry = m_list.At((first + i) % count);
        if (!IsSongThere(entry))
            continue;
        m_found = entry;
        return true;
    }
    return false;
}
