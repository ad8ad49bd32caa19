#include "platform/linux/user/region.h"

namespace cardsong::user {

namespace {

cairo_rectangle_int_t ToCairo(const RECT& rect)
{
    return { rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top };
}

bool HasArea(const RECT& rect)
{
    return rect.right > rect.left && rect.bottom > rect.top;
}

} // namespace

Region::Region(const RECT& rect)
{
    if (!HasArea(rect))
        return;
    const auto rectangle = ToCairo(rect);
    m_region = cairo_region_create_rectangle(&rectangle);
}

Region::Region(const Region& other) : m_region(other.IsEmpty() ? nullptr : cairo_region_copy(other.m_region)) {}

Region::~Region()
{
    if (m_region != nullptr)
        cairo_region_destroy(m_region);
}

RECT Region::Bounds() const
{
    if (IsEmpty())
        return {};
    cairo_rectangle_int_t box{};
    cairo_region_get_extents(m_region, &box);
    return { box.x, box.y, box.x + box.width, box.y + box.height };
}

void Region::Intersect(const Region& other)
{
    if (IsEmpty())
        return;
    if (other.IsEmpty())
        *this = Region();
    else
        cairo_region_intersect(m_region, other.m_region);
}

void Region::Intersect(const RECT& rect)
{
    if (IsEmpty())
        return;
    if (!HasArea(rect)) {
        *this = Region();
        return;
    }
    const auto rectangle = ToCairo(rect);
    cairo_region_intersect_rectangle(m_region, &rectangle);
}

void Region::Subtract(const Region& other)
{
    if (!IsEmpty() && !other.IsEmpty())
        cairo_region_subtract(m_region, other.m_region);
}

void Region::Subtract(const RECT& rect)
{
    if (IsEmpty() || !HasArea(rect))
        return;
    const auto rectangle = ToCairo(rect);
    cairo_region_subtract_rectangle(m_region, &rectangle);
}

void Region::Add(const Region& other)
{
    if (other.IsEmpty())
        return;
    if (IsEmpty())
        *this = other;
    else
        cairo_region_union(m_region, other.m_region);
}

void Region::Translate(int dx, int dy)
{
    if (!IsEmpty())
        cairo_region_translate(m_region, dx, dy);
}

const cairo_region_t* Region::Get() const
{
    static const cairo_region_t* const empty = cairo_region_create();
    return m_region == nullptr ? empty : m_region;
}

} // namespace cardsong::user
