#include "library/card_of_list.h"

#include "common/file_search.h"

namespace {

bool IsNamed(const WIN32_FIND_DATAW& found)
{
    const WStringView name(found.cFileName);
    return name != TEXT(".") && name != TEXT("..");
}

} // namespace

bool IsCardInserted()
{
    const WString pattern = WString(kCardFolder) + TEXT("\\*.*");
    for (FileSearch search(pattern.c_str()); search; search.Next())
        if (IsNamed(search.Entry()))
            return true;
    return false;
}

bool IsSongThere(const MediaFileEntry& entry)
{
    return IsPathThere(PathOf(entry).c_str());
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
