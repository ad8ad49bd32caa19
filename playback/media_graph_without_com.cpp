// What a graph that is not made of COM parts does without: graphs made elsewhere, an event interface, a picture,
// wiring by hand. Part of each such engine.
#include "playback/media_graph.h"

bool MediaGraph::Attach(IGraphBuilder* graph)
{
    ReleaseAll();
    return graph == nullptr;
}

IMediaEventEx* MediaGraph::GetEventInterface() const
{
    return nullptr;
}

bool MediaGraph::SetVideoOwner(HWND)
{
    return false;
}

bool MediaGraph::SetVideoRect(int, int, int, int)
{
    return false;
}

bool MediaGraph::SetFullScreen(bool)
{
    return false;
}

bool MediaGraph::IsFullScreen() const
{
    return false;
}

bool MediaGraph::ConnectDirect(IPin*, IPin*, const _AMMediaType*)
{
    return false;
}

bool MediaGraph::Disconnect(IPin*)
{
    return false;
}
