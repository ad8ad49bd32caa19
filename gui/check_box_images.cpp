#include "gui/check_box_images.h"

#include "gui/gif_bitmap.h"
#include "gui/skin_button.h"

CheckBoxImages::CheckBoxImages()
{
    m_images[0] = SkinImage(LoadGifBitmap(TEXT("\\Windows\\gui_checkbox_uncheck.gif")));
    m_images[1] = SkinImage(LoadGifBitmap(TEXT("\\Windows\\gui_checkbox_check.gif")));
}

std::shared_ptr<CheckBoxImages> CheckBoxImages::Shared()
{
    static std::weak_ptr<CheckBoxImages> s_loaded;
    std::shared_ptr<CheckBoxImages> images = s_loaded.lock();
    if (!images) {
        images = std::make_shared<CheckBoxImages>();
        s_loaded = images;
    }
    return images;
}

void CheckBoxImages::Draw(HDC target, const RECT& box, std::int32_t checkState)
{
    if (checkState >= 0 && static_cast<std::size_t>(checkState) < kSlots)
        m_images[static_cast<std::size_t>(checkState)].DrawKeyed(target, box.left, box.top, kSkinKeyColor);
}
