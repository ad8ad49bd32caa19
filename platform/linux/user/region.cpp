#include "platform/linux/user/region.h"

namespace cardsong::user {

// A rectangle whose edges are swapped holds no pixel.
Region::Region(const RECT& rect) : Region()
{
    if (rect.right <= rect.left || rect.bottom <= rect.top)
        return;
    const cairo_rectangle_int_t rectangle{ rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top };
    cairo_region_union_rectangle(m_region, &rectangle);
}

RECT Region::Bounds() const
{
    if (IsEmpty())
        return {};
    cairo_rectangle_int_t box{};
    cairo_region_get_extents(m_region, &box);
    return { box.x, box.y, box.x + box.width, box.y + box.height };
}

} // namespace cardsong::user
