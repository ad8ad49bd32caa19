// The device's files and the card.
#include "platform/device_tree.h"
#include "platform/host/installed_tree.h"
#include "platform/host/skins.h"
#include "platform/linux/host/card_folder.h"
#include "platform/linux/host/device_layout.h"
#include "platform/linux/host/doctor_findings.h"
#include "platform/linux/kernel/module_object.h"

#include <sys/statvfs.h>
#include <unistd.h>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

constexpr std::u16string_view kMainPicture = u"\\Windows\\gui_musicplayer_background.gif";
constexpr std::u16string_view kOwnTexts = u"\\Windows\\cardsong.resources.dll";
constexpr std::uint64_t kLeastFreeBytes = 1024 * 1024; // for a long play list

bool IsModule(const std::u16string& devicePath)
{
    DWORD error = 0;
    const auto module = kernel::LoadModule(devicePath, error);
    return module && module->IsModule();
}

std::u16string ModuleOf(std::uint16_t language)
{
    char16_t name[] = u"\\Windows\\TAVO_StringTable_0000.dll";
    for (std::size_t digit = 0; digit < 4; ++digit)
        name[std::size(name) - 6 - digit] = u"0123456789abcdef"[language >> 4 * digit & 0xF];
    return name;
}

std::string Narrow(std::u16string_view text)
{
    return { text.begin(), text.end() };
}

// What is left of `path` when the parts that do not exist are taken off its end.
Path ExistingPart(Path path)
{
    std::error_code error;
    while (!std::filesystem::exists(path, error) && path.has_relative_path())
        path = path.parent_path();
    return path.empty() ? Path(".") : path;
}

// A file system that does not tell its size is not known to be full.
bool IsFull(const Path& folder)
{
    struct statvfs disk = {};
    return statvfs(folder.c_str(), &disk) == 0 && disk.f_blocks > 0 &&
           std::uint64_t{ disk.f_bavail } * disk.f_frsize < kLeastFreeBytes;
}

} // namespace

Finding LookAtCard(const Options& options)
{
    const std::string& folder = options.cardDirectory;
    std::error_code error;
    if (!std::filesystem::is_directory(folder, error))
        return { Verdict::Bad, "there is no folder " + folder + "; --card names another one" };
    if (access(folder.c_str(), R_OK | X_OK) != 0)
        return { Verdict::Bad, folder + " may not be read" };
    if (!FindCard(folder, std::nullopt))
        return { Verdict::Bad, folder + " is empty, as where a card is away; --card names another folder" };
    return { Verdict::Good, folder };
}

Finding LookAtSkin(const Options& options)
{
    const auto tree = FindInstalledTree(ProgramFile());
    if (!tree)
        return { Verdict::Bad, ExplainMissingTree(ProgramFile()) };
    const auto skin = ChooseSkin(options.skin, options.deviceDirectory, *tree);
    if (const auto* const error = std::get_if<SkinError>(&skin))
        return { Verdict::Bad, error->message };
    LayOutDevice(options, *tree, std::get<Path>(skin));
    const auto picture = kernel::FindHostPath(WString(kMainPicture));
    if (!picture)
        return { Verdict::Bad, "pictures are missing in " + tree->string() + ": " + Narrow(kMainPicture) };
    return { Verdict::Good, Path(*picture).parent_path().string() };
}

Finding LookAtTexts(const Options& options)
{
    const auto tree = FindInstalledTree(ProgramFile());
    if (!tree)
        return { Verdict::Bad, ExplainMissingTree(ProgramFile()) };
    LayOutDevice(options, *tree, {});
    if (!IsModule(std::u16string(kOwnTexts)))
        return { Verdict::Bad, "the program's own are missing in " + tree->string() + ": " + Narrow(kOwnTexts) };
    const std::u16string module = ModuleOf(options.language);
    if (!IsModule(module))
        return { Verdict::Poor, Narrow(module) + " is missing or damaged; the player speaks its own words" };
    return { Verdict::Good, kernel::FindHostPath(module).value_or(Narrow(module)) };
}

Finding LookAtDeviceFolder(const Options& options)
{
    const std::string& folder = options.deviceDirectory;
    const Path existing = ExistingPart(folder);
    const std::string lost = ": the play list and settings will not be kept, and songs that are named not be played";
    if (access(existing.c_str(), W_OK | X_OK) != 0 || !std::filesystem::is_directory(existing))
        return { Verdict::Poor, folder + " cannot be written" + lost };
    if (IsFull(existing))
        return { Verdict::Poor, "the disk of " + folder + " is full" + lost };
    return { Verdict::Good, folder };
}

} // namespace cardsong::host
