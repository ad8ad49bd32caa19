#include "platform/linux/display/headless_display.h"

#include "platform/linux/user/input.h"

#include <utility>

namespace cardsong::display {

HeadlessDisplay::~HeadlessDisplay()
{
    Stop();
}

std::string HeadlessDisplay::Start()
{
    m_isOpen = true;
    user::InstallPresenter([this] { FrameReady(); });
    user::SetDisplayActive(true);
    return {};
}

void HeadlessDisplay::Stop()
{
    if (std::exchange(m_isOpen, false))
        user::InstallPresenter({});
}

void HeadlessDisplay::FrameReady()
{
    const std::lock_guard lock(m_mutex);
    m_box.Post();
    if (!m_box.Take(m_next) || m_next == m_shown)
        return;
    std::swap(m_shown, m_next);
    ++m_count;
}

std::uint64_t HeadlessDisplay::FrameCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_count;
}

Frame HeadlessDisplay::LastFrame() const
{
    const std::lock_guard lock(m_mutex);
    return m_shown;
}

} // namespace cardsong::display
