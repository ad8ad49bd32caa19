#include "platform/linux/kernel/folder_names.h"

#include "platform/linux/kernel/host_names.h"
#include "platform/linux/kernel/unicode.h"

#include <array>
#include <dirent.h>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <unordered_map>

namespace cardsong::kernel {
namespace {

using NameTable = std::unordered_map<std::u16string, std::string>; // folded device name to host name

constexpr std::size_t kRememberedFolders = 4;
constexpr std::size_t kMaxRememberedNames = 20'000; // some 2 MB; a larger folder is read anew each time
// A change within the granularity of the file system's time stamps (2 s on FAT) cannot be seen in them.
constexpr std::time_t kSettledSeconds = 4;

struct RememberedFolder {
    std::string path;
    struct timespec changed = {};
    ino_t inode = 0;
    NameTable names;
};

NameTable ReadNames(const std::string& hostFolder)
{
    NameTable names;
    const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir(hostFolder.c_str()), closedir);
    if (!folder)
        return names;
    while (const dirent* const entry = readdir(folder.get())) {
        const std::string hostName = entry->d_name;
        auto [known, isNew] = names.try_emplace(ToLower(DeviceNameFromHost(hostName)), hostName);
        if (!isNew && hostName < known->second)
            known->second = hostName;
    }
    return names;
}

class FolderMemory {
public:
    std::optional<std::string> Find(const std::string& hostFolder, const std::u16string& foldedName)
    {
        struct stat facts = {};
        if (stat(hostFolder.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode))
            return std::nullopt;
        const std::lock_guard lock(m_mutex);
        for (const auto& folder : m_folders) {
            if (folder.path == hostFolder && IsUnchanged(folder, facts))
                return Answer(folder.names, foldedName);
        }
        auto names = ReadNames(hostFolder);
        const auto answer = Answer(names, foldedName);
        if (names.size() <= kMaxRememberedNames && std::time(nullptr) - facts.st_mtim.tv_sec > kSettledSeconds) {
            m_folders[m_next] = { hostFolder, facts.st_mtim, facts.st_ino, std::move(names) };
            m_next = (m_next + 1) % kRememberedFolders;
        }
        return answer;
    }

private:
    static bool IsUnchanged(const RememberedFolder& folder, const struct stat& facts)
    {
        return folder.inode == facts.st_ino && folder.changed.tv_sec == facts.st_mtim.tv_sec &&
               folder.changed.tv_nsec == facts.st_mtim.tv_nsec;
    }
    static std::optional<std::string> Answer(const NameTable& names, const std::u16string& foldedName)
    {
        const auto found = names.find(foldedName);
        return found == names.end() ? std::nullopt : std::optional(found->second);
    }

    std::mutex m_mutex;
    std::array<RememberedFolder, kRememberedFolders> m_folders;
    std::size_t m_next = 0;
};

} // namespace

std::optional<std::string> FindNameIgnoringCase(const std::string& hostFolder, std::u16string_view deviceName)
{
    static auto* const s_memory = new FolderMemory;
    return s_memory->Find(hostFolder, ToLower(deviceName));
}

} // namespace cardsong::kernel
