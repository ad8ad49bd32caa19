// One thread's queue: what was posted and sent to it, its input, timers, focus and activation. Knows windows by handle
// only. Every field is read and written with the desktop locked.
#pragma once

#include "platform/linux/ce/user.h"

#include <array>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace cardsong::user {

struct Desktop;
class LockedDesktop;
struct ThreadQueue;

struct SentMessage {
    HWND window = nullptr;
    UINT message = 0;
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    std::shared_ptr<ThreadQueue> sender; // null: nobody waits for the answer
    std::function<void()> task;          // if set, run instead of a window procedure
    LRESULT result = 0;
    bool isDone = false;
};

struct Timer {
    HWND window = nullptr; // null: a timer of the thread
    UINT_PTR id = 0;
    std::uint64_t periodMs = 0;
    std::uint64_t dueMs = 0;
    TIMERPROC procedure = nullptr;
};

enum class InputKind { PointerDown, PointerMove, PointerUp, KeyDown, KeyUp, Command };

struct InputEvent {
    std::uint64_t number = 0; // grows from event to event
    InputKind kind = InputKind::PointerMove;
    POINT at{};                     // of the pointer, screen pixels
    UINT key = 0;                   // or the command
    LPCWSTR commandClass = nullptr; // of the window that takes the command; lives as long as the program
    bool wasDown = false;           // the key, before this
    bool isForProgram = false;      // a key that no window in front of the program's own may take
    bool isPointerDown = false;
    std::uint64_t timeMs = 0;
    HWND handedTo = nullptr; // another thread found this window under the pointer; those above it let the event through

    bool IsKey() const { return kind == InputKind::KeyDown || kind == InputKind::KeyUp; }
    bool FollowsFocus() const { return IsKey() || kind == InputKind::Command; } // and not the pointer
};

// The last press, for telling double clicks.
struct Press {
    HWND window = nullptr;
    POINT at{};
    std::uint64_t timeMs = 0;
};

struct ThreadQueue {
    DWORD threadId = 0;
    std::condition_variable arrived;
    bool hasNews = false;     // something came since the queue was last searched
    bool isRetired = false;   // its thread has ended
    bool runsProgram = false; // its thread is the process's first
    std::deque<std::shared_ptr<SentMessage>> sent;
    std::deque<MSG> posted;
    std::optional<int> quitCode;
    std::deque<InputEvent> input;
    std::vector<Timer> timers;
    int heldContexts = 0; // contexts on the screen that its thread has not released
    int openPaints = 0;   // those of BeginPaint among them
    bool isResting = false;

    HWND active = nullptr;
    HWND focus = nullptr;
    HWND capture = nullptr;
    bool focusWasGivenUp = false; // SetFocus(null) was called since the active window changed
    std::array<BYTE, 256> keys{};
    std::optional<Press> lastPress;
};

// The calling thread's queue, made on first use. Never null. Call it without the lock.
const std::shared_ptr<ThreadQueue>& CurrentQueue();
// The same, or null for a thread that never asked for its queue or is about to end.
ThreadQueue* QueueIfAny();
// Made on first use, or null for a thread that is about to end.
ThreadQueue* QueueUnlessEnding();
// Empties the queue and answers whoever waits for it with 0; the thread may go on using it.
void ClearQueue(ThreadQueue& queue);
// False when too many messages wait already.
bool PostToQueue(Desktop& desktop, ThreadQueue& queue, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Wakes the thread if it waits for a message.
void Notify(ThreadQueue& queue);
// Runs `task` on the queue's thread when it next looks for messages; nobody waits for it.
void QueueTask(Desktop& desktop, const std::shared_ptr<ThreadQueue>& queue, std::function<void()> task);
// Ends the sender's wait with `result`.
void Answer(SentMessage& sent, LRESULT result);
// Calls the procedures of the messages sent to this thread. True when there was one.
bool ServeSentMessages();
// Drops what concerns a window that is gone.
void ForgetWindow(ThreadQueue& queue, HWND window);
// The message's time and pointer position are those of now.
MSG MakeMessage(const Desktop& desktop, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

} // namespace cardsong::user
