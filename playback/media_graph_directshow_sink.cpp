#include "playback/media_graph_directshow_sink.h"

#include "platform/audio_sink.h"
#include "platform/windows/kernel/utf8.h"
#include "playback/media_graph_directshow_com.h"

namespace cardsong::playback {

namespace {

WString NameOf(IMoniker& renderer)
{
    ComPointer<IPropertyBag> properties;
    if (FAILED(renderer.BindToStorage(nullptr, nullptr, IID_IPropertyBag, properties.Receive())))
        return {};
    VARIANT name;
    VariantInit(&name);
    WString text;
    if (SUCCEEDED(properties->Read(L"FriendlyName", &name, nullptr)) && name.vt == VT_BSTR && name.bstrVal != nullptr)
        text = name.bstrVal;
    VariantClear(&name);
    return text;
}

ComPointer<IBaseFilter> OpenRenderer(const WString& name)
{
    ComPointer<IBaseFilter> filter;
    ComPointer<ICreateDevEnum> devices;
    if (FAILED(CoCreateInstance(CLSID_SystemDeviceEnum, nullptr, CLSCTX_INPROC_SERVER, IID_ICreateDevEnum,
                                devices.Receive())))
        return filter;
    ComPointer<IEnumMoniker> renderers;
    // An empty category is no failure, but has no list.
    if (devices->CreateClassEnumerator(CLSID_AudioRendererCategory, renderers.ReceiveTyped(), 0) != S_OK)
        return filter;
    ComPointer<IMoniker> renderer;
    while (!filter && renderers->Next(1, renderer.ReceiveTyped(), nullptr) == S_OK) {
        if (NameOf(*renderer.Get()) == name)
            renderer->BindToObject(nullptr, nullptr, IID_IBaseFilter, filter.Receive());
    }
    return filter;
}

} // namespace

void AddWishedRenderer(IGraphBuilder& graph)
{
    if (kernel::AudioSink().empty())
        return;
    const WString name = kernel::Utf16FromUtf8(kernel::AudioSink());
    if (const ComPointer<IBaseFilter> renderer = OpenRenderer(name))
        graph.AddFilter(renderer.Get(), name.c_str());
}

} // namespace cardsong::playback
