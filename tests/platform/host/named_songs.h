// A user's device and music on the host, and a start that names some of it.
#pragma once

#include "platform/linux/host/opened_songs.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace cardsong::host::test {

using Path = std::filesystem::path;

class NamedSongs : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::string name = ::testing::TempDir() + "cardsong-opened-XXXXXX";
        ASSERT_NE(mkdtemp(name.data()), nullptr);
        m_root = std::filesystem::canonical(name);
        std::filesystem::create_directories(UserDevice());
        Write(UserDevice() / "registry.ini", "volume");
        Write(UserDevice() / "Windows/play_list.txt", "the user's list");
    }
    void TearDown() override
    {
        std::filesystem::permissions(UserDevice(),
                                     std::filesystem::perms::owner_all); // else nothing of it can be removed
        std::filesystem::remove_all(m_root);
    }

    Path UserDevice() const { return m_root / "device"; }
    Path Card() const { return UserDevice() / ".cardsong-opened/Card"; }
    Path Music(const std::string& name) const { return m_root / "music" / name; }

    static void Write(const Path& file, const std::string& text)
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << text;
    }
    static std::string Read(const Path& file)
    {
        std::ifstream stream(file);
        return { std::istreambuf_iterator<char>(stream), {} };
    }

    // Opens them, and expects that nothing is in the way.
    Options Open(const std::vector<Path>& songs) const
    {
        Options options = OptionsFor(songs);
        EXPECT_EQ(OpenSongs(options), "");
        return options;
    }
    Options OptionsFor(const std::vector<Path>& songs) const
    {
        Options options;
        options.deviceDirectory = UserDevice();
        options.cardDirectory = "/card";
        options.songs.assign(songs.begin(), songs.end());
        return options;
    }

    Path m_root;
};

// The files of a folder and of those below it, by their paths from it; links to folders are followed.
inline std::vector<std::string> FilesBelow(const Path& folder)
{
    std::vector<std::string> files;
    const auto following = std::filesystem::directory_options::follow_directory_symlink;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, following)) {
        if (entry.is_regular_file())
            files.push_back(entry.path().lexically_relative(folder));
    }
    std::ranges::sort(files);
    return files;
}

using Names = std::vector<std::string>;

} // namespace cardsong::host::test
