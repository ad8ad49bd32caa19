// A reference to a component, which owns itself. Knows no component.
#pragma once

#include <utility>

namespace cardsong::playback {

template <typename Interface>
class ComPointer {
public:
    ComPointer() = default;
    explicit ComPointer(Interface* owned) : m_pointer(owned) {}
    ComPointer(ComPointer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept
    {
        if (this != &other) {
            Reset();
            m_pointer = std::exchange(other.m_pointer, nullptr);
        }
        return *this;
    }
    ~ComPointer() { Reset(); }

    explicit operator bool() const { return m_pointer != nullptr; }
    Interface* operator->() const { return m_pointer; }
    Interface* Get() const { return m_pointer; }
    void Reset()
    {
        if (Interface* const released = std::exchange(m_pointer, nullptr))
            released->Release();
    }
    // For a call that hands out a reference; what was held is released first.
    Interface** ReceiveTyped()
    {
        Reset();
        return &m_pointer;
    }
    void** Receive() { return reinterpret_cast<void**>(ReceiveTyped()); }

private:
    Interface* m_pointer = nullptr;
};

} // namespace cardsong::playback
