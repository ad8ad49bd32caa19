// Functions on files and folders by name, and the C runtime's way to open them.
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/devices.h"
#include "platform/linux/kernel/file_opening.h"
#include "platform/linux/kernel/open_files.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace cardsong::kernel;

namespace {

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

// The facts of an existing file or folder; nothing with the last error set.
std::optional<HostFacts> FactsOf(LPCWSTR name)
{
    const std::u16string_view text = name ? std::u16string_view(name) : std::u16string_view();
    const auto path = ParseDevicePath(text);
    if (text.empty()) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    const auto found = FindOnHost(path);
    auto facts = found.Found() ? ReadHostFacts(found.hostPath) : std::nullopt;
    if (!facts) {
        SetLastError(found.Found() ? ERROR_ACCESS_DENIED : found.error);
    } else if (path.endsInSeparator && !facts->IsFolder()) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return std::nullopt;
    }
    return facts;
}

DWORD DeleteHostFile(const DevicePath& path)
{
    const auto found = FindOnHost(path);
    if (!found.Found())
        return found.error;
    const auto facts = ReadHostFacts(found.hostPath);
    if (path.endsInSeparator && facts && !facts->IsFolder())
        return ERROR_INVALID_NAME;
    if (!facts || facts->IsFolder() || found.isInstalled || (facts->attributes & FILE_ATTRIBUTE_READONLY) != 0)
        return ERROR_ACCESS_DENIED;
    if (LeadsOffTheCard(path, FolderOf(found.hostPath)))
        return ERROR_ACCESS_DENIED; // a link on the card itself may go
    if (IsOpen(facts->identity))
        return ERROR_SHARING_VIOLATION;
    return unlink(found.hostPath.c_str()) == 0 ? ERROR_SUCCESS : ErrorFromHost(errno);
}

struct StreamMode {
    DWORD access = 0;
    DWORD disposition = 0;
    std::string hostMode; // for fdopen
};

// Only the letters that change anything here: text mode translates nothing on this system.
std::optional<StreamMode> ParseStreamMode(std::u16string_view mode)
{
    if (mode.empty())
        return std::nullopt;
    const bool isBoth = mode.find(u'+') != std::u16string_view::npos;
    const DWORD both = GENERIC_READ | GENERIC_WRITE;
    StreamMode result;
    switch (mode.front()) {
    case u'r': result = { isBoth ? both : GENERIC_READ, OPEN_EXISTING, "r" }; break;
    case u'w': result = { isBoth ? both : GENERIC_WRITE, CREATE_ALWAYS, "w" }; break;
    case u'a': result = { isBoth ? both : GENERIC_WRITE, OPEN_ALWAYS, "a" }; break;
    default: return std::nullopt;
    }
    if (isBoth)
        result.hostMode += '+';
    return result;
}

} // namespace

DWORD GetFileAttributesW(LPCWSTR name)
{
    const auto facts = FactsOf(name);
    return facts ? facts->attributes : INVALID_FILE_ATTRIBUTES;
}

BOOL GetFileAttributesExW(LPCWSTR name, GET_FILEEX_INFO_LEVELS level, LPVOID data)
{
    if (level != GetFileExInfoStandard || !data)
        return Fail(ERROR_INVALID_PARAMETER);
    const auto facts = FactsOf(name);
    if (!facts)
        return FALSE;
    *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data) = { facts->attributes,
                                                       facts->created,
                                                       facts->accessed,
                                                       facts->written,
                                                       static_cast<DWORD>(facts->sizeBytes >> 32),
                                                       static_cast<DWORD>(facts->sizeBytes) };
    return TRUE;
}

BOOL DeleteFileW(LPCWSTR name)
{
    if (!name || !*name)
        return Fail(ERROR_PATH_NOT_FOUND);
    const auto error = DeleteHostFile(ParseDevicePath(name));
    return error == ERROR_SUCCESS ? TRUE : Fail(error);
}

BOOL CreateDirectoryW(LPCWSTR name, SECURITY_ATTRIBUTES*)
{
    if (!name || !*name)
        return Fail(ERROR_PATH_NOT_FOUND);
    const auto path = ParseDevicePath(name);
    if (path.IsRoot() || FindOnHost(path).Found())
        return Fail(ERROR_ALREADY_EXISTS);
    DWORD error = ERROR_PATH_NOT_FOUND;
    const auto hostPath = PlaceForNew(path, error);
    if (hostPath.empty())
        return Fail(error);
    if (mkdir(hostPath.c_str(), 0777) == 0)
        return TRUE;
    return Fail(errno == EEXIST ? ERROR_ALREADY_EXISTS : ErrorFromHost(errno));
}

std::FILE* _wfopen(const WCHAR* name, const WCHAR* mode)
{
    const auto streamMode = mode ? ParseStreamMode(mode) : std::nullopt;
    if (!name || !streamMode || IsDeviceName(name)) {
        errno = streamMode ? ENOENT : EINVAL;
        return nullptr;
    }
    const auto opened = OpenDeviceFile(name, streamMode->access, streamMode->disposition, FILE_ATTRIBUTE_NORMAL);
    if (opened.descriptor < 0) {
        errno = opened.error == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
        return nullptr;
    }
    const bool isReady = !opened.losesContents || ftruncate(opened.descriptor, 0) == 0;
    std::FILE* const stream = isReady ? fdopen(opened.descriptor, streamMode->hostMode.c_str()) : nullptr;
    if (!stream)
        close(opened.descriptor);
    return stream;
}
