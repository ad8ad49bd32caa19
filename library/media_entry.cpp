#include "library/media_entry.h"

#include <algorithm>
#include <limits>

CPtrListCtrl PlayList;
CPtrListCtrl CardSongList;

std::unique_ptr<MediaFileEntry> NewMediaEntry(WStringView fileName, WStringView folder)
{
    if (fileName.size() + folder.size() + 1 >= kPathUnits)
        return nullptr;
    auto entry = std::make_unique<MediaFileEntry>();
    std::copy(fileName.begin(), fileName.end(), entry->fileName);
    std::copy(folder.begin(), folder.end(), entry->folder);
    return entry;
}

WString PathOf(const MediaFileEntry& entry)
{
    return WString(entry.folder) + TEXT('\\') + entry.fileName;
}

std::uint32_t WholeSeconds(const MediaFileEntry& entry)
{
    constexpr std::uint32_t kMost = std::numeric_limits<std::uint32_t>::max();
    if (!(entry.duration > 0))
        return 0;
    return entry.duration < static_cast<double>(kMost) ? static_cast<std::uint32_t>(entry.duration) : kMost;
}
