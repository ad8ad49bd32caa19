#include "platform/linux/user/other_programs.h"

#include "platform/linux/ce/messages.h"
#include "platform/linux/user/registered_messages.h"

namespace cardsong::user {

namespace {

// A program that is busy finds no more of them waiting, and its own messages have the rest of the queue.
constexpr std::size_t kMostWaiting = 64;

void PostTo(Desktop& desktop, const WindowRecord& window, UINT number, const CrossingMessage& message)
{
    if (window.queue->posted.size() < kMostWaiting)
        PostToQueue(desktop, *window.queue, window.handle, number, message.wParam, message.lParam);
}

} // namespace

void InstallOtherPrograms(std::shared_ptr<OtherPrograms> programs)
{
    LockedDesktop desktop;
    desktop->otherPrograms.swap(programs); // the former ones go when the lock is free: they may wait for a thread
}

void PostFromOtherProgram(const CrossingMessage& message)
{
    LockedDesktop desktop;
    const bool isCommand = message.name.empty();
    const UINT number = isCommand ? WM_COMMAND : NumberOfMessage(*desktop, message.name);
    const bool isForAll = message.windowClass.empty();
    if (number == 0 || (isCommand && (isForAll || message.lParam != 0)))
        return;
    const auto wanted = isForAll ? nullptr : desktop->classes.Find(message.windowClass.c_str());
    if (!isForAll && wanted == nullptr)
        return;
    for (const WindowRecord* window : desktop->root->children) {
        if (!isForAll && window->windowClass != wanted)
            continue;
        PostTo(*desktop, *window, number, message);
        if (!isForAll)
            return;
    }
}

} // namespace cardsong::user
