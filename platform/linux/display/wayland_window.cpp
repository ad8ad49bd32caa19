#include "platform/linux/display/wayland_window.h"

#include "platform/host/viewport_rows.h"
#include "platform/linux/display/wayland_globals.h"

#include <algorithm>
#include <cmath>
#include <wayland-client.h>

namespace cardsong::display {

using namespace host;
namespace {

// Nobody else's numbers are to take all memory. A larger window has fewer pixels for each of its units, and is cut
// where it has more units than this.
constexpr LONG kLargestSidePx = 8192;

void WriteRow32(std::span<const std::uint16_t> row, std::byte* target)
{
    WidenRow(row, { 16, 8, 0 }, { reinterpret_cast<std::uint32_t*>(target), row.size() });
}

// The largest up to `scale` at which no side is too long; 1 at least.
int ScaleWithinLimit(SIZE size, int scale)
{
    return std::clamp<int>(kLargestSidePx / std::max(size.cx, size.cy), 1, scale);
}

} // namespace

void WaylandWindow::Open(WaylandGlobals& globals, const DisplayOptions& options)
{
    m_globals = &globals;
    const SIZE desktopPx = globals.Outputs().DesktopSizePx(); // the picture is drawn in these
    m_turn = options.turn.value_or(TurnThatFits(static_cast<int>(desktopPx.cx), static_cast<int>(desktopPx.cy)));
    const SIZE picture = TurnedSize(m_turn);
    const SIZE desktop = globals.Outputs().DesktopSize();
    m_ownSize = options.scale > 0 ? SIZE{ picture.cx * options.scale, picture.cy * options.scale }
                                  : ComfortableSize(static_cast<int>(desktop.cx), static_cast<int>(desktop.cy), m_turn);
    m_surface.reset(wl_compositor_create_surface(&globals.Compositor()));
    ListenToSurface();
    m_topLevel.Open(globals, *m_surface, { std::min(m_ownSize.cx, picture.cx), std::min(m_ownSize.cy, picture.cy) },
                    options.fullScreen);
    wl_surface_commit(m_surface.get()); // the compositor answers with a size
}

void WaylandWindow::ListenToSurface()
{
    static constexpr wl_surface_listener kListener = {
        .enter =
            [](void* data, wl_surface*, wl_output* output) {
                static_cast<WaylandWindow*>(data)->m_globals->Outputs().SetShown(output, true);
            },
        .leave =
            [](void* data, wl_surface*, wl_output* output) {
                static_cast<WaylandWindow*>(data)->m_globals->Outputs().SetShown(output, false);
            },
    };
    wl_surface_add_listener(m_surface.get(), &kListener, this);
}

void WaylandWindow::Close()
{
    m_call.reset();
    m_topLevel.Close();
    m_surface.reset();
    m_buffers.Resize(0, 0);
}

bool WaylandWindow::Update()
{
    const bool isConfigured = m_topLevel.TakeConfigured();
    m_isConfigured = m_isConfigured || isConfigured;
    if (!m_isConfigured)
        return false;
    Fit();
    if (!m_hasFrame)
        return false;
    WaylandBuffer* const buffer = m_isStale ? m_buffers.Free(m_globals->Memory()) : nullptr;
    if (buffer != nullptr)
        Send(*buffer, { WholeSurface() });
    else if (isConfigured)
        wl_surface_commit(m_surface.get()); // the desktop waits for this
    return buffer != nullptr;
}

void WaylandWindow::Fit()
{
    const SIZE asked = m_topLevel.AskedSize();
    const SIZE size = { std::min(asked.cx > 0 ? asked.cx : m_ownSize.cx, kLargestSidePx),
                        std::min(asked.cy > 0 ? asked.cy : m_ownSize.cy, kLargestSidePx) };
    const int scale = ScaleWithinLimit(size, m_globals->Outputs().Scale());
    const LONG width = size.cx * scale;
    const LONG height = size.cy * scale;
    if (scale == m_scale && width == m_buffers.WidthPx() && height == m_buffers.HeightPx())
        return;
    m_scale = scale;
    m_buffers.Resize(static_cast<int>(width), static_cast<int>(height));
    m_viewport = FitViewport(m_buffers.WidthPx(), m_buffers.HeightPx(), m_turn);
    m_isStale = true;
}

bool WaylandWindow::CanShow() const
{
    return m_isConfigured && !m_call && m_buffers.HasFree();
}

void WaylandWindow::Show(Frame& frame)
{
    const auto changed = m_hasFrame ? FindChangedRows(m_shown, frame) : std::vector<RowRange>{ { 0, kFrameHeightPx } };
    if (changed.empty())
        return;
    std::swap(m_shown, frame);
    m_hasFrame = true;
    m_buffers.MarkStale(changed);
    WaylandBuffer* const buffer = m_buffers.Free(m_globals->Memory());
    if (buffer == nullptr) {
        m_isStale = true; // no memory for it: shown when there is some
        return;
    }
    std::vector<RECT> parts;
    for (const RowRange& rows : changed)
        parts.push_back(PartOf(rows));
    Send(*buffer, m_isStale ? std::vector<RECT>{ WholeSurface() } : parts);
}

RECT WaylandWindow::WholeSurface() const
{
    return { 0, 0, m_buffers.WidthPx(), m_buffers.HeightPx() };
}

RECT WaylandWindow::PartOf(const RowRange& rows) const
{
    RECT part = ToSurface(m_viewport, { 0, rows.first, kFrameWidthPx, rows.end });
    part.right = std::min<LONG>(part.right, m_buffers.WidthPx());
    part.bottom = std::min<LONG>(part.bottom, m_buffers.HeightPx());
    return part;
}

void WaylandWindow::Draw(WaylandBuffer& buffer) const
{
    for (const RowRange& rows : RangesOf(buffer.staleRows)) {
        const SurfaceMemory surface = { buffer.memory.Bytes().data(), m_buffers.StrideBytes(), 4 };
        DrawPart(m_shown, m_viewport, PartOf(rows), surface, WriteRow32);
    }
    buffer.staleRows.reset();
}

// `changed`: since the compositor was given a buffer last. The buffer itself may lack more.
void WaylandWindow::Send(WaylandBuffer& buffer, const std::vector<RECT>& changed)
{
    Draw(buffer);
    wl_surface* const surface = m_surface.get();
    wl_surface_set_buffer_scale(surface, m_scale);
    wl_surface_attach(surface, buffer.object.get(), 0, 0);
    for (const RECT& part : changed)
        wl_surface_damage_buffer(surface, static_cast<int>(part.left), static_cast<int>(part.top),
                                 static_cast<int>(part.right - part.left), static_cast<int>(part.bottom - part.top));
    if (!m_call)
        AskForCall();
    wl_surface_commit(surface);
    buffer.isWithCompositor = true;
    m_isStale = false;
}

void WaylandWindow::AskForCall()
{
    static constexpr wl_callback_listener kListener = { [](void* data, wl_callback*, std::uint32_t) {
        static_cast<WaylandWindow*>(data)->m_call.reset();
    } };
    m_call.reset(wl_surface_frame(m_surface.get()));
    wl_callback_add_listener(m_call.get(), &kListener, this);
}

POINT WaylandWindow::PixelAt(double x, double y) const
{
    return { static_cast<LONG>(std::floor(x * m_scale)), static_cast<LONG>(std::floor(y * m_scale)) };
}

} // namespace cardsong::display
