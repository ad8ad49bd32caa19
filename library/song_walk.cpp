#include "library/song_walk.h"

#include "common/file_search.h"
#include "library/file_names.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace {

constexpr WStringView kMapFolders[] = { TEXT("MagaNavi"), TEXT("DestinatorApps"), TEXT("Lingtu"), TEXT("maps") };
constexpr WStringView kEveryFile = TEXT("\\*.*");

struct HashOfIdentity {
    std::size_t operator()(const FolderIdentity& folder) const
    {
        return std::hash<ULONGLONG>()(folder.index) ^ std::hash<ULONGLONG>()(folder.volume) << 1;
    }
};

bool IsMapFolder(WStringView folder, WStringView name)
{
    return folder == kCardFolder &&
           std::find(std::begin(kMapFolders), std::end(kMapFolders), name) != std::end(kMapFolders);
}

class SongWalk {
public:
    SongWalk(Subfolders subfolders, const std::function<void(const FoundSong&)>& visit, const WalkGoesOn& goesOn)
        : m_subfolders(subfolders), m_visit(visit), m_goesOn(goesOn)
    {
    }

    void Walk(const WString& folder)
    {
        const WString pattern = folder + WString(kEveryFile);
        if (pattern.size() >= kPathUnits || !IsFirstVisit(folder))
            return;
        for (FileSearch search(pattern.c_str()); search && GoesOn(); search.Next())
            Visit(folder, search.Entry());
    }

private:
    bool GoesOn()
    {
        m_hasEnded = m_hasEnded || (m_goesOn && !m_goesOn());
        return !m_hasEnded;
    }

    // A link that leads back up, or to a folder that was walked already, would tell its songs again.
    bool IsFirstVisit(const WString& folder)
    {
        FolderIdentity identity{};
        return GetFolderIdentity(folder.c_str(), &identity) == FALSE || m_walked.insert(identity).second;
    }

    void Visit(const WString& folder, const WIN32_FIND_DATAW& found)
    {
        const WStringView name(found.cFileName);
        if (name.empty() || name == TEXT(".") || name == TEXT(".."))
            return;
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            if (m_visit)
                Tell(folder, found);
        } else if (m_subfolders == Subfolders::Walk && !IsMapFolder(folder, name)) {
            Walk(folder + TEXT('\\') + WString(name));
        }
    }

    void Tell(const WString& folder, const WIN32_FIND_DATAW& found)
    {
        const WStringView name(found.cFileName);
        const std::optional<SongFormat> format = SongFormatOf(found.cFileName);
        if (format && folder.size() + 1 + name.size() < kPathUnits)
            m_visit({ folder, name, found.nFileSizeLow, *format });
    }

    const Subfolders m_subfolders;
    const std::function<void(const FoundSong&)>& m_visit;
    const WalkGoesOn& m_goesOn;
    bool m_hasEnded = false;
    std::unordered_set<FolderIdentity, HashOfIdentity> m_walked;
};

} // namespace

void WalkSongs(WStringView folder, Subfolders subfolders, const std::function<void(const FoundSong&)>& visit,
               const WalkGoesOn& goesOn)
{
    SongWalk(subfolders, visit, goesOn).Walk(WString(folder));
}
