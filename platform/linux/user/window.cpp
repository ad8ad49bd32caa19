#include "platform/linux/user/window.h"

namespace cardsong::user {

namespace {

constexpr std::uint32_t kMaxGeneration = 0x7FFF;
constexpr std::size_t kMaxWindows = 0x7000; // keeps the low half of a handle clear of HWND_BROADCAST

HWND MakeHandle(std::size_t slot, std::uint32_t generation)
{
    const auto value = (static_cast<ULONG_PTR>(generation) << 16) | ((static_cast<ULONG_PTR>(slot) + 1) << 1);
    return reinterpret_cast<HWND>(value);
}

} // namespace

WindowRecord* WindowTable::Add()
{
    std::size_t index = 0;
    while (index < m_slots.size() && m_slots[index].record != nullptr)
        ++index;
    if (index == kMaxWindows)
        return nullptr;
    if (index == m_slots.size())
        m_slots.emplace_back();
    auto& slot = m_slots[index];
    slot.generation = slot.generation == kMaxGeneration ? 1 : slot.generation + 1;
    slot.record = std::make_unique<WindowRecord>();
    slot.record->handle = MakeHandle(index, slot.generation);
    return slot.record.get();
}

void WindowTable::Remove(WindowRecord* record)
{
    const auto value = reinterpret_cast<ULONG_PTR>(record->handle);
    m_slots[((value & 0xFFFF) >> 1) - 1].record.reset();
}

WindowRecord* WindowTable::Find(HWND window) const
{
    const auto value = reinterpret_cast<ULONG_PTR>(window);
    const auto number = (value & 0xFFFF) >> 1;
    if (number == 0 || number > m_slots.size())
        return nullptr;
    WindowRecord* const record = m_slots[number - 1].record.get();
    return record != nullptr && record->handle == window ? record : nullptr;
}

} // namespace cardsong::user
