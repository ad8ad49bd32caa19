// Starting other programs of the device, or of this machine.
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"
#include "platform/windows/kernel/host_paths.h"

namespace cardsong::kernel {
namespace {

bool IsBare(WStringView image)
{
    return image.find_first_of(L"\\/") == WStringView::npos;
}

std::optional<HostPath> FindInTree(WStringView image)
{
    auto program = FindHostPath((IsBare(image) ? WString(L"\\Windows\\") : WString()).append(image));
    return program && !IsFolder(*program) ? program : std::nullopt;
}

// On this machine: where its users put programs, and neither beside the player nor in its current folder, where the
// system would look too.
std::optional<HostPath> FindOnSearchPath(const WString& image)
{
    if (!IsBare(image) || !IsFileName(image))
        return std::nullopt;
    WString searchPath(GetEnvironmentVariableW(L"PATH", nullptr, 0), L'\0');
    searchPath.resize(GetEnvironmentVariableW(L"PATH", searchPath.data(), static_cast<DWORD>(searchPath.size())));
    wchar_t found[MAX_PATH] = {};
    const DWORD units =
        searchPath.empty() ? 0 : SearchPathW(searchPath.c_str(), image.c_str(), L".exe", MAX_PATH, found, nullptr);
    const bool isProgram = units > 0 && units < MAX_PATH && !IsFolder(found);
    return isProgram ? std::optional<HostPath>(found) : std::nullopt;
}

} // namespace
} // namespace cardsong::kernel

// `commandLine` holds the arguments alone, as on the device. The device knows neither inherited handles nor a current
// folder nor an environment of the new program's own.
BOOL cardsong::device::CreateProcessW(LPCWSTR image, LPWSTR commandLine, SECURITY_ATTRIBUTES*, SECURITY_ATTRIBUTES*,
                                      BOOL, DWORD flags, LPVOID, LPCWSTR, STARTUPINFOW*,
                                      PROCESS_INFORMATION* information)
{
    using namespace kernel;
    if (image == nullptr || *image == L'\0') {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    auto program = FindInTree(image);
    if (!program)
        program = FindOnSearchPath(image);
    if (!program) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    std::wstring line = L'"' + *program + L'"';
    if (commandLine != nullptr && *commandLine != L'\0')
        line.append(L" ").append(commandLine);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION unread{};
    const BOOL started = ::CreateProcessW(program->c_str(), line.data(), nullptr, nullptr, FALSE, flags, nullptr,
                                          nullptr, &startup, information != nullptr ? information : &unread);
    if (started && information == nullptr) {
        CloseHandle(unread.hProcess);
        CloseHandle(unread.hThread);
    }
    return started;
}
