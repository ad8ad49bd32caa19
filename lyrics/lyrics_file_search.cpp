#include "lyrics/lyrics_file_search.h"

#include "common/file_search.h"
#include "library/file_names.h"
#include "lyrics/lyrics_file.h"
#include "lyrics/lyrics_title.h"
#include "lyrics/text_similarity.h"

#include <algorithm>

namespace {

constexpr const WCHAR* kLyricsExtension = TEXT("lrc");
constexpr std::int32_t kLeastShare = 3; // a third of the longer text

class BestMatch {
public:
    explicit BestMatch(WString songName) : m_name(std::move(songName)), m_nameUnits(UnitsWithoutSpaces(m_name)) {}

    // Compares `text` with the song's name; `fileName` is chosen when it wins.
    void Compare(WStringView text, const WCHAR* fileName)
    {
        const std::int32_t longer = std::max(m_nameUnits, UnitsWithoutSpaces(text));
        const std::int32_t beaten = m_fileName ? longer - m_distance : longer / kLeastShare;
        const std::int32_t similarity = TextSimilarity(m_name, text, beaten);
        if (similarity <= beaten)
            return;
        m_distance = longer - similarity;
        m_fileName = fileName;
    }

    bool IsPerfect() const { return m_fileName && m_distance == 0; }
    std::optional<WString> Take() { return std::move(m_fileName); }

private:
    WString m_name;
    std::int32_t m_nameUnits;
    std::optional<WString> m_fileName;
    std::int32_t m_distance = 0; // of what is chosen
};

void CompareFile(const WCHAR* fileName, WStringView folder, BestMatch& best)
{
    const WStringView name(fileName);
    best.Compare(name.substr(0, name.rfind(TEXT('.'))), fileName);
    if (best.IsPerfect())
        return;
    const LyricsBytes nothing(1);
    const LyricsBytes bytes = ReadLyricsFile(PathInFolder(folder, name).c_str()).value_or(nothing);
    const LyricsTitle title(bytes);
    best.Compare(title.Traditional(), fileName);
    if (!best.IsPerfect())
        best.Compare(title.Simplified(), fileName);
}

} // namespace

bool IsLyricsFile(const WIN32_FIND_DATAW& found)
{
    const WStringView name(found.cFileName);
    const std::size_t dot = name.rfind(TEXT('.'));
    return (found.dwFileAttributes & FILE_ATTRIBUTE_ARCHIVE) != 0 && dot != WStringView::npos &&
           _wcsicmp(found.cFileName + dot + 1, kLyricsExtension) == 0;
}

WString FolderOfPath(WStringView path)
{
    const std::size_t backslash = path.rfind(TEXT('\\'));
    return backslash == WStringView::npos ? WString(TEXT("\\")) : WString(path.substr(0, backslash + 1));
}

WString NameOfSong(const WCHAR* songPath)
{
    PathBuffer name;
    GetFileNameFromPath(songPath, name);
    StripExtension(name, name);
    return name;
}

WString PathInFolder(WStringView folder, WStringView name)
{
    WString path(folder);
    if (!folder.ends_with(TEXT('\\')))
        path += TEXT('\\');
    return path += name;
}

std::optional<WString> FindLyricsFile(WStringView folder, const WCHAR* songPath)
{
    BestMatch best(NameOfSong(songPath));
    for (FileSearch search(PathInFolder(folder, TEXT("*.*")).c_str()); search && !best.IsPerfect(); search.Next()) {
        if (IsLyricsFile(search.Entry()))
            CompareFile(search.Entry().cFileName, folder, best);
    }
    return best.Take();
}
