#include "platform/linux/kernel/host_files.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>

namespace cardsong::kernel {
namespace {

constexpr char kAttributeName[] = "user.DOSATTRIB";
constexpr DWORD kStoredAttributes =
    FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE;
constexpr std::size_t kMaxStoredBytes = 256;

// `read` is getxattr or fgetxattr on the file in question.
template <typename Read>
std::optional<DWORD> StoredAttributes(Read read)
{
    char text[kMaxStoredBytes + 1];
    const auto bytes = read(text, kMaxStoredBytes);
    if (bytes < 3 || text[0] != '0' || (text[1] != 'x' && text[1] != 'X'))
        return std::nullopt;
    text[bytes] = '\0';
    char* end = nullptr;
    const auto value = std::strtoul(text + 2, &end, 16);
    if (end == text + 2 || *end != '\0')
        return std::nullopt;
    return static_cast<DWORD>(value) & kStoredAttributes;
}

FILETIME ToFileTime(const statx_timestamp& time)
{
    constexpr std::int64_t kSecondsFrom1601To1970 = 11'644'473'600;
    constexpr std::int64_t kTicksPerSecond = 10'000'000; // of 100 ns
    constexpr std::int64_t kLastSecond = INT64_MAX / kTicksPerSecond - kSecondsFrom1601To1970 - 1;
    if (time.tv_sec < -kSecondsFrom1601To1970 || time.tv_sec > kLastSecond)
        return {};
    const auto ticks = (time.tv_sec + kSecondsFrom1601To1970) * kTicksPerSecond + time.tv_nsec / 100;
    const auto value = static_cast<std::uint64_t>(ticks);
    return { static_cast<DWORD>(value), static_cast<DWORD>(value >> 32) };
}

DWORD AttributesOf(const std::string& hostPath, const struct statx& facts)
{
    const bool isFolder = S_ISDIR(facts.stx_mode);
    const auto stored = StoredAttributes(
        [&](char* text, std::size_t bytes) { return getxattr(hostPath.c_str(), kAttributeName, text, bytes); });
    if (isFolder)
        return FILE_ATTRIBUTE_DIRECTORY | (stored.value_or(0) & ~FILE_ATTRIBUTE_ARCHIVE);
    DWORD attributes = stored.value_or(FILE_ATTRIBUTE_ARCHIVE);
    if ((facts.stx_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
        attributes |= FILE_ATTRIBUTE_READONLY;
    return attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
}

// Zeros on a failure, which no open file meets.
struct stat StatOf(int descriptor)
{
    struct stat facts = {};
    fstat(descriptor, &facts);
    return facts;
}

} // namespace

std::optional<HostFacts> ReadHostFacts(const std::string& hostPath)
{
    struct statx facts = {};
    if (statx(AT_FDCWD, hostPath.c_str(), 0, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0)
        return std::nullopt;
    if (!S_ISREG(facts.stx_mode) && !S_ISDIR(facts.stx_mode))
        return std::nullopt;
    HostFacts result;
    result.attributes = AttributesOf(hostPath, facts);
    result.created = ToFileTime((facts.stx_mask & STATX_BTIME) != 0 ? facts.stx_btime : facts.stx_mtime);
    result.accessed = ToFileTime(facts.stx_atime);
    result.written = ToFileTime(facts.stx_mtime);
    result.sizeBytes = S_ISDIR(facts.stx_mode) ? 0 : facts.stx_size;
    result.identity = { makedev(facts.stx_dev_major, facts.stx_dev_minor), facts.stx_ino };
    return result;
}

bool IsOrdinaryFile(int descriptor)
{
    return S_ISREG(StatOf(descriptor).st_mode);
}

HostIdentity IdentityOf(int descriptor)
{
    const auto facts = StatOf(descriptor);
    return { facts.st_dev, facts.st_ino };
}

std::uint64_t SizeOf(int descriptor)
{
    return static_cast<std::uint64_t>(StatOf(descriptor).st_size);
}

void StoreAttributes(int descriptor, DWORD attributes)
{
    constexpr char kDigits[] = "0123456789abcdef";
    const DWORD stored = attributes & kStoredAttributes;
    const char text[] = { '0', 'x', kDigits[stored >> 4], kDigits[stored & 0xF] };
    // A file system that keeps no attributes leaves the file an ordinary one.
    (void)!fsetxattr(descriptor, kAttributeName, text, sizeof text, 0);
}

void MarkForArchiving(int descriptor)
{
    const auto stored = StoredAttributes(
        [&](char* text, std::size_t bytes) { return fgetxattr(descriptor, kAttributeName, text, bytes); });
    if (stored && (*stored & FILE_ATTRIBUTE_ARCHIVE) == 0)
        StoreAttributes(descriptor, *stored | FILE_ATTRIBUTE_ARCHIVE);
}

std::string FolderOf(const std::string& hostPath)
{
    return hostPath.substr(0, hostPath.rfind('/'));
}

DWORD ErrorFromHost(int hostError)
{
    switch (hostError) {
    case ENOENT: return ERROR_FILE_NOT_FOUND;
    case ENOTDIR:
    case ELOOP: return ERROR_PATH_NOT_FOUND;
    case EEXIST: return ERROR_FILE_EXISTS;
    case ENOSPC:
    case EDQUOT: return ERROR_DISK_FULL;
    case ENAMETOOLONG:
    case EILSEQ: return ERROR_INVALID_NAME;
    case EMFILE:
    case ENFILE:
    case ENOMEM: return ERROR_NOT_ENOUGH_MEMORY;
    case EINVAL: return ERROR_INVALID_PARAMETER;
    default: return ERROR_ACCESS_DENIED;
    }
}

} // namespace cardsong::kernel
