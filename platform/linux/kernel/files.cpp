// Open files: reading, writing, positions. And the functions on files by name.
#include "platform/linux/kernel/device_paths.h"
#include "platform/linux/kernel/devices.h"
#include "platform/linux/kernel/file_opening.h"
#include "platform/linux/kernel/handles.h"
#include "platform/linux/kernel/open_files.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

constexpr DWORD kReadData = 1;  // FILE_READ_DATA
constexpr DWORD kWriteData = 2; // FILE_WRITE_DATA

DWORD GenericAccess(DWORD access)
{
    DWORD generic = access & (GENERIC_READ | GENERIC_WRITE);
    if ((access & kReadData) != 0)
        generic |= GENERIC_READ;
    if ((access & kWriteData) != 0)
        generic |= GENERIC_WRITE;
    return generic;
}

class FileObject final : public KernelObject {
public:
    FileObject(int descriptor, DWORD access, OpenFileEntry entry)
        : m_descriptor(descriptor), m_access(access), m_entry(std::move(entry))
    {
    }
    ~FileObject() override { close(m_descriptor); }

    DWORD Read(void* buffer, DWORD sizeBytes, DWORD& readBytes)
    {
        if ((m_access & GENERIC_READ) == 0)
            return ERROR_ACCESS_DENIED;
        while (readBytes < sizeBytes) {
            const auto got = read(m_descriptor, static_cast<char*>(buffer) + readBytes, sizeBytes - readBytes);
            if (got < 0 && errno == EINTR)
                continue;
            if (got < 0)
                return ErrorFromHost(errno);
            if (got == 0)
                break;
            readBytes += static_cast<DWORD>(got);
        }
        return ERROR_SUCCESS;
    }

    DWORD Write(const void* buffer, DWORD sizeBytes, DWORD& writtenBytes)
    {
        if ((m_access & GENERIC_WRITE) == 0)
            return ERROR_ACCESS_DENIED;
        std::call_once(m_marked, [this] { MarkForArchiving(m_descriptor); });
        while (writtenBytes < sizeBytes) {
            const auto put =
                write(m_descriptor, static_cast<const char*>(buffer) + writtenBytes, sizeBytes - writtenBytes);
            if (put < 0 && errno == EINTR)
                continue;
            if (put < 0)
                return ErrorFromHost(errno);
            writtenBytes += static_cast<DWORD>(put);
        }
        return ERROR_SUCCESS;
    }

    DWORD Flush() const
    {
        if ((m_access & GENERIC_WRITE) == 0)
            return ERROR_ACCESS_DENIED;
        return fsync(m_descriptor) == 0 ? ERROR_SUCCESS : ErrorFromHost(errno);
    }

    // The new position, or nothing before the start of the file.
    std::optional<std::uint64_t> Seek(std::int64_t distance, int origin) const
    {
        const auto position = lseek(m_descriptor, distance, origin);
        return position < 0 ? std::nullopt : std::optional(static_cast<std::uint64_t>(position));
    }

    std::optional<std::uint64_t> SizeBytes() const
    {
        struct stat facts = {};
        return fstat(m_descriptor, &facts) == 0 ? std::optional(static_cast<std::uint64_t>(facts.st_size))
                                                : std::nullopt;
    }

private:
    const int m_descriptor;
    const DWORD m_access;
    std::once_flag m_marked;
    OpenFileEntry m_entry;
};

BOOL Fail(DWORD error)
{
    SetLastError(error);
    return FALSE;
}

BOOL Answer(DWORD error)
{
    return error == ERROR_SUCCESS ? TRUE : Fail(error);
}

// The low half as the result, the high half where the caller wants it; a low half that equals the failure value is told
// from a failure by the last error.
DWORD SplitNumber(std::uint64_t value, DWORD* high)
{
    if (high)
        *high = static_cast<DWORD>(value >> 32);
    SetLastError(ERROR_SUCCESS);
    return static_cast<DWORD>(value);
}

