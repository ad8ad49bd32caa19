// Any bytes as the play list's file, and as one record of it. The card holds a single song.
#include "library/play_list_file.h"
#include "library/song_list.h"
#include "tests/platform/scratch_device.h"

#include <cstdlib>
#include <cstring>

namespace {

struct Entries {
    ~Entries() { SongList(list).FreeAll(); }
    CPtrListCtrl list;
};

void Check(const CPtrListCtrl& list)
{
    for (const MediaFileEntry& entry : ConstSongList(list)) {
        if (entry.fileName[0] == 0)
            std::abort();
    }
}

void ReadAsRecord(const unsigned char* data, std::size_t size)
{
    std::vector<WCHAR> units(size / sizeof(WCHAR)); // no room behind the last unit
    if (!units.empty())
        std::memcpy(units.data(), data, units.size() * sizeof(WCHAR));
    Entries entries;
    const int added = ParsePlayListRecord(WStringView(units.data(), units.size()), entries.list);
    if (added != entries.list.GetCount())
        std::abort();
    Check(entries.list);
}

void ReadAsFile(const unsigned char* data, std::size_t size)
{
    static const cardsong::test::ScratchDevice s_device;
    static const bool s_hasSong = (s_device.WriteFile("card/a.mp3", ""), true);
    (void)s_hasSong;
    s_device.WriteFile("user/Windows/play_list.txt", std::string(reinterpret_cast<const char*>(data), size));
    Entries entries;
    LoadPlayList(entries.list);
    Check(entries.list);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    ReadAsFile(data, size); // first: it lays out the device
    ReadAsRecord(data, size);
    return 0;
}
