#include "platform/windows/gdi/imaging.h"

namespace cardsong::gdi {
namespace {

// The number that the file holds under `name`; 0 when it holds none.
UINT Told(IWICMetadataQueryReader* reader, const wchar_t* name)
{
    PROPVARIANT value;
    PropVariantInit(&value);
    UINT number = 0;
    if (SUCCEEDED(reader->GetMetadataByName(name, &value))) {
        if (value.vt == VT_UI1)
            number = value.bVal;
        else if (value.vt == VT_UI2)
            number = value.uiVal;
    }
    PropVariantClear(&value);
    return number;
}

void ReadPlace(IWICBitmapFrameDecode* source, ImageFrame& frame)
{
    Component<IWICMetadataQueryReader> reader;
    if (FAILED(source->GetMetadataQueryReader(reader.Receive())))
        return;
    frame.corner = { static_cast<LONG>(Told(reader.Get(), L"/imgdesc/Left")),
                     static_cast<LONG>(Told(reader.Get(), L"/imgdesc/Top")) };
}

bool IsReadable(UINT widthPx, UINT heightPx)
{
    return widthPx > 0 && heightPx > 0 && widthPx <= kMaxImageSidePx && heightPx <= kMaxImageSidePx;
}

} // namespace

bool ImageFile::Open(const wchar_t* hostPath)
{
    if (FAILED(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                reinterpret_cast<void**>(m_factory.Receive()))) ||
        FAILED(m_factory->CreateDecoderFromFilename(hostPath, nullptr, GENERIC_READ, WICDecodeMetadataCacheOnDemand,
                                                    m_decoder.Receive())))
        return false;
    GUID format{};
    m_isGif = SUCCEEDED(m_decoder->GetContainerFormat(&format)) && IsEqualGUID(format, GUID_ContainerFormatGif);
    UINT frames = 0;
    return SUCCEEDED(m_decoder->GetFrameCount(&frames)) && frames > 0 && ReadSize() &&
           IsReadable(m_widthPx, m_heightPx);
}

bool ImageFile::ReadSize()
{
    if (!m_isGif) {
        Component<IWICBitmapFrameDecode> first;
        return SUCCEEDED(m_decoder->GetFrame(0, first.Receive())) && SUCCEEDED(first->GetSize(&m_widthPx, &m_heightPx));
    }
    Component<IWICMetadataQueryReader> reader;
    if (FAILED(m_decoder->GetMetadataQueryReader(reader.Receive())))
        return false;
    m_widthPx = Told(reader.Get(), L"/logscrdesc/Width");
    m_heightPx = Told(reader.Get(), L"/logscrdesc/Height");
    return true;
}

bool ImageFile::ReadFrame(ImageFrame& frame) const
{
    Component<IWICBitmapFrameDecode> source;
    Component<IWICFormatConverter> converter;
    if (FAILED(m_decoder->GetFrame(0, source.Receive())) || FAILED(source->GetSize(&frame.widthPx, &frame.heightPx)) ||
        !IsReadable(frame.widthPx, frame.heightPx) || FAILED(m_factory->CreateFormatConverter(converter.Receive())) ||
        FAILED(converter->Initialize(source.Get(), GUID_WICPixelFormat32bppBGRA, WICBitmapDitherTypeNone, nullptr, 0,
                                     WICBitmapPaletteTypeCustom)))
        return false;
    frame.corner = {};
    if (m_isGif)
        ReadPlace(source.Get(), frame);
    const std::size_t rowBytes = frame.widthPx * kImagePixelBytes;
    frame.pixels.resize(rowBytes * frame.heightPx);
    return SUCCEEDED(converter->CopyPixels(nullptr, static_cast<UINT>(rowBytes), static_cast<UINT>(frame.pixels.size()),
                                           frame.pixels.data()));
}

} // namespace cardsong::gdi
