// A display that only remembers: the same interface, no window, no thread. Input is injected by whoever tests.
#pragma once

#include "platform/linux/display/display.h"
#include "platform/linux/display/frame.h"

namespace cardsong::display {

class HeadlessDisplay final : public Display {
public:
    ~HeadlessDisplay() override;
    std::string Start() override;
    void Stop() override;
    bool IsLost() const override { return false; }
    void FrameReady() override;

    // Frames that differed from the one before, and the newest of them. Any thread.
    std::uint64_t FrameCount() const;
    Frame LastFrame() const;

private:
    mutable std::mutex m_mutex;
    FrameBox m_box;
    Frame m_next;
    Frame m_shown;
    std::uint64_t m_count = 0;
    bool m_isOpen = false;
};

} // namespace cardsong::display
