// The real player, of which a script is played: does its steps, and tells what is seen.
#pragma once

#include "tests/app/model/model_engine.h"
#include "tests/app/model/player_view.h"
#include "tests/app/model/step.h"
#include "tests/app/player_fixture.h"

#include <optional>
#include <string>
#include <vector>

namespace cardsong::test {

// Of the list windows; the class of each has the same name.
constexpr LPCWSTR kPlayListTitle = TEXT("Play list");
constexpr LPCWSTR kLibraryTitle = TEXT("Songs on the card");

class PlayerUnderTest : public PlayerTest {
public:
    // All songs lie on the card and stand in the saved play list. The player is up afterwards.
    PlayerUnderTest(std::vector<CardSong> songs, std::optional<int> priority, std::uint64_t seed);
    ~PlayerUnderTest() override;
    PlayerUnderTest(const PlayerUnderTest&) = delete;
    PlayerUnderTest& operator=(const PlayerUnderTest&) = delete;

    // Any step but those before the start and Wait.
    void Take(const Step& step);
    void Wait(int milliseconds);
    void Exit(int road);

    [[nodiscard]] PlayerView View();
    [[nodiscard]] bool IsPlaying() const { return g_isPlaying != 0; }
    // Since the last asking.
    [[nodiscard]] int CountOpenedSongs();
    // Songs that left the play list are put back on the card, and to the end of the list.
    void PutBackSongsThatLeft();
    [[nodiscard]] std::uint64_t NowMs() const { return m_clock.NowMs(); }
    // What is left after exit, as text: the saved play list, and whatever should have gone.
    [[nodiscard]] std::string SavedList() const;
    [[nodiscard]] std::string LeftOver() const;

private:
    void TestBody() override {}
    void PutSong(const CardSong& song);
    void TapRow(UINT window, const CPtrListCtrl& list, int index);
    void TakeInput(const Step& step);
    void TakeSound(const Step& step);
    void TakeFile(const Step& step);
    void TakeWorld(const Step& step);
    // Nothing is above the main window.
    [[nodiscard]] bool IsOnTop() const;
    void SeeState(PlayerView& view) const;
    void SeeScreen(PlayerView& view) const;
    void SeeEngine(PlayerView& view);
    void HearEngine();

    std::vector<CardSong> m_songs;
    HWND m_slider = nullptr;
    bool m_isInFront = true;
    std::string m_rendered; // the last file that an engine took
    int m_renderings = 0;
};

// Pixels of a title in the title's font.
[[nodiscard]] long TitleWidthPx(const std::string& title);

} // namespace cardsong::test
