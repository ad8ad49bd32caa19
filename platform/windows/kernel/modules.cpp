// Modules of the device, loaded for their resources.
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"

namespace {

constexpr std::wstring_view kModuleFolder = L"\\Windows\\";

std::wstring ModulePath(std::wstring_view name)
{
    const auto separator = name.find_last_of(L"\\/");
    std::wstring path(separator == std::wstring_view::npos ? kModuleFolder : std::wstring_view());
    path += name;
    if (name.find(L'.', separator + 1) == std::wstring_view::npos) // from the start when there is no separator
        path += L".dll";
    return path;
}

} // namespace

// Only as data: no code of a module ever runs here.
HMODULE cardsong::device::LoadLibraryExW(LPCWSTR name, HANDLE, DWORD flags)
{
    if (name == nullptr || *name == L'\0' || (flags & LOAD_LIBRARY_AS_DATAFILE) == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const kernel::HostPlace place = kernel::PlaceOf(ModulePath(name).c_str());
    const DWORD error = place.error == ERROR_PATH_NOT_FOUND ? DWORD{ ERROR_FILE_NOT_FOUND } : place.error;
    if (error != ERROR_SUCCESS) {
        SetLastError(error);
        return nullptr;
    }
    return ::LoadLibraryExW(place.path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}
