// Several displays of which the first that can be opened is the user's.
#pragma once

#include "platform/linux/display/display.h"

#include <atomic>
#include <vector>

namespace cardsong::display {

class FirstDisplay final : public Display {
public:
    // At least one.
    explicit FirstDisplay(std::vector<std::unique_ptr<Display>> displays);
    ~FirstDisplay() override { Stop(); }
    // Says of each of them why it cannot be opened, if none can.
    std::string Start() override;
    void Stop() override;
    bool IsLost() const override;
    void FrameReady() override;

private:
    const std::vector<std::unique_ptr<Display>> m_displays;
    std::atomic<Display*> m_open = nullptr; // the one that could be opened
};

} // namespace cardsong::display
