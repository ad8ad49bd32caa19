#include "lyrics/lyrics_folder.h"

#include "common/file_search.h"
#include "library/file_names.h"

namespace {

constexpr const WCHAR* kFolderName = TEXT("Lyrics");
constexpr const WCHAR* kDocumentsOfNoDevice = TEXT("\\My Document\\");

WStringView WithoutBackslash(WStringView path)
{
    if (path.ends_with(TEXT('\\')))
        path.remove_suffix(1);
    return path;
}

// What stands before the last backslash; empty for a folder of the root.
WStringView Above(WStringView path)
{
    const std::size_t backslash = path.rfind(TEXT('\\'));
    return backslash == WStringView::npos ? WStringView() : path.substr(0, backslash);
}

// A volume need not be found by its own name: then it is there when something is in it.
bool IsThere(const WString& folder)
{
    const FileSearch search(folder.c_str());
    if (!search)
        return IsPathThere((folder + TEXT("\\*.*")).c_str());
    const WString name = folder.substr(folder.rfind(TEXT('\\')) + 1);
    return _wcsicmp(search.Entry().cFileName, name.c_str()) == 0;
}

} // namespace

WString DefaultLyricsFolder()
{
    WCHAR documents[MAX_PATH] = {};
    SHGetSpecialFolderPathW(nullptr, documents, CSIDL_PERSONAL, TRUE);
    WString folder = documents;
    if (folder.empty())
        folder = kDocumentsOfNoDevice;
    else if (folder.size() > 1 && folder.back() != TEXT('\\'))
        folder += TEXT('\\');
    return folder + kFolderName;
}

void EnsureFolder(WStringView path)
{
    if (path.size() >= kPathUnits)
        return;
    WString folder(WithoutBackslash(path));
    if (FileExists(folder.c_str()) != 0)
        folder = Above(folder);
    if (folder.empty() || IsThere(folder))
        return;
    EnsureFolder(Above(folder));
    CreateDirectoryW(folder.c_str(), nullptr);
}
