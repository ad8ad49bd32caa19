// The picture and the wiring of the engine on DirectShow.
#include "common/rect.h"
#include "playback/media_graph_directshow.h"

namespace {

constexpr LONG kChildStyle = WS_CHILD | WS_CLIPSIBLINGS | WS_CLIPCHILDREN;

void Place(IVideoWindow* window, int left, int top, int widthPx, int heightPx)
{
    window->put_Left(left);
    window->put_Top(top);
    window->put_Width(widthPx);
    window->put_Height(heightPx);
}

} // namespace

bool MediaGraph::SetVideoOwner(HWND owner)
{
    IVideoWindow* const window = m_engine->videoWindow.Get();
    if (window == nullptr)
        return false;
    const auto handle = reinterpret_cast<OAHWND>(owner);
    window->put_Visible(OAFALSE);
    window->put_Owner(handle);
    RECT client{};
    GetClientRect(owner, &client);
    Place(window, 0, 0, WidthOf(client), HeightOf(client));
    window->put_WindowStyle(kChildStyle);
    window->put_MessageDrain(handle);
    window->put_Visible(owner != nullptr ? OATRUE : OAFALSE);
    return true;
}

bool MediaGraph::SetVideoRect(int left, int top, int widthPx, int heightPx)
{
    IVideoWindow* const window = m_engine->videoWindow.Get();
    if (window == nullptr)
        return false;
    long visible = OAFALSE;
    window->get_Visible(&visible);
    window->put_Visible(OAFALSE);
    Place(window, left, top, widthPx, heightPx);
    window->put_Visible(visible);
    return true;
}

bool MediaGraph::SetFullScreen(bool on)
{
    return m_engine->videoWindow && SUCCEEDED(m_engine->videoWindow->put_FullScreenMode(on ? OATRUE : OAFALSE));
}

bool MediaGraph::IsFullScreen() const
{
    long mode = OAFALSE;
    return m_engine->videoWindow && SUCCEEDED(m_engine->videoWindow->get_FullScreenMode(&mode)) && mode == OATRUE;
}

bool MediaGraph::ConnectDirect(IPin* output, IPin* input, const _AMMediaType* mediaType)
{
    return m_engine->graph && SUCCEEDED(m_engine->graph->ConnectDirect(output, input, mediaType));
}

bool MediaGraph::Disconnect(IPin* pin)
{
    return m_engine->graph && SUCCEEDED(m_engine->graph->Disconnect(pin));
}
