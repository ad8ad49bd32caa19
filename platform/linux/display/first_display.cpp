#include "platform/linux/display/first_display.h"

#include <utility>

namespace cardsong::display {

FirstDisplay::FirstDisplay(std::vector<std::unique_ptr<Display>> displays) : m_displays(std::move(displays)) {}

std::string FirstDisplay::Start()
{
    std::string troubles;
    for (const auto& display : m_displays) {
        const std::string trouble = display->Start();
        if (trouble.empty()) {
            m_open = display.get();
            return {};
        }
        troubles += troubles.empty() ? trouble : "; " + trouble;
    }
    return troubles;
}

void FirstDisplay::Stop()
{
    for (const auto& display : m_displays)
        display->Stop();
}

bool FirstDisplay::IsLost() const
{
    const Display* const display = m_open;
    return display != nullptr && display->IsLost();
}

void FirstDisplay::FrameReady()
{
    if (Display* const display = m_open)
        display->FrameReady();
}

} // namespace cardsong::display
