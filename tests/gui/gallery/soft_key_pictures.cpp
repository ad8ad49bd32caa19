#include "gui/soft_key_bar.h"
#include "tests/gui/gallery/stage.h"

namespace cardsong::gallery {
namespace {

constexpr COLORREF kCaptionColor = RGB(0xFF, 0xFF, 0xFF);

void DrawBar(Stage& stage, std::span<const int> ids, std::span<const ButtonCaption> captions)
{
    SoftKeyBar bar;
    if (!bar.Create(stage.Owner(), nullptr, static_cast<int>(ids.size()), ids, captions))
        return;
    Stage::Pump();
    const HDC context = GetDC(stage.Owner());
    bar.DrawAll(context);
    ReleaseDC(stage.Owner(), context);
    stage.Shoot();
}

void ThreeKeys(Stage& stage)
{
    constexpr int ids[] = { 18, 24, 22 };
    const ButtonCaption captions[] = {
        { stage.Choose<LPCWSTR>(TEXT("Exit"), TEXT("結束"), TEXT("退出")), 0, 14, kCaptionColor },
        { stage.Choose<LPCWSTR>(TEXT("Play list"), TEXT("播放清單"), TEXT("播放列表")), 0, 14, kCaptionColor },
    };
    DrawBar(stage, ids, captions);
}

constexpr Picture kPictures[] = {
    { "soft-keys-three", ThreeKeys },
};

} // namespace

std::span<const Picture> SoftKeyPictures()
{
    return kPictures;
}

} // namespace cardsong::gallery
