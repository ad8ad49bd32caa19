#include "platform/linux/kernel/registry_file.h"

#include "platform/device_tree.h"
#include "platform/linux/kernel/registry_text.h"
#include "platform/linux/kernel/unicode.h"

#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <glib.h>
#include <memory>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace cardsong::kernel {
namespace {

constexpr std::u16string_view kRootName = u"HKEY_LOCAL_MACHINE\\";
constexpr off_t kMaxFileBytes = 4 << 20; // a hundred settings take some 10 KB; a larger file is not ours

using KeyFile = std::unique_ptr<GKeyFile, void (*)(GKeyFile*)>;
using OwnedText = std::unique_ptr<char, void (*)(void*)>;
using OwnedList = std::unique_ptr<char*, void (*)(char**)>;

std::string FilePath()
{
    return CurrentDeviceTree().userDirectory + "/registry.ini";
}

KeyFile NewKeyFile()
{
    return { g_key_file_new(), g_key_file_free };
}

// The file as it stands. A missing or foreign file is an empty registry.
KeyFile ReadKeyFile(const struct stat& facts)
{
    auto keyFile = NewKeyFile();
    const bool isReadable = S_ISREG(facts.st_mode) && facts.st_size <= kMaxFileBytes;
    if (!isReadable || !g_key_file_load_from_file(keyFile.get(), FilePath().c_str(), G_KEY_FILE_KEEP_COMMENTS, nullptr))
        return NewKeyFile(); // a failed reading leaves the first groups behind
    return keyFile;
}

// The file read last, and what it looked like; every writer replaces the file, so that each version has its own look.
struct Remembered {
    std::mutex mutex;
    std::string path;
    struct stat facts = {};
    KeyFile keyFile = NewKeyFile();
};

Remembered& TheRemembered()
{
    static auto* const s_remembered = new Remembered;
    return *s_remembered;
}

bool LooksTheSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
           a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

// The registry as it stands now. The mutex is held.
GKeyFile* Current(Remembered& remembered)
{
    struct stat facts = {};
    const auto path = FilePath();
    if (stat(path.c_str(), &facts) != 0)
        facts = {};
    if (remembered.path != path || !LooksTheSame(remembered.facts, facts)) {
        remembered.keyFile = ReadKeyFile(facts);
        remembered.facts = facts;
        remembered.path = path;
    }
    return remembered.keyFile.get();
}

void Forget(Remembered& remembered)
{
    remembered.path.clear();
}

// The group that bears the key's name, in its own spelling.
std::optional<std::string> FindGroup(GKeyFile* keyFile, std::u16string_view key)
{
    const std::u16string wanted = std::u16string(kRootName) + std::u16string(key);
    const OwnedList groups(g_key_file_get_groups(keyFile, nullptr), g_strfreev);
    for (char** group = groups.get(); *group; ++group) {
        if (EqualIgnoringCase(RegistryNameFromText(*group), wanted))
            return *group;
    }
    return std::nullopt;
}

bool HasSubkeys(GKeyFile* keyFile, std::u16string_view key)
{
    const std::u16string above = std::u16string(kRootName) + std::u16string(key) + u'\\';
    const OwnedList groups(g_key_file_get_groups(keyFile, nullptr), g_strfreev);
    for (char** group = groups.get(); *group; ++group) {
        const auto name = RegistryNameFromText(*group);
        if (EqualIgnoringCase(std::u16string_view(name).substr(0, above.size()), above))
            return true;
    }
    return false;
}

std::optional<std::string> FindEntry(GKeyFile* keyFile, const std::string& group, std::u16string_view name)
{
    const OwnedList entries(g_key_file_get_keys(keyFile, group.c_str(), nullptr, nullptr), g_strfreev);
    for (char** entry = entries.get(); entry && *entry; ++entry) {
        if (EqualIgnoringCase(RegistryNameFromText(*entry), name))
            return *entry;
    }
    return std::nullopt;
}

std::string GroupFor(GKeyFile* keyFile, std::u16string_view key)
{
    if (auto group = FindGroup(keyFile, key))
        return *std::move(group);
    return RegistryNameToText(std::u16string(kRootName) + std::u16string(key));
}

void AddGroup(GKeyFile* keyFile, const std::string& group)
{
    // The library adds a group only along with an entry.
    g_key_file_set_string(keyFile, group.c_str(), "new", "");
    g_key_file_remove_key(keyFile, group.c_str(), "new", nullptr);
}

// Held from before the file is read until after it is replaced, by one process at a time.
class FileLock {
public:
    FileLock()
    {
        const auto& user = CurrentDeviceTree().userDirectory;
        std::error_code ignored;
        std::filesystem::create_directories(user, ignored);
        m_descriptor = open((user + "/registry.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        m_isHeld = m_descriptor >= 0 && TEMP_FAILURE_RETRY(flock(m_descriptor, LOCK_EX)) == 0;
    }
    ~FileLock()
    {
        if (m_descriptor >= 0)
            close(m_descriptor); // lets the lock go
    }
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    bool IsHeld() const { return m_isHeld; }

private:
    int m_descriptor = -1;
    bool m_isHeld = false;
};

// One blank line between groups and none elsewhere: the library keeps those it read and adds its own. A comment stays
// above the line that it speaks of.
std::string WithTidyLines(std::string_view text)
{
    std::string tidy;
    std::string comments;
    while (!text.empty()) {
        const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
        const auto line = text.substr(0, end);
        text.remove_prefix(end);
        if (line == "\n")
            continue;
        comments += line;
        if (line.front() == '#')
            continue;
        if (line.front() == '[' && !tidy.empty())
            tidy += '\n';
        tidy += comments;
        comments.clear();
    }
    return tidy + comments;
}

bool Replace(GKeyFile* keyFile)
{
    const OwnedText text(g_key_file_to_data(keyFile, nullptr, nullptr), g_free);
    const auto contents = WithTidyLines(text.get());
    return g_file_set_contents_full(FilePath().c_str(), contents.data(), static_cast<gssize>(contents.size()),
                                    G_FILE_SET_CONTENTS_CONSISTENT, 0666, nullptr) != FALSE;
}

bool Change(const std::function<void(GKeyFile*)>& change)
{
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
    const FileLock lock;
    if (!lock.IsHeld())
        return false;
    GKeyFile* const keyFile = Current(remembered);
    change(keyFile);
    const bool isWritten = Replace(keyFile);
    Forget(remembered);
    return isWritten;
}

} // namespace

bool RegistryKeyExists(std::u16string_view key)
{
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
    GKeyFile* const keyFile = Current(remembered);
    return key.empty() || FindGroup(keyFile, key) || HasSubkeys(keyFile, key);
}

std::optional<RegistryValue> ReadRegistryValue(std::u16string_view key, std::u16string_view name)
{
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
    GKeyFile* const keyFile = Current(remembered);
    const auto group = FindGroup(keyFile, key);
    const auto entry = group ? FindEntry(keyFile, *group, name) : std::nullopt;
    if (!entry)
        return std::nullopt;
    const OwnedText text(g_key_file_get_string(keyFile, group->c_str(), entry->c_str(), nullptr), g_free);
    return text ? RegistryValueFromText(text.get()) : std::nullopt;
}

bool CreateRegistryKey(std::u16string_view key)
{
    return Change([&](GKeyFile* keyFile) {
        if (!FindGroup(keyFile, key))
            AddGroup(keyFile, GroupFor(keyFile, key));
    });
}

bool WriteRegistryValue(std::u16string_view key, std::u16string_view name, const RegistryValue& value)
{
    return Change([&](GKeyFile* keyFile) {
        const auto group = GroupFor(keyFile, key);
        const auto entry = FindEntry(keyFile, group, name).value_or(RegistryNameToText(name));
        g_key_file_set_string(keyFile, group.c_str(), entry.c_str(), RegistryValueToText(value).c_str());
    });
}

} // namespace cardsong::kernel
