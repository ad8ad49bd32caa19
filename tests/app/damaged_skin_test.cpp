// The whole player with skin pictures that are missing, cut short, of another kind, or not what they say.
#include "tests/app/player_fixture.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>

using namespace cardsong::test;

namespace {

class DamagedSkin : public PlayerTest {
protected:
    // Lays `damaged` over every picture of the installed skin.
    void Damage(const std::function<std::string(const std::string&)>& damaged)
    {
        const std::filesystem::path installed = std::filesystem::path(CARDSONG_DEVICE_TREE) / "Windows";
        int count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(installed)) {
            if (entry.path().extension() != ".gif")
                continue;
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string whole((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
            m_device.WriteFile("user/Windows/" + entry.path().filename().string(), damaged(whole));
            ++count;
        }
        ASSERT_GT(count, 40);
    }

    // Starts, plays, taps every key, and ends; what is shown may be blank.
    void PlayThrough()
    {
        Start();
        ASSERT_NE(m_window, nullptr);
        AddSong("a.mp3", 30);
        Press(VK_RETURN);
        Advance(20);
        EXPECT_EQ(Narrow(g_elapsedText), "0:02");
        for (const POINT key : { kPlayKey, kPlayKey, kNextKey, kBackKey, kStopKey })
            Tap(key);
        Advance(5);
        Tap(kExitKey);
        EXPECT_TRUE(m_hasQuit);
    }
};

} // namespace

TEST_F(DamagedSkin, OfNoPictureAtAllThePlayerPlays)
{
    Damage([](const std::string&) { return std::string(); });
    PlayThrough();
}

TEST_F(DamagedSkin, OfPicturesCutShortThePlayerPlays)
{
    Damage([](const std::string& whole) { return whole.substr(0, whole.size() / 2); });
    PlayThrough();
}

TEST_F(DamagedSkin, OfForeignPicturesThePlayerPlays)
{
    Damage([](const std::string&) { return "\x89PNG\r\n\x1A\n" + std::string(100, 'p'); });
    PlayThrough();
}

TEST_F(DamagedSkin, OfPicturesThatClaimTheGreatestSizeThePlayerPlays)
{
    Damage([](const std::string& whole) { return whole.substr(0, 6) + "\xFF\xFF\xFF\xFF" + whole.substr(10); });
    PlayThrough();
}

TEST_F(DamagedSkin, OfPicturesOfOnePixelThePlayerPlays)
{
    Damage([](const std::string& whole) { return whole.substr(0, 6) + std::string("\1\0\1\0", 4) + whole.substr(10); });
    PlayThrough();
}
