#include "library/file_names.h"

#include "common/file_search.h"

#include <algorithm>

namespace {

WString LowerCase(WStringView text)
{
    WString lower(text);
    CharLowerBuffW(lower.data(), static_cast<DWORD>(lower.size()));
    return lower;
}

// Returns 1 when something was copied.
int CopyCut(const WString& text, PathBuffer& out)
{
    const std::size_t units = std::min(text.size(), kPathUnits - 1);
    std::copy_n(text.data(), units, out);
    out[units] = 0;
    return units > 0 ? 1 : 0;
}

} // namespace

int HasExtension(const WCHAR* name, const WCHAR* ext)
{
    if (name == nullptr || ext == nullptr)
        return 0;
    const WStringView whole(name);
    const WStringView end(ext);
    if (end.empty() || end.size() > whole.size())
        return 0;
    return LowerCase(whole.substr(whole.size() - end.size())) == LowerCase(end) ? 1 : 0;
}

int GetFileNameFromPath(const WCHAR* path, PathBuffer& out)
{
    const WStringView whole(path != nullptr ? path : TEXT(""));
    const std::size_t backslash = whole.substr(0, kPathUnits).rfind(TEXT('\\'));
    return CopyCut(WString(backslash == WStringView::npos ? whole : whole.substr(backslash + 1)), out);
}

int StripExtension(const WCHAR* name, PathBuffer& out)
{
    const WStringView whole(name != nullptr ? name : TEXT(""));
    return CopyCut(WString(whole.substr(0, whole.rfind(TEXT('.')))), out);
}

int FileExists(const WCHAR* path)
{
    if (path == nullptr)
        return 0;
    WString name(path);
    if (!name.empty() && name.back() == TEXT('\\'))
        name.pop_back();
    const FileSearch search(name.c_str());
    return search && (search.Entry().dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 ? 1 : 0;
}
