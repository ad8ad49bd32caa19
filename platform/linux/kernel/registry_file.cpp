#include "platform/linux/kernel/registry_file.h"

#include "platform/device_tree.h"
#include "platform/linux/kernel/registry_lock.h"
#include "platform/linux/kernel/registry_text.h"
#include "platform/linux/kernel/unicode.h"

#include <algorithm>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <glib.h>
#include <memory>
#include <mutex>
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

// The file read last. Every writer replaces the file, and a file that is held open shares its number with no other: so
// another version always looks different.
struct Remembered {
    std::mutex mutex;
    std::string path;
    int descriptor = -1; // of what `keyFile` was read from; -1 when there was nothing to read
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

void Forget(Remembered& remembered)
{
    remembered.path.clear();
    if (remembered.descriptor >= 0)
        close(remembered.descriptor);
    remembered.descriptor = -1;
    remembered.facts = {};
}

// The first `sizeBytes` of the file, or fewer where it ends before.
std::string ReadWhole(int descriptor, off_t sizeBytes)
{
    std::string text(static_cast<std::size_t>(sizeBytes), '\0');
    std::size_t done = 0;
    while (done < text.size()) {
        const auto got = TEMP_FAILURE_RETRY(read(descriptor, text.data() + done, text.size() - done));
        if (got <= 0)
            break;
        done += static_cast<std::size_t>(got);
    }
    text.resize(done);
    return text;
}

// The file as it stands. A missing or foreign file is an empty registry.
void ReadAnew(Remembered& remembered, const std::string& path)
{
    Forget(remembered);
    remembered.keyFile = NewKeyFile();
    remembered.path = path;
    remembered.descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); // a pipe must not stop the program
    auto& facts = remembered.facts;
    if (remembered.descriptor < 0 || fstat(remembered.descriptor, &facts) != 0 || !S_ISREG(facts.st_mode) ||
        facts.st_size > kMaxFileBytes)
        return;
    const auto text = ReadWhole(remembered.descriptor, facts.st_size);
    if (!g_key_file_load_from_data(remembered.keyFile.get(), text.data(), text.size(), G_KEY_FILE_KEEP_COMMENTS,
                                   nullptr))
        remembered.keyFile = NewKeyFile(); // a failed reading leaves the first groups behind
}

// The registry as it stands now. The mutex is held.
GKeyFile* Current(Remembered& remembered)
{
    struct stat facts = {};
    const auto path = FilePath();
    if (stat(path.c_str(), &facts) != 0)
        facts = {};
    if (remembered.path != path || !LooksTheSame(remembered.facts, facts))
        ReadAnew(remembered, path);
    return remembered.keyFile.get();
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

// Also those that only stand in the names of keys below them.
std::vector<std::u16string> Subkeys(GKeyFile* keyFile, std::u16string_view key)
{
    const std::u16string above = std::u16string(kRootName) + std::u16string(key) + (key.empty() ? u"" : u"\\");
    std::vector<std::u16string> names;
    const OwnedList groups(g_key_file_get_groups(keyFile, nullptr), g_strfreev);
    for (char** group = groups.get(); *group; ++group) {
        const auto path = RegistryNameFromText(*group);
        if (!EqualIgnoringCase(std::u16string_view(path).substr(0, above.size()), above))
            continue;
        const auto name = path.substr(above.size(), path.find(u'\\', above.size()) - above.size());
        const auto isIt = [&name](const std::u16string& known) { return EqualIgnoringCase(known, name); };
        if (!name.empty() && std::ranges::none_of(names, isIt))
            names.push_back(name);
    }
    return names;
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

bool WriteWhole(const std::string& path, std::string_view text)
{
    const int descriptor = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW, 0666);
    if (descriptor < 0)
        return false;
    while (!text.empty()) {
        const auto put = TEMP_FAILURE_RETRY(write(descriptor, text.data(), text.size()));
        if (put <= 0)
            break;
        text.remove_prefix(static_cast<std::size_t>(put));
    }
    const bool isWhole = text.empty() && fsync(descriptor) == 0;
    return close(descriptor) == 0 && isWhole;
}

// The lock is held: the unfinished file has the same name each time, so that a crash leaves one at most.
bool Replace(GKeyFile* keyFile)
{
    const OwnedText text(g_key_file_to_data(keyFile, nullptr, nullptr), g_free);
    const auto path = FilePath();
    const auto unfinished = path + ".new";
    if (WriteWhole(unfinished, WithTidyLines(text.get())) && std::rename(unfinished.c_str(), path.c_str()) == 0)
        return true;
    unlink(unfinished.c_str());
    return false;
}

bool Change(const std::function<void(GKeyFile*)>& change)
{
    static auto* const s_writers = new std::mutex; // readers do not wait for the lock of the file
    const std::lock_guard writer(*s_writers);
    const auto& user = CurrentDeviceTree().userDirectory;
    std::error_code ignored;
    std::filesystem::create_directories(user, ignored);
    const RegistryLock lock(user + "/registry.lock");
    if (!lock.IsHeld())
        return false;
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
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
    return key.empty() || FindGroup(keyFile, key) || !Subkeys(keyFile, key).empty();
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

std::vector<std::u16string> RegistrySubkeys(std::u16string_view key)
{
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
    return Subkeys(Current(remembered), key);
}

std::vector<std::u16string> RegistryValueNames(std::u16string_view key)
{
    auto& remembered = TheRemembered();
    const std::lock_guard guard(remembered.mutex);
    GKeyFile* const keyFile = Current(remembered);
    std::vector<std::u16string> names;
    const auto group = FindGroup(keyFile, key);
    const OwnedList entries(group ? g_key_file_get_keys(keyFile, group->c_str(), nullptr, nullptr) : nullptr,
                            g_strfreev);
    for (char** entry = entries.get(); entry && *entry; ++entry)
        names.push_back(RegistryNameFromText(*entry));
    return names;
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
