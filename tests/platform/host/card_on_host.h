// A card's folder below a folder of its own, for tests that take the one or the other away.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace cardsong::test {

class CardOnHost {
public:
    CardOnHost()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "cardsong-card-XXXXXX").string();
        m_root = mkdtemp(pattern.data());
        std::filesystem::create_directories(Folder());
    }
    ~CardOnHost()
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_root, ignored);
    }
    CardOnHost(const CardOnHost&) = delete;
    CardOnHost& operator=(const CardOnHost&) = delete;

    std::filesystem::path Above() const { return m_root / "media"; }
    std::filesystem::path Folder() const { return Above() / "card"; }
    // In the folder above all.
    std::filesystem::path Beside(const char* name) const { return m_root / name; }

    void PutSong(const char* name = "a.mp3") const { std::ofstream(Folder() / name) << "x"; }
    void TakeAway() const { std::filesystem::rename(Folder(), Beside("away")); }
    void PutBack() const { std::filesystem::rename(Beside("away"), Folder()); }

private:
    std::filesystem::path m_root;
};

} // namespace cardsong::test
