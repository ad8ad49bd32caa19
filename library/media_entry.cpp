#include "library/media_entry.h"

#include <algorithm>

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
