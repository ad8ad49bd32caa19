#include "platform/linux/user/frames.h"

#include "platform/linux/gdi/screen.h"
#include "platform/linux/kernel/rest.h"
#include "platform/linux/user/input.h"
#include "platform/linux/user/update_region.h"

#include <algorithm>

namespace cardsong::user {

namespace {

bool IsDrawing(const ThreadQueue& queue, const ThreadQueue* self)
{
    return queue.openPaints > 0 || (&queue != self && !queue.isResting && queue.heldContexts > 0);
}

bool IsAnybodyDrawing(const Desktop& desktop, const ThreadQueue* self)
{
    return std::any_of(desktop.queues.begin(), desktop.queues.end(), [&](const auto& known) {
        const auto queue = known.lock();
        return queue != nullptr && IsDrawing(*queue, self);
    });
}

bool IsAnyHalfPainted(Desktop& desktop)
{
    const auto& windows = desktop.root->children;
    return std::any_of(windows.begin(), windows.end(),
                       [&](WindowRecord* window) { return window->paintHasBegun && OwesPaint(desktop, *window); });
}

// `self`: the calling thread's queue; null: it has none, or is not at rest.
bool IsPictureComplete(Desktop& desktop, const ThreadQueue* self)
{
    return !IsAnybodyDrawing(desktop, self) && !IsAnyHalfPainted(desktop);
}

// Of a thread that rests. One that draws on a context of another thread may have none so far.
ThreadQueue* QueueOfDrawer()
{
    return gdi::HasDrawnOnScreen() ? QueueUnlessEnding() : QueueIfAny();
}

void BeginRest()
{
    ThreadQueue* const self = QueueOfDrawer();
    if (self == nullptr)
        return;
    LockedDesktop desktop;
    self->isResting = true;
    ShowFrame(*desktop, *self);
}

void EndRest()
{
    ThreadQueue* const self = QueueIfAny();
    if (self == nullptr)
        return;
    LockedDesktop desktop;
    self->isResting = false;
}

} // namespace

void ShowFrame(Desktop& desktop, const ThreadQueue& self)
{
    if (!IsPictureComplete(desktop, &self))
        return;
    for (WindowRecord* window : desktop.root->children)
        window->paintHasBegun = false;
    desktop.hasFrame = true;
    if (desktop.presenter)
        desktop.presenter();
}

AtRest::AtRest(Desktop& desktop, ThreadQueue& self) : m_self(self)
{
    self.isResting = true;
    ShowFrame(desktop, self);
}

void WatchRests()
{
    static constexpr kernel::RestHooks kHooks = { BeginRest, EndRest };
    kernel::InstallRestHooks(kHooks);
}

void InstallPresenter(std::function<void()> presenter)
{
    LockedDesktop desktop;
    desktop->presenter = std::move(presenter);
    // A display may come when all threads are at rest: one that opens late, after another that could not be opened.
    if (desktop->presenter && desktop->hasFrame && IsPictureComplete(*desktop, nullptr))
        desktop->presenter();
}

} // namespace cardsong::user
