#include "platform/host/skins.h"

#include <map>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;
using FoldersByName = std::map<std::string, Path>;

// Adds the folders of `tree` whose names are not there yet. Names with a dot in front are no skins, as everywhere.
void AddSkins(const Path& tree, FoldersByName& skins)
{
    std::error_code error;
    std::filesystem::directory_iterator entry(tree / "Skins", error);
    for (const std::filesystem::directory_iterator end; !error && entry != end; entry.increment(error)) {
        const std::u8string name = entry->path().filename().u8string();
        std::error_code unreadable;
        if (!name.starts_with(u8'.') && entry->is_directory(unreadable))
            skins.emplace(std::string(name.begin(), name.end()), entry->path());
    }
}

std::string NamesOf(const FoldersByName& skins)
{
    std::string names;
    for (const auto& [name, folder] : skins)
        names += (names.empty() ? "" : ", ") + name;
    return names;
}

} // namespace

std::variant<Path, SkinError> ChooseSkin(const std::string& name, const Path& userTree, const Path& installedTree)
{
    if (name.empty())
        return Path();
    FoldersByName skins;
    AddSkins(userTree, skins);
    AddSkins(installedTree, skins);
    const auto found = skins.find(name);
    if (found != skins.end())
        return found->second;
    return SkinError{ "--skin: there is no skin " + name + (skins.empty() ? "" : "; there is " + NamesOf(skins)) };
}

} // namespace cardsong::host
