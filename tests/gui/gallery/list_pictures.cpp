#include "gui/skin_list_window.h"
#include "tests/gui/gallery/stage.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace cardsong::gallery {
namespace {

constexpr COLORREF kCaptionColor = RGB(0xFF, 0xFF, 0xFF);
constexpr int kTitleStringId = 17010;

struct Song {
    LPCWSTR name;
    LPCWSTR time;
};

constexpr Song kEnglishSongs[] = {
    { TEXT("1 Greensleeves.mp3"), TEXT("2:58") },
    { TEXT("2 Clair de lune, suite bergamasque.mp3"), TEXT("5:04") },
    { TEXT("3 Air & Gigue.wma"), TEXT("10:31") },
    { TEXT("4 La Mer.mp3"), TEXT("--:--") },
    { TEXT("5 The Lark Ascending.mp3"), TEXT("1:04:09") },
    { TEXT("6 Scarborough Fair.mp3"), TEXT("3:07") },
};
constexpr Song kTraditionalSongs[] = {
    { TEXT("1 茉莉花.mp3"), TEXT("4:29") },      { TEXT("2 彩雲追月 - 廣東音樂合奏.mp3"), TEXT("2:58") },
    { TEXT("3 二泉映月.wma"), TEXT("10:31") },   { TEXT("4 平湖秋月.mp3"), TEXT("--:--") },
    { TEXT("5 漁舟唱晚.mp3"), TEXT("1:04:09") }, { TEXT("6 陽關三疊.mp3"), TEXT("3:07") },
};
constexpr Song kSimplifiedSongs[] = {
    { TEXT("1 茉莉花.mp3"), TEXT("4:29") },      { TEXT("2 彩云追月 - 广东音乐合奏.mp3"), TEXT("2:58") },
    { TEXT("3 二泉映月.wma"), TEXT("10:31") },   { TEXT("4 平湖秋月.mp3"), TEXT("--:--") },
    { TEXT("5 渔舟唱晚.mp3"), TEXT("1:04:09") }, { TEXT("6 阳关三叠.mp3"), TEXT("3:07") },
};

void Copy(WStringView text, WCHAR (&field)[kSkinListTextUnits])
{
    std::ranges::copy(text.substr(0, kSkinListTextUnits - 1), field);
}

std::vector<SkinListItem> Items(const Stage& stage, std::size_t count)
{
    const auto songs = stage.Choose<std::span<const Song>>(kEnglishSongs, kTraditionalSongs, kSimplifiedSongs);
    std::vector<SkinListItem> items(count);
    for (std::size_t i = 0; i < count; ++i) {
        Copy(songs[i % songs.size()].name, items[i].mainText);
        Copy(songs[i % songs.size()].time, items[i].secondaryText);
        items[i].firstCheckState = i % 2 == 1 ? 1 : 0;
        items[i].secondCheckState = i % 3 == 0 ? 1 : 0;
    }
    return items;
}

// A list on the stage, as a screen of the player would make it.
class ListOnStage {
public:
    ListOnStage(Stage& stage, SkinListMode mode, std::size_t count) : m_stage(stage), m_items(Items(stage, count))
    {
        constexpr int ids[] = { 16, 29, 33, kSoftKeyListScrollId };
        const ButtonCaption captions[] = {
            { stage.Choose<LPCWSTR>(TEXT("Back"), TEXT("返回"), TEXT("返回")), 0, 14, kCaptionColor },
            { stage.Choose<LPCWSTR>(TEXT("Play"), TEXT("播放"), TEXT("播放")), 0, 14, kCaptionColor },
            { stage.Choose<LPCWSTR>(TEXT("Remove"), TEXT("移除"), TEXT("移除")), 0, 14, kCaptionColor },
        };
        m_list.SetDisplayMode(mode);
        m_list.SetSoftKeys(static_cast<int>(std::size(ids)), ids, captions);
        m_list.SetPageIndicator(SkinListPageIndicator::Shown);
        m_list.SetLongText(SkinListLongText::Swings);
        m_list.SetItems(m_items);
        m_list.Create(stage.Owner(), TEXT("list"), SkinListRedraw::AtOnce, 50);
        m_list.SetTitleString(kTitleStringId);
        m_list.SetItemCount(static_cast<std::int32_t>(count));
        Stage::Pump();
    }
    SkinListWnd& List() { return m_list; }
    void TapRow(LONG row)
    {
        const RECT& rect = kSkinListRowRects[static_cast<std::size_t>(row)];
        Stage::Tap({ 100, rect.top + 20 });
    }
    void Swing(int steps)
    {
        for (int i = 0; i < steps; ++i)
            m_stage.Advance(500);
    }

private:
    Stage& m_stage;
    std::vector<SkinListItem> m_items;
    SkinListWnd m_list;
};

void Empty(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 0);
    stage.Shoot();
}

void OnePage(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::Text, 3);
    list.TapRow(1);
    stage.Shoot();
}

void ManyPages(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 50'000);
    SendMessageW(list.List().Window(), WM_COMMAND, kDownButtonId, 0);
    list.TapRow(0);
    stage.Shoot();
}

void LastPage(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 6);
    SendMessageW(list.List().Window(), WM_COMMAND, kDownButtonId, 0);
    stage.Shoot();
}

void Checked(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 6);
    list.TapRow(3);
    stage.Shoot();
}

void TwoChecks(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::TwoChecks, 6);
    list.TapRow(0);
    stage.Shoot();
}

void Swinging(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 6);
    list.TapRow(1);
    list.Swing(4);
    stage.Shoot();
}

void Pressed(Stage& stage)
{
    ListOnStage list(stage, SkinListMode::CheckedText, 6);
    SendMessageW(GetDlgItem(list.List().Window(), kDownButtonId), BM_SETSTATE, TRUE, 0);
    SendMessageW(GetDlgItem(list.List().Window(), 29), BM_SETSTATE, TRUE, 0);
    stage.Shoot();
}

constexpr Picture kPictures[] = {
    { "list-empty", Empty },        { "list-one-page", OnePage }, { "list-many-pages", ManyPages },
    { "list-last-page", LastPage }, { "list-checked", Checked },  { "list-two-checks", TwoChecks },
    { "list-swinging", Swinging },  { "list-pressed", Pressed },
};

} // namespace

std::span<const Picture> ListPictures()
{
    return kPictures;
}

} // namespace cardsong::gallery