HANDLE OpenFile(std::u16string_view name, DWORD access, DWORD share, DWORD disposition, DWORD attributes)
{
    auto opened = OpenDeviceFile(name, access, disposition, attributes);
    auto error = opened.error;
    auto entry =
        opened.descriptor < 0 ? std::nullopt : OpenFileEntry::Enter(IdentityOf(opened.descriptor), access, share);
    if (opened.descriptor >= 0 && !entry)
        error = ERROR_SHARING_VIOLATION;
    else if (opened.losesContents && ftruncate(opened.descriptor, 0) != 0)
        error = ErrorFromHost(errno);
    if (error != ERROR_SUCCESS) {
        if (opened.descriptor >= 0)
            close(opened.descriptor);
        SetLastError(error);
        return INVALID_HANDLE_VALUE;
    }
    const HANDLE handle = InsertHandle(std::make_shared<FileObject>(opened.descriptor, access, std::move(*entry)));
    if (!handle)
        return INVALID_HANDLE_VALUE;
    const bool tellsExisting = disposition == CREATE_ALWAYS || disposition == OPEN_ALWAYS;
    SetLastError(opened.existed && tellsExisting ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
    return handle;
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

HANDLE CreateFileW(LPCWSTR name, DWORD access, DWORD share, SECURITY_ATTRIBUTES*, DWORD disposition,
                   DWORD flagsAndAttributes, HANDLE)
{
    if (!name) {
        SetLastError(ERROR_PATH_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    if (IsDeviceName(name))
        return OpenDevice(name);
    return OpenFile(name, GenericAccess(access), share, disposition, flagsAndAttributes);
}

BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD sizeBytes, LPDWORD readBytes, OVERLAPPED*)
{
    DWORD done = 0;
    const auto object = ObjectAs<FileObject>(file);
    const BOOL result = object ? Answer(object->Read(buffer, sizeBytes, done)) : FALSE;
    if (readBytes)
        *readBytes = done;
    return result;
}

BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD sizeBytes, LPDWORD writtenBytes, OVERLAPPED*)
{
    DWORD done = 0;
    const auto object = ObjectAs<FileObject>(file);
    const BOOL result = object ? Answer(object->Write(buffer, sizeBytes, done)) : FALSE;
    if (writtenBytes)
        *writtenBytes = done;
    return result;
}

BOOL FlushFileBuffers(HANDLE file)
{
    const auto object = ObjectAs<FileObject>(file);
    return object ? Answer(object->Flush()) : FALSE;
}

DWORD SetFilePointer(HANDLE file, LONG distance, LONG* distanceHigh, DWORD method)
{
    constexpr int kOrigins[] = { SEEK_SET, SEEK_CUR, SEEK_END };
    const auto object = ObjectAs<FileObject>(file);
    if (!object)
        return INVALID_SET_FILE_POINTER;
    if (method > FILE_END) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_SET_FILE_POINTER;
    }
    // Without a high half the distance is signed; with one, the two halves are one signed number.
    std::int64_t whole = distance;
    if (distanceHigh)
        whole = static_cast<std::int64_t>(static_cast<std::uint64_t>(static_cast<DWORD>(*distanceHigh)) << 32 |
                                          static_cast<DWORD>(distance));
    const auto before = object->Seek(0, SEEK_CUR);
    const auto position = object->Seek(whole, kOrigins[method]);
    if (!position || (!distanceHigh && *position > std::numeric_limits<DWORD>::max())) {
        if (position && before)
            object->Seek(static_cast<std::int64_t>(*before), SEEK_SET);
        constexpr DWORD kNegativeSeek = 131;
        SetLastError(position ? ERROR_INVALID_PARAMETER : kNegativeSeek);
        return INVALID_SET_FILE_POINTER;
    }
    DWORD high = 0;
    const DWORD low = SplitNumber(*position, &high);
    if (distanceHigh)
        *distanceHigh = static_cast<LONG>(high);
    return low;
}

DWORD GetFileSize(HANDLE file, LPDWORD sizeHigh)
{
    const auto object = ObjectAs<FileObject>(file);
    if (!object)
        return INVALID_FILE_SIZE;
    const auto size = object->SizeBytes();
    if (!size) {
        SetLastError(ERROR_ACCESS_DENIED);
        return INVALID_FILE_SIZE;
    }
    return SplitNumber(*size, sizeHigh);
}
