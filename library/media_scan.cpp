#include "library/media_scan.h"

#include "library/song_names.h"
#include "tags/mp3_info.h"
#include "tags/wma_info.h"

#include <algorithm>
#include <iterator>
#include <memory>

std::uint32_t ScannedFileCount = 0;

namespace {

constexpr WStringView kCardFolder = TEXT("\\SDMMC");
constexpr WStringView kMapFolders[] = { TEXT("MagaNavi"), TEXT("DestinatorApps"), TEXT("Lingtu"), TEXT("maps") };
constexpr WStringView kEveryFile = TEXT("\\*.*");
// Links that lead back up could branch without end before any path grows too long.
constexpr int kMostFolders = 100'000;

struct CloseFind {
    using pointer = HANDLE;
    void operator()(HANDLE find) const { FindClose(find); }
};
using FindHandle = std::unique_ptr<HANDLE, CloseFind>;

bool IsMapFolder(WStringView folder, WStringView name)
{
    return folder == kCardFolder &&
           std::find(std::begin(kMapFolders), std::end(kMapFolders), name) != std::end(kMapFolders);
}

class MediaScan {
public:
    MediaScan(CPtrListCtrl* list, bool recurse) : m_list(list), m_recurse(recurse) {}

    void Walk(WStringView folder)
    {
        const WString pattern = WString(folder) + WString(kEveryFile);
        if (pattern.size() >= kPathUnits || m_foldersLeft-- <= 0)
            return;
        WIN32_FIND_DATAW found;
        const HANDLE handle = FindFirstFileW(pattern.c_str(), &found);
        if (handle == INVALID_HANDLE_VALUE)
            return;
        const FindHandle find(handle);
        do
            Visit(folder, found);
        while (FindNextFileW(find.get(), &found) != FALSE);
    }

private:
    void Visit(WStringView folder, WIN32_FIND_DATAW& found)
    {
        const WStringView name(found.cFileName);
        if (name.empty() || name == TEXT(".") || name == TEXT(".."))
            return;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            if (m_list != nullptr)
                AddSong(folder, found);
        } else if (m_recurse && !IsMapFolder(folder, name)) {
            Walk(WString(folder) + TEXT('\\') + WString(name));
        }
    }

    void AddSong(WStringView folder, WIN32_FIND_DATAW& found)
    {
        WCHAR* name = found.cFileName;
        CharLowerBuffW(name, static_cast<DWORD>(WStringView(name).size()));
        const bool isMp3 = HasExtension(name, TEXT(".mp3")) != 0;
        if (!isMp3 && HasExtension(name, TEXT(".wma")) == 0)
            return;
        std::unique_ptr<MediaFileEntry> entry(NewMediaEntry(name, folder));
        if (!entry)
            return;
        ++ScannedFileCount;
        if (m_names.Contains(*entry))
            return;
        entry->fileSize = found.nFileSizeLow;
        entry->duration = ReadSongDurationSeconds(PathOf(*entry).c_str(), isMp3);
        m_names.Add(*m_list, *entry);
        m_list->Add(entry.release(), -1);
    }

    CPtrListCtrl* m_list;
    bool m_recurse;
    SongNames m_names; // asked instead of IsNewSongName, whose walk of both lists would cost their square
    int m_foldersLeft = kMostFolders;
};

bool HasSongName(const CPtrListCtrl& list, const MediaFileEntry& entry)
{
    for (std::int32_t i = 0; i < list.GetCount(); ++i) {
        if (wcscmp(static_cast<const MediaFileEntry*>(list.GetAt(i))->fileName, entry.fileName) == 0)
            return true;
    }
    return false;
}

} // namespace

void ScanMediaFolder(const WCHAR* folder, CPtrListCtrl* list, bool recurse)
{
    if (folder == nullptr)
        return;
    WStringView root(folder);
    if (!root.empty() && root.back() == TEXT('\\'))
        root.remove_suffix(1);
    MediaScan(list, recurse).Walk(root);
}

int IsNewSongName(const MediaFileEntry& entry)
{
    return HasSongName(CardSongList, entry) || HasSongName(PlayList, entry) ? 0 : 1;
}

std::uint32_t ReadSongDurationSeconds(const WCHAR* path, bool isMp3)
{
    constexpr std::uint32_t kMsPerSecond = 1000;
    constexpr std::uint32_t kWmaUnitsPerSecond = 10'000'000;
    if (isMp3) {
        const auto info = Mp3Reader().OpenMp3Info(path, TagFrames::Skip);
        return info ? info->durationMs / kMsPerSecond : 0;
    }
    const auto info = std::make_unique<WmaInfo>();
    // Whatever the result: what was read before a failure counts.
    static_cast<void>(ReadWmaInfo(path, info.get()));
    return static_cast<std::uint32_t>(info->duration) / kWmaUnitsPerSecond;
}
