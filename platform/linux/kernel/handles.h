// One table for every handle of the layer: files, finds, devices, threads, processes, events, registry keys, modules.
// Knows no kind of object but its base.
#pragma once

#include "platform/linux/ce/kernel.h"

#include <memory>

namespace cardsong::kernel {

class KernelObject {
public:
    virtual ~KernelObject() = default;
    // Whether CloseHandle closes it; finds, keys and modules have closing functions of their own.
    virtual bool ClosesWithCloseHandle() const { return true; }
};

// A new handle to `object`, never null and never INVALID_HANDLE_VALUE; null when the table is full. A closed handle's
// value does not come back for a long time, so that a second close is told from the close of another's handle.
HANDLE InsertHandle(std::shared_ptr<KernelObject> object);

// The object behind `handle`, kept alive while the caller uses it; null when there is none.
std::shared_ptr<KernelObject> ObjectOf(HANDLE handle);

// Takes the handle out of the table; the object dies with its last user. False when the handle stood for nothing.
bool RemoveHandle(HANDLE handle);

// The object behind `handle` when it is a T; otherwise null, and the last error is ERROR_INVALID_HANDLE.
template <typename T>
std::shared_ptr<T> ObjectAs(HANDLE handle)
{
    auto object = std::dynamic_pointer_cast<T>(ObjectOf(handle));
    if (!object)
        SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

// Closes `handle` when it stands for a T; otherwise fails with ERROR_INVALID_HANDLE.
template <typename T>
bool CloseAs(HANDLE handle)
{
    if (ObjectAs<T>(handle) && RemoveHandle(handle))
        return true;
    SetLastError(ERROR_INVALID_HANDLE);
    return false;
}

} // namespace cardsong::kernel
