// Everything that windows of all threads share, under one lock. The lock is never held while a window procedure or a
// timer procedure runs; it is held while the presenter runs, so that nobody begins to draw meanwhile. A function that
// takes a Desktop& is called with the lock held; one that does not, without.
#pragma once

#include "platform/linux/user/message_queue.h"
#include "platform/linux/user/other_programs.h"
#include "platform/linux/user/window.h"

#include <bitset>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace cardsong::user {

// A screen context that a program holds; it follows its window about.
struct HeldContext {
    HDC context = nullptr;
    HWND window = nullptr; // null: the whole screen
    bool isPaint = false;  // from BeginPaint: drawing stays inside `paintClip`
    Region paintClip;      // in the window's coordinates
    std::shared_ptr<ThreadQueue> holder;
};

struct Desktop {
    Desktop();

    std::mutex mutex;
    WindowTable windows;
    WindowRecord* root = nullptr; // the desktop window
    ClassTable classes;
    std::unordered_map<std::u16string, UINT> registeredMessages; // by folded name
    std::vector<std::u16string> messageNames;                    // of the same, as first written, by number
    std::shared_ptr<OtherPrograms> otherPrograms;                // null: there are none
    std::vector<std::u16string> foreignClasses;                  // of the windows of other programs, by handle
    std::vector<std::weak_ptr<ThreadQueue>> queues;
    std::uint64_t treeVersion = 1; // grows when any window appears, goes, moves, shows or hides
    std::vector<HeldContext> contexts;

    HWND foreground = nullptr; // the top-level window that keys are meant for, even while the display is inactive
    std::shared_ptr<ThreadQueue> foregroundQueue;
    bool displayActive = true;
    std::bitset<256> keysDown;                 // as the display tells, whichever window hears of it
    std::vector<InputEvent> earlyKeys;         // struck before there was a window to take them; the first one gets them
    std::shared_ptr<ThreadQueue> pointerQueue; // had the last press; has the pointer until the release
    bool pointerDown = false;
    POINT pointer{};
    bool hasFrame = false; // a picture was complete once
    std::function<void()> presenter;
    std::function<void()> raiser;
};

Desktop& TheDesktop();

class LockedDesktop {
public:
    LockedDesktop() : m_desktop(TheDesktop()), m_lock(m_desktop.mutex) {}
    Desktop* operator->() const { return &m_desktop; }
    Desktop& operator*() const { return m_desktop; }
    std::unique_lock<std::mutex>& Lock() { return m_lock; }
    // The window, or null with the last error set to ERROR_INVALID_WINDOW_HANDLE.
    WindowRecord* Find(HWND window) const;

private:
    Desktop& m_desktop;
    std::unique_lock<std::mutex> m_lock;
};

} // namespace cardsong::user
