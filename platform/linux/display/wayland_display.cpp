#include "platform/linux/display/wayland_display.h"

#include "platform/linux/display/threaded_display.h"
#include "platform/linux/display/touch_panel.h"
#include "platform/linux/display/wayland_activation.h"
#include "platform/linux/display/wayland_connection.h"
#include "platform/linux/display/wayland_cursor.h"
#include "platform/linux/display/wayland_globals.h"
#include "platform/linux/display/wayland_window.h"
#include "platform/linux/kernel/clock.h"
#include "platform/linux/user/input.h"

#include <algorithm>
#include <utility>

namespace cardsong::display {

namespace {

class WaylandDisplay final : public ThreadedDisplay {
public:
    WaylandDisplay(const DisplayOptions& options, std::string name, int answerLimitMs)
        : m_options(options), m_name(std::move(name)), m_answerLimitMs(answerLimitMs)
    {
    }
    ~WaylandDisplay() override { Stop(); }
    // The beginning of Open and the end of it all. An empty text, or why it cannot be opened.
    std::string Connect();
    void Close() override;

private:
    std::string Open() override;
    bool HandleEvents() override;
    bool CanShow() const override { return m_window.CanShow(); }
    void Show(Frame& frame) override { m_window.Show(frame); }
    void Raise() override { m_activation.Raise(m_globals.Seats().LastPress()); }
    bool Wait(EventWait& wait) override;
    std::string Reach();

    const DisplayOptions m_options;
    const std::string m_name;
    const int m_answerLimitMs;

    // The display's thread only.
    EventWait m_opening;
    WaylandConnection m_connection;
    TouchPanel m_panel;
    WaylandWindow m_window;
    WaylandCursor m_cursor;
    WaylandGlobals m_globals{ { m_window, m_panel, m_cursor, m_options } };
    WaylandActivation m_activation;
};

std::string WaylandDisplay::Reach()
{
    std::string trouble = m_connection.Connect(m_name, m_answerLimitMs);
    if (!trouble.empty())
        return trouble;
    m_globals.Ask(m_connection.Raw());
    // The first answers name what there is, the second ones what that is like.
    for (int round = 0; round < 2; ++round) {
        if (!m_connection.AwaitAnswers(m_opening, m_answerLimitMs))
            return m_connection.IsLost() ? "it went away" : "it does not answer";
    }
    const std::string missing = m_globals.Missing();
    return missing.empty() ? std::string() : "it has no " + missing;
}

std::string WaylandDisplay::Connect()
{
    const std::string trouble = Reach();
    return trouble.empty() ? trouble : "cannot open the Wayland display " + m_name + ": " + trouble;
}

std::string WaylandDisplay::Open()
{
    std::string trouble = Connect();
    if (!trouble.empty())
        return trouble;
    m_cursor.Open(m_globals);
    m_window.Open(m_globals, m_options);
    m_activation.Open(m_globals.Activation(), *m_window.Surface());
    m_activation.TellStart();
    return {};
}

void WaylandDisplay::Close()
{
    m_activation.Close();
    m_window.Close();
    m_cursor.Close();
    m_globals.Close();
    m_connection.Close();
}

bool WaylandDisplay::HandleEvents()
{
    const bool handled = m_connection.Dispatch();
    const bool drawn = m_window.Update();
    m_globals.Seats().RepeatKeys(m_connection.Raw(), kernel::CurrentClock().NowMs());
    return handled || drawn;
}

bool WaylandDisplay::Wait(EventWait& wait)
{
    int limitMs = -1;
    if (const auto nextMs = m_globals.Seats().NextRepeatMs()) {
        const std::uint64_t nowMs = kernel::CurrentClock().NowMs();
        limitMs = *nextMs > nowMs ? static_cast<int>(std::min<std::uint64_t>(*nextMs - nowMs, INT32_MAX)) : 0;
    }
    return m_connection.Wait(wait, limitMs);
}

} // namespace

std::unique_ptr<Display> MakeWaylandDisplay(const DisplayOptions& options, const std::string& name, int answerLimitMs)
{
    return std::make_unique<WaylandDisplay>(options, name, answerLimitMs);
}

std::string ProbeWaylandDisplay(const std::string& name)
{
    WaylandDisplay display({}, name, kWaylandAnswerLimitMs);
    std::string trouble = display.Connect();
    display.Close();
    return trouble;
}

} // namespace cardsong::display
