// The interfaces of one filter graph, shared by the sources of the engine on DirectShow.
#pragma once

#include "playback/media_graph.h"

#include <dshow.h>

#include <utility>

// Owns one reference to a component's interface.
template <typename Interface>
class ComPointer {
public:
    ComPointer() = default;
    explicit ComPointer(Interface* owned) : m_pointer(owned) {}
    ComPointer(ComPointer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
    ComPointer& operator=(ComPointer&& other) noexcept
    {
        std::swap(m_pointer, other.m_pointer);
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
    // For a call that hands out a reference.
    void** Receive()
    {
        Reset();
        return reinterpret_cast<void**>(&m_pointer);
    }

private:
    Interface* m_pointer = nullptr;
};

struct MediaGraph::Engine {
    ComPointer<IGraphBuilder> graph;
    ComPointer<IMediaControl> control;
    ComPointer<IMediaEventEx> events;
    ComPointer<IBasicVideo> video;
    ComPointer<IBasicAudio> audio;
    ComPointer<IVideoWindow> videoWindow;
    ComPointer<IMediaSeeking> seeking;
    bool owesComplete = false; // an abort was taken: the end that whoever waits is waiting for comes next

    // The state as the graph tells it within 10 ms; false when it does not.
    bool IsIn(OAFilterState wanted) const;
};
