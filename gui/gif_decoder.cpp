#include "gui/gif_decoder.h"

#include "common/file_stream.h"

#include <new>

namespace {

constexpr std::uint8_t ColorByte(COLORREF color, unsigned shift)
{
    return static_cast<std::uint8_t>(color >> shift);
}

} // namespace

GifDecoder::GifDecoder(LPCWSTR path, COLORREF background)
    : m_path(WStringView(path != nullptr ? path : TEXT("")).substr(0, MAX_PATH)), m_background(background)
{
}

bool GifDecoder::Open()
{
    m_images = GifSequence();
    if (!ReadWholeFile())
        return false;
    const std::uint16_t background =
        Rgb565(ColorByte(m_background, 0), ColorByte(m_background, 8), ColorByte(m_background, 16));
    return m_images.Open({ m_file.get(), m_fileBytes }, background);
}

void GifDecoder::GetSize(std::uint16_t& widthPx, std::uint16_t& heightPx, std::uint32_t& frameCount) const
{
    widthPx = m_images.Screen().widthPx;
    heightPx = m_images.Screen().heightPx;
    frameCount = m_images.FrameCount();
}

bool GifDecoder::ReadWholeFile()
{
    m_file.reset();
    m_fileBytes = 0;
    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    if (!GetFileAttributesExW(m_path.c_str(), GetFileExInfoStandard, &attributes) || attributes.nFileSizeHigh != 0 ||
        attributes.nFileSizeLow == 0)
        return false;
    const UniqueFileStream stream = OpenForReading(m_path.c_str());
    if (!stream)
        return false;
    const std::size_t sizeBytes = attributes.nFileSizeLow;
    m_file.reset(new (std::nothrow) std::byte[sizeBytes]);
    if (!m_file || std::fread(m_file.get(), 1, sizeBytes, stream.Get()) != sizeBytes)
        return false;
    m_fileBytes = sizeBytes;
    return true;
}
