#include "platform/linux/display/wayland_cursor.h"

#include "platform/linux/display/wayland_globals.h"

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <wayland-client.h>
#include <wayland-cursor.h>

namespace cardsong::display {

namespace {

constexpr int kCommonSize = 24; // in a window's units
constexpr int kLargestSize = 256;

int SizeOfArrow()
{
    const char* const text = std::getenv("XCURSOR_SIZE");
    int size = 0;
    if (text != nullptr)
        std::from_chars(text, text + std::strlen(text), size);
    return size > 0 && size <= kLargestSize ? size : kCommonSize;
}

const wl_cursor_image* ArrowOf(wl_cursor_theme& theme)
{
    for (const char* name : { "default", "left_ptr" }) {
        const wl_cursor* const cursor = wl_cursor_theme_get_cursor(&theme, name);
        if (cursor != nullptr && cursor->image_count > 0)
            return cursor->images[0];
    }
    return nullptr;
}

} // namespace

void WaylandCursor::Close()
{
    m_surface.reset();
    m_theme.reset();
}

void WaylandCursor::Show(wl_pointer& pointer, std::uint32_t serial, int scale)
{
    if (!m_theme || m_themeScale != scale)
        m_theme.reset(wl_cursor_theme_load(std::getenv("XCURSOR_THEME"), SizeOfArrow() * scale, &m_globals->Memory()));
    m_themeScale = scale;
    const wl_cursor_image* const arrow = m_theme ? ArrowOf(*m_theme) : nullptr;
    wl_buffer* const buffer =
        arrow != nullptr ? wl_cursor_image_get_buffer(const_cast<wl_cursor_image*>(arrow)) : nullptr;
    if (buffer == nullptr)
        return;
    if (!m_surface)
        m_surface.reset(wl_compositor_create_surface(&m_globals->Compositor()));
    const auto units = static_cast<std::uint32_t>(scale);
    // A compositor ends the connection over a picture that is no whole number of units large.
    const std::uint32_t divisor = arrow->width % units == 0 && arrow->height % units == 0 ? units : 1;
    wl_surface_set_buffer_scale(m_surface.get(), static_cast<int>(divisor));
    wl_surface_attach(m_surface.get(), buffer, 0, 0);
    wl_surface_damage_buffer(m_surface.get(), 0, 0, static_cast<int>(arrow->width), static_cast<int>(arrow->height));
    wl_surface_commit(m_surface.get());
    wl_pointer_set_cursor(&pointer, serial, m_surface.get(), static_cast<int>(arrow->hotspot_x / divisor),
                          static_cast<int>(arrow->hotspot_y / divisor));
}

void WaylandCursor::Hide(wl_pointer& pointer, std::uint32_t serial)
{
    wl_pointer_set_cursor(&pointer, serial, nullptr, 0, 0);
}

} // namespace cardsong::display
