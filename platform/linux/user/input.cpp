#include "platform/linux/user/input.h"

#include "platform/linux/user/desktop.h"
#include "platform/linux/user/input_queue.h"
#include "platform/linux/user/input_routing.h"

namespace cardsong::user {

namespace {

constexpr POINT kOutsideEveryWindow = { -10000, -10000 }; // in the 16 bits of a message, from wherever a window lies

void Point(InputKind kind, POINT at)
{
    LockedDesktop desktop;
    desktop->pointer = at;
    const auto queue = PointerReceiver(*desktop, at);
    if (kind != InputKind::PointerMove)
        desktop->pointerDown = kind == InputKind::PointerDown;
    desktop->pointerQueue = desktop->pointerDown ? queue : nullptr;
    if (queue == nullptr)
        return;
    InputEvent event;
    event.kind = kind;
    event.at = at;
    event.isPointerDown = desktop->pointerDown;
    Enqueue(*queue, event);
}

// To whoever is in the foreground, or to the first window.
void Give(Desktop& desktop, const InputEvent& event)
{
    const WindowRecord* const program = event.isForProgram ? desktop.windows.Find(ProgramWindow(desktop)) : nullptr;
    if (program != nullptr) {
        Enqueue(*program->queue, event);
        return;
    }
    if (desktop.foregroundQueue != nullptr)
        Enqueue(*desktop.foregroundQueue, event);
    else if (desktop.foreground == nullptr)
        KeepEarlyKey(desktop, event);
}

enum class KeyMeaning { ForFocus, ForProgram };

void Strike(InputKind kind, UINT key, KeyMeaning meaning = KeyMeaning::ForFocus)
{
    LockedDesktop desktop;
    if (key == 0 || key > 255 || !desktop->displayActive)
        return;
    InputEvent event;
    event.kind = kind;
    event.at = desktop->pointer;
    event.key = key;
    event.wasDown = desktop->keysDown[key];
    event.isForProgram = meaning == KeyMeaning::ForProgram;
    desktop->keysDown[key] = kind == InputKind::KeyDown;
    Give(*desktop, event);
}

// Windows of other threads, and those that another window of the program owns, stand in front of it and would swallow
// what is meant for it.
void CloseWindowsInFront()
{
    std::vector<HWND> windows;
    {
        LockedDesktop desktop;
        for (const WindowRecord* window : desktop->root->children)
            if (!window->queue->runsProgram || window->owner != nullptr)
                windows.push_back(window->handle);
    }
    for (HWND window : windows)
        PostMessageW(window, WM_CLOSE, 0, 0);
}

} // namespace

void PointerDown(POINT at)
{
    Point(InputKind::PointerDown, at);
}

void PointerMove(POINT at)
{
    Point(InputKind::PointerMove, at);
}

void PointerUp(POINT at)
{
    Point(InputKind::PointerUp, at);
}

void CancelPointer()
{
    PointerUp(kOutsideEveryWindow);
}

void KeyDown(UINT key)
{
    Strike(InputKind::KeyDown, key);
}

void KeyUp(UINT key)
{
    Strike(InputKind::KeyUp, key);
}

void GiveCommand(LPCWSTR mainWindowClass, WORD command)
{
    LockedDesktop desktop;
    if (!desktop->displayActive)
        return;
    InputEvent event;
    event.kind = InputKind::Command;
    event.at = desktop->pointer;
    event.key = command;
    event.commandClass = mainWindowClass;
    Give(*desktop, event);
}

void PressExitKey()
{
    CloseWindowsInFront();
    SetDisplayActive(true); // an inactive display's keys are meant for another program
    Strike(InputKind::KeyDown, VK_F24, KeyMeaning::ForProgram);
    Strike(InputKind::KeyUp, VK_F24, KeyMeaning::ForProgram);
}

} // namespace cardsong::user
