#include "platform/linux/bus/class_lock.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace cardsong::bus {
namespace {

std::string FileFor(const std::string& folder, std::u16string_view className)
{
    std::string name;
    for (const char16_t unit : className) {
        const bool isCapital = unit >= u'A' && unit <= u'Z';
        const bool isPlain =
            (unit >= u'a' && unit <= u'z') || (unit >= u'0' && unit <= u'9') || unit == u'_' || unit == u'-';
        if (!isCapital && !isPlain)
            return {};
        name += static_cast<char>(isCapital ? unit - u'A' + u'a' : unit);
    }
    return name.empty() ? name : folder + "/" + name + ".lock";
}

// Of the open file, not of the process: a lock that can be asked about without taking it, and that a second opening in
// the same process does not share.
struct flock WholeFile()
{
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    return lock;
}

} // namespace

ClassLock::ClassLock(std::string folder, std::u16string_view className)
    : m_folder(std::move(folder)), m_file(FileFor(m_folder, className))
{
}

ClaimResult ClassLock::Claim()
{
    if (m_descriptor >= 0)
        return ClaimResult::Ours;
    if (m_file.empty())
        return ClaimResult::Unlocked;
    std::error_code ignored;
    std::filesystem::create_directories(m_folder, ignored);
    m_descriptor = open(m_file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (m_descriptor < 0)
        return ClaimResult::Unlocked;
    auto lock = WholeFile();
    if (fcntl(m_descriptor, F_OFD_SETLK, &lock) == 0)
        return ClaimResult::Ours;
    const bool isOthers = errno == EAGAIN || errno == EACCES;
    Release();
    return isOthers ? ClaimResult::Others : ClaimResult::Unlocked;
}

void ClassLock::Release()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_descriptor = -1;
}

bool ClassLock::IsTaken(const std::string& folder, std::u16string_view className)
{
    const std::string file = FileFor(folder, className);
    const int descriptor = file.empty() ? -1 : open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0)
        return false;
    auto lock = WholeFile();
    const bool isTaken = fcntl(descriptor, F_OFD_GETLK, &lock) == 0 && lock.l_type != F_UNLCK;
    close(descriptor);
    return isTaken;
}

} // namespace cardsong::bus
