#include "platform/linux/kernel/handles.h"

#include <deque>
#include <mutex>
#include <vector>

namespace cardsong::kernel {
namespace {

// A handle is (generation, index, two zero bits): small numbers, as programs that print them expect.
constexpr ULONG_PTR kIndexBits = 16;
constexpr ULONG_PTR kGenerationBits = 13;
constexpr ULONG_PTR kIndexMask = (1U << kIndexBits) - 1;
constexpr ULONG_PTR kGenerationMask = (1U << kGenerationBits) - 1;
constexpr ULONG_PTR kTagBits = 2;

struct Slot {
    std::shared_ptr<KernelObject> object;
    ULONG_PTR generation = 0;
};

struct Table {
    std::mutex mutex;
    std::vector<Slot> slots{ 1 }; // slot 0 stays empty, so that no handle is null
    std::deque<std::size_t> free; // the oldest first, so that a value rests long before it comes back
};

// Never destroyed: threads may still close handles while the process ends.
Table& TheTable()
{
    static auto* const s_table = new Table;
    return *s_table;
}

HANDLE ToHandle(std::size_t index, ULONG_PTR generation)
{
    return reinterpret_cast<HANDLE>(((generation << kIndexBits) | index) << kTagBits);
}

// The slot that `handle` names while it is open; null otherwise. The table's mutex is held.
Slot* FindSlot(Table& table, HANDLE handle)
{
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    const auto index = (value >> kTagBits) & kIndexMask;
    if (index == 0 || index >= table.slots.size())
        return nullptr;
    Slot& slot = table.slots[index];
    if (!slot.object || ToHandle(index, slot.generation) != handle)
        return nullptr;
    return &slot;
}

} // namespace

HANDLE InsertHandle(std::shared_ptr<KernelObject> object)
{
    auto& table = TheTable();
    const std::lock_guard lock(table.mutex);
    std::size_t index = table.slots.size();
    constexpr std::size_t kRest = 64;
    const bool isFull = index > kIndexMask;
    if (isFull ? !table.free.empty() : table.free.size() > kRest) {
        index = table.free.front();
        table.free.pop_front();
    } else if (isFull) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    } else {
        table.slots.emplace_back();
    }
    table.slots[index].object = std::move(object);
    return ToHandle(index, table.slots[index].generation);
}

std::shared_ptr<KernelObject> ObjectOf(HANDLE handle)
{
    auto& table = TheTable();
    const std::lock_guard lock(table.mutex);
    const Slot* const slot = FindSlot(table, handle);
    return slot ? slot->object : nullptr;
}

bool RemoveHandle(HANDLE handle)
{
    auto& table = TheTable();
    std::shared_ptr<KernelObject> removed; // destroyed after the mutex is free: closing a file may take time
    const std::lock_guard lock(table.mutex);
    Slot* const slot = FindSlot(table, handle);
    if (!slot)
        return false;
    removed = std::move(slot->object);
    slot->object = nullptr;
    slot->generation = (slot->generation + 1) & kGenerationMask;
    table.free.push_back(static_cast<std::size_t>(slot - table.slots.data()));
    return true;
}

} // namespace cardsong::kernel

BOOL CloseHandle(HANDLE object)
{
    using namespace cardsong::kernel;
    const auto found = ObjectOf(object);
    if (found && found->ClosesWithCloseHandle() && RemoveHandle(object))
        return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
