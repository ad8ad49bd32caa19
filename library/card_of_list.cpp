#include "library/card_of_list.h"

#include "common/file_search.h"
#include "library/inserted_card.h"

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
