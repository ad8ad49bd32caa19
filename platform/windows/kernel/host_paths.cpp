#include "platform/windows/kernel/host_paths.h"

#include "platform/windows/kernel/utf8.h"

#include <algorithm>

namespace cardsong::kernel {
namespace {

constexpr std::size_t kPlainPathUnits = 240; // a folder's plain path leaves room for a short file name of 12
constexpr WStringView kExtended = L"\\\\?\\";

bool IsOneOf(WStringView name, std::initializer_list<WStringView> others)
{
    return std::any_of(others.begin(), others.end(), [name](WStringView other) {
        return CompareStringOrdinal(name.data(), static_cast<int>(name.size()), other.data(),
                                    static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
    });
}

// Whether the plain form of a path would take the name for a device: "NUL", "con.txt", "COM1".
bool IsReserved(WStringView name)
{
    name = name.substr(0, name.find(L'.'));
    name = name.substr(0, name.find_last_not_of(L' ') + 1);
    if (IsOneOf(name, { L"CON", L"PRN", L"AUX", L"NUL", L"CONIN$", L"CONOUT$" }))
        return true;
    constexpr WStringView kNumbers = L"0123456789\u00B9\u00B2\u00B3";
    return name.size() == 4 && kNumbers.find(name[3]) != WStringView::npos &&
           IsOneOf(name.substr(0, 3), { L"COM", L"LPT" });
}

bool MeansAnotherInPlainForm(WStringView name)
{
    return name.ends_with(L'.') || name.ends_with(L' ') || IsReserved(name);
}

HostPath Extended(const HostPath& path)
{
    if (path.starts_with(kExtended))
        return path;
    return path.starts_with(L"\\\\") ? L"\\\\?\\UNC" + path.substr(1) : HostPath(kExtended) + path;
}

// Without links; empty when there is nothing.
HostPath RealPath(const HostPath& path)
{
    const HANDLE file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return {};
    HostPath real(GetFinalPathNameByHandleW(file, nullptr, 0, 0), L'\0');
    real.resize(GetFinalPathNameByHandleW(file, real.data(), static_cast<DWORD>(real.size()), 0));
    CloseHandle(file);
    return real;
}

void Append(HostPath& path, const WString& name)
{
    if (!path.ends_with(L'\\'))
        path += L'\\';
    path += name;
}

} // namespace

HostPath HostFolder(const std::string& utf8)
{
    if (utf8.empty())
        return {};
    HostPath folder = Utf16FromUtf8(utf8);
    if (folder.back() == L':')
        folder += L'\\'; // the drive's root, not its current folder
    HostPath whole(GetFullPathNameW(folder.c_str(), 0, nullptr, nullptr), L'\0');
    whole.resize(GetFullPathNameW(folder.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr));
    while (whole.ends_with(L'\\') && !whole.ends_with(L":\\"))
        whole.pop_back();
    return whole;
}

HostPath Below(const HostPath& folder, std::span<const WString> names)
{
    HostPath path = folder;
    for (const WString& name : names)
        Append(path, name);
    const bool isOdd = std::any_of(names.begin(), names.end(), MeansAnotherInPlainForm);
    return isOdd || path.size() > kPlainPathUnits ? Extended(path) : path;
}

// The end of a pattern means the same in both forms, and the system reads "*." in its own way.
HostPath PatternBelow(const HostPath& folder, const WString& pattern)
{
    HostPath path = folder;
    Append(path, pattern);
    return path.size() > kPlainPathUnits ? Extended(path) : path;
}

HostPath FolderOf(const HostPath& path)
{
    const auto end = path.find_last_not_of(L'\\');
    return path.substr(0, path.rfind(L'\\', end) + 1);
}

bool Exists(const HostPath& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsFolder(const HostPath& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool LiesBelow(const HostPath& path, const HostPath& folder)
{
    HostPath above = RealPath(folder);
    HostPath real = RealPath(path);
    for (HostPath* const each : { &above, &real }) {
        if (!each->empty() && !each->ends_with(L'\\'))
            *each += L'\\';
    }
    const WStringView start = WStringView(real).substr(0, above.size());
    return !above.empty() && IsOneOf(start, { above });
}

void MakeFolders(const HostPath& path)
{
    for (auto end = path.find(L'\\', 3); end != HostPath::npos; end = path.find(L'\\', end + 1))
        ::CreateDirectoryW(path.substr(0, end).c_str(), nullptr);
    ::CreateDirectoryW(path.c_str(), nullptr);
}

} // namespace cardsong::kernel
