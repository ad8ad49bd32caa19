// One filter graph and its interfaces, as the sources of the engine on DirectShow share them.
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
    bool holdsNoSong = false;  // the last file to be rendered holds no music
    bool owesComplete = false; // an abort was taken: its end is the next event
    bool toldComplete = false; // the end of an abort was taken: an end that the graph tells itself is no second one
    // Stands in the graph's place for a song that this machine cannot play; null for others.
    std::unique_ptr<cardsong::playback::SilentSong> silence;

    // Asks the graph for every interface. False when it refuses one.
    bool QueryInterfaces();
    // Whether the graph tells, within 10 ms, that it is in that state.
    bool IsIn(OAFilterState wanted) const;
    bool GoTo(double start, const double* stop);
    void ForgetBreak() { owesComplete = toldComplete = false; }
};
