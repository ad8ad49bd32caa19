#include "library/media_scan.h"

#include "library/song_facts.h"
#include "library/song_list.h"
#include "library/song_names.h"

std::uint32_t ScannedFileCount = 0;

namespace {

// Adds what a walk finds to a list.
class MediaScan {
public:
    explicit MediaScan(CPtrListCtrl& list) : m_list(list) {}

    void Add(const FoundSong& song)
    {
        std::unique_ptr<MediaFileEntry> entry = NewMediaEntry(song.name, song.folder);
        if (!entry)
            return;
        CharLowerBuffW(entry->fileName, static_cast<DWORD>(song.name.size()));
        ++ScannedFileCount;
        if (m_names.Contains(*entry))
            return;
        entry->fileSize = song.fileSize;
        entry->duration = ReadSongDurationSeconds(PathOf(*entry).c_str(), song.format == SongFormat::Mp3);
        m_names.Add(m_list, SongList(m_list).Append(std::move(entry)));
    }

private:
    CPtrListCtrl& m_list;
    SongNames m_names; // asked instead of IsNewSongName, whose walk of both lists would cost their square
};

} // namespace

void ScanMediaFolder(const WCHAR* folder, CPtrListCtrl* list, bool recurse, const WalkGoesOn& goesOn)
{
    if (folder == nullptr)
        return;
    WStringView root(folder);
    if (!root.empty() && root.back() == TEXT('\\'))
        root.remove_suffix(1);
    const Subfolders subfolders = recurse ? Subfolders::Walk : Subfolders::LeaveOut;
    if (list == nullptr) {
        WalkSongs(root, subfolders, nullptr, goesOn);
        return;
    }
    MediaScan scan(*list);
    WalkSongs(
        root, subfolders, [&scan](const FoundSong& song) { scan.Add(song); }, goesOn);
}
