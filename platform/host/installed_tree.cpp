#include "platform/host/installed_tree.h"

#include <array>

namespace cardsong::host {
namespace {

using Path = std::filesystem::path;

std::array<Path, 2> PlacesFor(const Path& program)
{
    const Path folder = program.parent_path();
    const Path data = (folder / CARDSONG_DATA_FROM_PROGRAM).lexically_normal();
    return { data / "cardsong" / "device", folder / "device" / "tree" };
}

std::string Text(const Path& path)
{
    const std::u8string text = path.u8string();
    return { text.begin(), text.end() };
}

} // namespace

std::optional<Path> FindInstalledTree(const Path& program)
{
    std::error_code error;
    for (const Path& tree : PlacesFor(program))
        if (std::filesystem::is_directory(tree / "Windows", error))
            return tree;
    return std::nullopt;
}

std::string ExplainMissingTree(const Path& program)
{
    const auto places = PlacesFor(program);
    return "the device's files are missing: no folder Windows in " + Text(places[0]) + " or in " + Text(places[1]);
}

} // namespace cardsong::host
