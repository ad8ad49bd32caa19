// Starting other programs of the device, or of this machine.
#include "platform/windows/kernel/device_calls.h"
#include "platform/windows/kernel/device_paths.h"

// `commandLine` holds the arguments alone, as on the device.
BOOL cardsong::device::CreateProcessW(LPCWSTR image, LPWSTR commandLine, SECURITY_ATTRIBUTES* process,
                                      SECURITY_ATTRIBUTES* thread, BOOL inherit, DWORD flags, LPVOID environment,
                                      LPCWSTR directory, STARTUPINFOW* startup, PROCESS_INFORMATION* information)
{
    using namespace kernel;
    if (image == nullptr || *image == L'\0') {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const bool isBare = WStringView(image).find_first_of(L"\\/") == WStringView::npos;
    const auto program = FindHostPath(isBare ? WString(L"\\Windows\\") + image : WString(image));
    if (!program && !isBare) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return FALSE;
    }
    std::wstring line = L'"' + program.value_or(image) + L'"';
    if (commandLine != nullptr && *commandLine != L'\0')
        line.append(L" ").append(commandLine);
    STARTUPINFOW plainStartup{};
    plainStartup.cb = sizeof plainStartup;
    PROCESS_INFORMATION unread{};
    const BOOL started = ::CreateProcessW(program ? program->c_str() : nullptr, line.data(), process, thread, inherit,
                                          flags, environment, directory, startup != nullptr ? startup : &plainStartup,
                                          information != nullptr ? information : &unread);
    if (started && information == nullptr) {
        CloseHandle(unread.hProcess);
        CloseHandle(unread.hThread);
    }
    return started;
}
