// The interfaces of one filter graph, shared by the sources of the engine on DirectShow.
#pragma once

#include "playback/media_graph.h"
#include "playback/media_graph_directshow_com.h"
#include "playback/media_graph_directshow_silence.h"

#include <dshow.h>

// Every pointer is null when its part of the graph is missing.
struct MediaGraph::Engine {
    template <typename Interface>
    using Pointer = cardsong::playback::ComPointer<Interface>;

    Pointer<IGraphBuilder> graph;
    Pointer<IMediaControl> control;
    Pointer<IMediaEventEx> events;
    Pointer<IBasicVideo> video;
    Pointer<IBasicAudio> audio;
    Pointer<IVideoWindow> videoWindow;
    Pointer<IMediaSeeking> seeking;
    HWND window = nullptr;     // gets the notices
    bool holdsNoSong = false;  // a file was to be rendered, and nothing in it is music
    bool owesComplete = false; // an abort was taken: the end that whoever waits is waiting for comes next
    bool toldComplete = false; // that end was told; should the graph tell it as well, it is no second one
    // In the graph's place while it is not null: a song was to be rendered that this machine cannot play.
    std::unique_ptr<cardsong::playback::SilentSong> silence;

    // The state as the graph tells it within 10 ms; false when it does not.
    bool IsIn(OAFilterState wanted) const;
    bool GoTo(double start, const double* stop);
    void ForgetBreak() { owesComplete = toldComplete = false; }
};
