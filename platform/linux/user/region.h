// A set of pixels as a value. Knows no window: whoever holds it says whose coordinates it is in.
#pragma once

#include "platform/linux/ce/types.h"

#include <cairo.h>

#include <utility>

namespace cardsong::user {

class Region {
public:
    Region() = default;
    explicit Region(const RECT& rect);
    Region(const Region& other);
    Region(Region&& other) noexcept : m_region(std::exchange(other.m_region, nullptr)) {}
    Region& operator=(Region other) noexcept
    {
        std::swap(m_region, other.m_region);
        return *this;
    }
    ~Region();

    bool IsEmpty() const { return m_region == nullptr || cairo_region_is_empty(m_region) != 0; }
    // All zeros when the region is empty.
    RECT Bounds() const;
    void Intersect(const Region& other);
    void Intersect(const RECT& rect);
    void Subtract(const Region& other);
    void Subtract(const RECT& rect);
    void Add(const Region& other);
    void Translate(int dx, int dy);
    // Never null; valid until the region changes.
    const cairo_region_t* Get() const;

private:
    cairo_region_t* m_region = nullptr; // null: empty
};

} // namespace cardsong::user
