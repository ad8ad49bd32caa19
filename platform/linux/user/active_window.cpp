#include "platform/linux/user/active_window.h"

#include "platform/linux/user/input.h"
#include "platform/linux/user/visible_region.h"

#include <algorithm>
#include <optional>

namespace cardsong::user {

namespace {

constexpr LONG kBottomEdgePx = 40; // as high as the buttons of soft keys and alerts lie
constexpr LPCWSTR kButtonClass = TEXT("Button");

bool IsOfClass(const Desktop& desktop, const WindowRecord& window, LPCWSTR name)
{
    const auto found = name != nullptr ? desktop.classes.Find(name) : nullptr;
    return found != nullptr && found == window.windowClass;
}

const WindowRecord* ActiveWindow(const Desktop& desktop)
{
    if (!desktop.displayActive || desktop.foregroundQueue == nullptr)
        return nullptr;
    return desktop.windows.Find(desktop.foregroundQueue->active);
}

POINT MiddleOf(const WindowRecord& window)
{
    const POINT origin = ScreenOrigin(window);
    const RECT& rect = window.rect;
    return { origin.x + (rect.right - rect.left) / 2, origin.y + (rect.bottom - rect.top) / 2 };
}

// From left to right.
std::vector<POINT> BottomButtons(const Desktop& desktop, const WindowRecord& window)
{
    std::vector<POINT> middles;
    for (const WindowRecord* child : window.children) {
        if (child->Has(WS_VISIBLE) && IsOfClass(desktop, *child, kButtonClass) &&
            MiddleOf(*child).y >= window.rect.bottom - kBottomEdgePx)
            middles.push_back(MiddleOf(*child));
    }
    std::ranges::sort(middles, {}, &POINT::x);
    return middles;
}

std::optional<POINT> BottomButton(int number)
{
    LockedDesktop desktop;
    const WindowRecord* const window = ActiveWindow(*desktop);
    if (window == nullptr || number < 1)
        return std::nullopt;
    const auto middles = BottomButtons(*desktop, *window);
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < middles.size() ? std::optional(middles[index]) : std::nullopt;
}

void Tap(POINT at)
{
    PointerDown(at);
    PointerUp(at);
}

} // namespace

HWND CommandReceiver(const Desktop& desktop, const ThreadQueue& queue, const InputEvent& event)
{
    const WindowRecord* const window = desktop.windows.Find(queue.active);
    if (window == nullptr || window->Has(WS_DISABLED) || !IsOfClass(desktop, *window, event.commandClass))
        return nullptr;
    const auto isItsControl = [&event](const WindowRecord* child) { return child->id == LONG_PTR{ event.key }; };
    const auto control = std::ranges::find_if(window->children, isItsControl);
    const bool isDisabled = control != window->children.end() && (*control)->Has(WS_DISABLED);
    return isDisabled ? nullptr : window->handle;
}

void TapInFrontOf(LPCWSTR mainWindowClass, POINT at)
{
    {
        LockedDesktop desktop;
        const WindowRecord* const window = ActiveWindow(*desktop);
        if (window == nullptr || IsOfClass(*desktop, *window, mainWindowClass))
            return;
    }
    Tap(at);
}

void TapBottomButton(int number)
{
    if (const auto place = BottomButton(number))
        Tap(*place);
}

} // namespace cardsong::user
