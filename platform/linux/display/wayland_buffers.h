// Pictures in memory that the compositor reads. One that it still reads is never written to.
#pragma once

#include "platform/linux/display/frame.h"
#include "platform/linux/display/wayland_objects.h"

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace cardsong::display {

// Memory that another process can read, too.
class SharedMemory {
public:
    // All zero. Empty when the system has none left.
    explicit SharedMemory(std::size_t sizeBytes);
    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;
    std::span<std::byte> Bytes() const { return m_bytes; }
    int File() const { return m_file; }

private:
    int m_file; // an anonymous one
    std::span<std::byte> m_bytes;
};

struct WaylandBuffer {
    explicit WaylandBuffer(std::size_t sizeBytes) : memory(sizeBytes) { staleRows.set(); }

    SharedMemory memory;
    WaylandPtr<wl_buffer> object;
    bool isWithCompositor = false;         // until it says that it has read it
    std::bitset<kFrameHeightPx> staleRows; // of the frame: not drawn since they changed
};

// Pictures of one size, 32 bits a pixel: 0x00RRGGBB. Each is made when all others are with the compositor.
class WaylandBuffers {
public:
    static constexpr std::size_t kMost = 3; // shown, waiting for its moment, being drawn

    // Drops all there were and makes new ones from now on.
    void Resize(int widthPx, int heightPx);
    bool HasFree() const;
    // One to draw on and give away; null when the compositor has all of them, or there is no memory.
    WaylandBuffer* Free(wl_shm& shm);
    // These rows of the frame have changed.
    void MarkStale(const std::vector<RowRange>& rows);
    int WidthPx() const { return m_widthPx; }
    int HeightPx() const { return m_heightPx; }
    int StrideBytes() const { return m_widthPx * 4; }

private:
    std::unique_ptr<WaylandBuffer> Make(wl_shm& shm) const;

    std::vector<std::unique_ptr<WaylandBuffer>> m_buffers;
    int m_widthPx = 0;
    int m_heightPx = 0;
};

} // namespace cardsong::display
