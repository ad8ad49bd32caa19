#include "platform/linux/display/wayland_buffers.h"

#include <algorithm>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client.h>

namespace cardsong::display {

SharedMemory::SharedMemory(std::size_t sizeBytes)
    : m_file(memfd_create("cardsong-picture", MFD_CLOEXEC | MFD_ALLOW_SEALING))
{
    if (m_file < 0 || ftruncate(m_file, static_cast<off_t>(sizeBytes)) != 0)
        return;
    fcntl(m_file, F_ADD_SEALS, F_SEAL_SHRINK); // whoever makes it shorter would end both processes
    void* const start = mmap(nullptr, sizeBytes, PROT_READ | PROT_WRITE, MAP_SHARED, m_file, 0);
    if (start != MAP_FAILED)
        m_bytes = { static_cast<std::byte*>(start), sizeBytes };
}

SharedMemory::~SharedMemory()
{
    if (!m_bytes.empty())
        munmap(m_bytes.data(), m_bytes.size());
    if (m_file >= 0)
        close(m_file);
}

// The compositor may still read what is dropped; nobody writes to it again.
void WaylandBuffers::Resize(int widthPx, int heightPx)
{
    m_buffers.clear();
    m_widthPx = widthPx;
    m_heightPx = heightPx;
}

bool WaylandBuffers::HasFree() const
{
    return m_buffers.size() < kMost ||
           std::ranges::any_of(m_buffers, [](const auto& buffer) { return !buffer->isWithCompositor; });
}

WaylandBuffer* WaylandBuffers::Free(wl_shm& shm)
{
    for (const auto& buffer : m_buffers) {
        if (!buffer->isWithCompositor)
            return buffer.get();
    }
    if (m_buffers.size() == kMost)
        return nullptr;
    auto made = Make(shm);
    return made ? m_buffers.emplace_back(std::move(made)).get() : nullptr;
}

void WaylandBuffers::MarkStale(const std::vector<RowRange>& rows)
{
    for (const auto& buffer : m_buffers) {
        for (const RowRange& range : rows) {
            for (int row = range.first; row < range.end; ++row)
                buffer->staleRows.set(static_cast<std::size_t>(row));
        }
    }
}

std::unique_ptr<WaylandBuffer> WaylandBuffers::Make(wl_shm& shm) const
{
    static constexpr wl_buffer_listener kListener = { [](void* data, wl_buffer*) {
        static_cast<WaylandBuffer*>(data)->isWithCompositor = false;
    } };
    const int sizeBytes = StrideBytes() * m_heightPx;
    auto buffer = std::make_unique<WaylandBuffer>(static_cast<std::size_t>(sizeBytes));
    if (buffer->memory.Bytes().empty())
        return nullptr;
    const WaylandPtr<wl_shm_pool> pool(wl_shm_create_pool(&shm, buffer->memory.File(), sizeBytes));
    buffer->object.reset(
        wl_shm_pool_create_buffer(pool.get(), 0, m_widthPx, m_heightPx, StrideBytes(), WL_SHM_FORMAT_XRGB8888));
    wl_buffer_add_listener(buffer->object.get(), &kListener, buffer.get());
    return buffer;
}

} // namespace cardsong::display
