// A set of pixels as a value. Knows no window: whoever holds it says whose coordinates it is in.
#pragma once

#include "platform/linux/ce/types.h"

#include <cairo.h>

#include <utility>

namespace cardsong::user {

class Region {
public:
    Region() : m_region(cairo_region_create()) {}
    explicit Region(const RECT& rect);
    Region(const Region& other) : m_region(cairo_region_copy(other.m_region)) {}
    Region(Region&& other) noexcept : Region() { std::swap(m_region, other.m_region); }
    Region& operator=(Region other) noexcept
    {
        std::swap(m_region, other.m_region);
        return *this;
    }
    ~Region() { cairo_region_destroy(m_region); }

    bool IsEmpty() const { return cairo_region_is_empty(m_region) != 0; }
    // All zeros when the region is empty.
    RECT Bounds() const;
    void Intersect(const Region& other) { cairo_region_intersect(m_region, other.m_region); }
    void Intersect(const RECT& rect) { Intersect(Region(rect)); }
    void Subtract(const Region& other) { cairo_region_subtract(m_region, other.m_region); }
    void Subtract(const RECT& rect) { Subtract(Region(rect)); }
    void Add(const Region& other) { cairo_region_union(m_region, other.m_region); }
    void Translate(int dx, int dy) { cairo_region_translate(m_region, dx, dy); }
    // Valid until the region changes.
    const cairo_region_t* Get() const { return m_region; }

private:
    cairo_region_t* m_region;
};

} // namespace cardsong::user
