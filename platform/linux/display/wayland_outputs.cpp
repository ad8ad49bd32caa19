#include "platform/linux/display/wayland_outputs.h"

#include <algorithm>
#include <wayland-client.h>

namespace cardsong::display {

namespace {

constexpr std::uint32_t kNewestVersion = 3; // the last whose events mean anything here
constexpr SIZE kCommonDesktop = { 1024, 768 };

} // namespace

void WaylandOutputs::Add(wl_registry& registry, std::uint32_t name, std::uint32_t version)
{
    static constexpr wl_output_listener kListener = {
        .geometry = [](void* data, wl_output*, int, int, int, int, int, const char*, const char*,
                       int transform) { static_cast<Output*>(data)->isTurned = (transform & 1) != 0; },
        .mode =
            [](void* data, wl_output*, std::uint32_t flags, int width, int height, int) {
                if ((flags & WL_OUTPUT_MODE_CURRENT) == 0)
                    return;
                static_cast<Output*>(data)->widthPx = width;
                static_cast<Output*>(data)->heightPx = height;
            },
        .done = kIgnoreEvent,
        .scale = [](void* data, wl_output*,
                    int scale) { static_cast<Output*>(data)->scale = std::clamp(scale, 1, kLargestScale); },
        .name = kIgnoreEvent,
        .description = kIgnoreEvent,
    };
    auto output = std::make_unique<Output>();
    output->name = name;
    output->object.reset(static_cast<wl_output*>(
        wl_registry_bind(&registry, name, &wl_output_interface, std::min(version, kNewestVersion))));
    wl_output_add_listener(output->object.get(), &kListener, output.get());
    m_outputs.push_back(std::move(output));
}

void WaylandOutputs::Remove(std::uint32_t name)
{
    std::erase_if(m_outputs, [name](const auto& output) { return output->name == name; });
}

void WaylandOutputs::SetShown(const wl_output* output, bool isShown)
{
    const auto found =
        std::ranges::find_if(m_outputs, [output](const auto& known) { return known->object.get() == output; });
    if (found != m_outputs.end())
        (*found)->isShown = isShown;
}

int WaylandOutputs::Scale() const
{
    const bool isAnyShown = std::ranges::any_of(m_outputs, [](const auto& output) { return output->isShown; });
    int scale = 1;
    for (const auto& output : m_outputs) {
        if (output->isShown || !isAnyShown)
            scale = std::max(scale, output->scale);
    }
    return scale;
}

SIZE WaylandOutputs::DesktopSizePx() const
{
    if (!IsDesktopKnown())
        return kCommonDesktop;
    const Output& output = *m_outputs.front();
    return output.isTurned ? SIZE{ output.heightPx, output.widthPx } : SIZE{ output.widthPx, output.heightPx };
}

SIZE WaylandOutputs::DesktopSize() const
{
    const SIZE size = DesktopSizePx();
    const int scale = IsDesktopKnown() ? m_outputs.front()->scale : 1;
    return { size.cx / scale, size.cy / scale };
}

bool WaylandOutputs::IsDesktopKnown() const
{
    return !m_outputs.empty() && m_outputs.front()->widthPx > 0 && m_outputs.front()->heightPx > 0;
}

} // namespace cardsong::display
