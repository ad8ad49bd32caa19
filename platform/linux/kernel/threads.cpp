// Threads and their numbers.
#include "platform/linux/kernel/waits.h"

#include <atomic>
#include <memory>
#include <pthread.h>

namespace cardsong::kernel {
namespace {

constexpr DWORD kCreateSuspended = 4;

struct ThreadStart {
    LPTHREAD_START_ROUTINE routine;
    LPVOID argument;
    DWORD id;
    std::shared_ptr<CompletionObject> end;
};

DWORD NextThreadId()
{
    static std::atomic<DWORD> s_lastId = 0;
    return s_lastId += 4;
}

thread_local DWORD t_threadId = 0;

// Signals the end from a thread-local destructor: it is made before every other thread-local object of the thread and
// so destroyed after them, and whoever waited finds nothing of the thread left.
struct EndSignal {
    std::shared_ptr<CompletionObject> end;
    ~EndSignal()
    {
        if (end)
            end->Complete();
    }
};
thread_local EndSignal t_endSignal;

void* RunThread(void* parameter)
{
    std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(parameter));
    t_endSignal.end = std::move(start->end);
    t_threadId = start->id;
    const auto routine = start->routine;
    const auto argument = start->argument;
    start.reset();
    routine(argument);
    return nullptr;
}

} // namespace
} // namespace cardsong::kernel

using namespace cardsong::kernel;

// `stackBytes` is not followed: it is a reservation, and the libraries under this layer need the system's usual stack.
HANDLE CreateThread(SECURITY_ATTRIBUTES*, std::size_t, LPTHREAD_START_ROUTINE start, LPVOID argument, DWORD flags,
                    LPDWORD threadId)
{
    if (!start || (flags & kCreateSuspended) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto end = std::make_shared<CompletionObject>();
    const HANDLE handle = InsertHandle(end);
    if (!handle)
        return nullptr;
    auto record = std::make_unique<ThreadStart>(ThreadStart{ start, argument, NextThreadId(), std::move(end) });
    if (threadId)
        *threadId = record->id;
    pthread_t thread;
    if (pthread_create(&thread, nullptr, RunThread, record.get()) != 0) {
        RemoveHandle(handle);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    record.release(); // the thread owns it now
    pthread_detach(thread);
    return handle;
}

DWORD GetCurrentThreadId()
{
    if (t_threadId == 0)
        t_threadId = NextThreadId();
    return t_threadId;
}
