// A card of many small real songs in a folder of its own, nested, removed at the end.
#pragma once

#include "library/song_format.h"
#include "platform/device_tree.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace cardsong::bench {

struct Song {
    std::string hostPath;
    WString devicePath;
    SongFormat format;
};

class SongTree {
public:
    // `names` files in folders of a hundred, ten of which lie in each folder above; the samples in turn.
    SongTree(int songs, const std::vector<std::string>& mp3Samples, const std::vector<std::string>& wmaSamples)
        : m_root(std::filesystem::temp_directory_path() / ("cardsong-bench-" + std::to_string(songs)))
    {
        std::filesystem::remove_all(m_root);
        for (int i = 0; i < songs; ++i)
            Add(i, mp3Samples, wmaSamples);
        kernel::DeviceTree tree;
        tree.cardDirectory = m_root.string();
        kernel::InstallDeviceTree(tree);
    }
    ~SongTree() { std::filesystem::remove_all(m_root); }
    SongTree(const SongTree&) = delete;
    SongTree& operator=(const SongTree&) = delete;

    const std::vector<Song>& Songs() const { return m_songs; }

private:
    void Add(int number, const std::vector<std::string>& mp3Samples, const std::vector<std::string>& wmaSamples)
    {
        const bool isMp3 = number % 10 != 9; // one song in ten is WMA
        const auto& samples = isMp3 ? mp3Samples : wmaSamples;
        const std::string& bytes = samples[static_cast<std::size_t>(number) % samples.size()];
        const std::string name = std::to_string(number / 1000) + "/" + std::to_string(number / 100 % 10) + "/song " +
                                 std::to_string(number) + (isMp3 ? ".mp3" : ".wma");
        std::filesystem::create_directories((m_root / name).parent_path());
        std::ofstream(m_root / name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        std::string device = "\\SDMMC\\" + name;
        for (char& letter : device)
            letter = letter == '/' ? '\\' : letter;
        m_songs.push_back({ (m_root / name).string(), WString(device.begin(), device.end()),
                            isMp3 ? SongFormat::Mp3 : SongFormat::Wma });
    }

    std::filesystem::path m_root;
    std::vector<Song> m_songs;
};

} // namespace cardsong::bench
