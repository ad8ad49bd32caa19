#include "gui/soft_key_bar.h"

#include "gui/soft_key_layout.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr LPCWSTR kBackgroundPath = TEXT("\\Windows\\gui_softkey_zone_bg.gif");
constexpr ButtonCaption kNoText = { nullptr, 0, 12, RGB(0xFF, 0xFF, 0xFF) };

} // namespace

bool SoftKeyBar::Create(HWND parent, HMODULE stringModule, int count, std::span<const int> ids,
                        std::span<const ButtonCaption> captions, std::span<const ButtonImageSet> imageSets)
{
    Destroy();
    const auto plan = PlanSoftKeys(count, ids);
    if (!plan)
        return false;
    m_background = SkinImage(CreateBitmapFromImageFile(parent, kBackgroundPath));
    MakePlaces(plan->size());
    for (std::size_t i = 0; i < plan->size(); ++i) {
        const SoftKeyPlan& key = (*plan)[i];
        if (key.id == kSoftKeyEmptyId)
            continue;
        const ButtonCaption& caption = key.takesCallersLook && i < captions.size() ? captions[i] : kNoText;
        const ButtonImageSet& skin = key.takesCallersLook && i < imageSets.size() ? imageSets[i] : key.skin;
        Buttons()[i].Create(parent, stringModule, key.id, key.place, &caption, &skin);
    }
    return true;
}

void SoftKeyBar::Destroy()
{
    m_background = SkinImage();
    ForgetButtons();
}

void SoftKeyBar::DrawBackground(HDC target)
{
    m_background.DrawKeyed(target, 0, kSoftKeyTopPx, kSkinKeyColor);
}

void SoftKeyBar::DrawAll(HDC target)
{
    DrawBackground(target);
    for (SkinButton& button : Buttons()) {
        if (button.Window() != nullptr)
            button.DrawInto(target);
    }
}

void SoftKeyBar::ArrowKey(WPARAM virtualKey)
{
    if (virtualKey != VK_UP && virtualKey != VK_DOWN)
        return;
    if (SkinButton* button = Find(virtualKey == VK_UP ? kUpButtonId : kDownButtonId))
        SendMessageW(button->Window(), BM_CLICK, 0, 0);
}

void SoftKeyBar::SetStringModule(HMODULE module)
{
    for (SkinButton& button : Buttons())
        button.SetStringModule(module);
}

void SoftKeyBar::SetCaption(UINT id, const ButtonCaption& caption)
{
    if (SkinButton* button = Find(id))
        button->SetCaption(caption);
}

void SoftKeyBar::SetCaptions(std::span<const ButtonCaption> captions)
{
    for (std::size_t i = 0; i < std::min(captions.size(), Buttons().size()); ++i)
        Buttons()[i].SetCaption(captions[i]);
}

void SoftKeyBar::ReloadCaption(UINT id, HMODULE stringModule)
{
    SetStringModule(stringModule);
    for (SkinButton& button : Buttons()) {
        if (id == 0 || &button == Find(id))
            button.ReloadCaption();
    }
}

void SoftKeyBar::SetKeyColor(UINT id, COLORREF key)
{
    for (SkinButton& button : Buttons()) {
        if (id == 0 || &button == Find(id))
            button.SetKeyColor(key);
    }
}

void SoftKeyBar::SetImage(UINT id, ButtonFace face, LPCWSTR path)
{
    for (SkinButton& button : Buttons()) {
        if (id != 0 && button.ControlId() == id)
            button.SetImage(face, path);
    }
}
