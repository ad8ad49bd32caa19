#include "gif/gif_sequence.h"

#include "gif/gif_lzw.h"

bool GifSequence::Open(std::span<const std::byte> file, std::uint16_t plainBackground, GifBackground background)
{
    *this = GifSequence();
    m_reader = GifReader(file);
    auto screen = ReadGifScreen(m_reader);
    if (!screen)
        return false;
    m_screen = *screen;
    const bool isOfFile = background == GifBackground::OfFile && m_screen.globalTable.size != 0;
    m_background = isOfFile ? m_screen.globalTable.colors[m_screen.backgroundIndex] : plainBackground;
    m_firstBlock = m_reader.Offset();
    m_frameCount = CountGifImages(m_reader);
    return m_frameCount != 0;
}

const GifFrame* GifSequence::DecodeNextFrame()
{
    m_frame.reset();
    if (m_frameCount == 0)
        return nullptr;
    if (m_reader.AtEnd())
        m_reader.MoveTo(m_firstBlock);
    const Found found = FindImage();
    if (found == Found::Nothing)
        return nullptr;
    m_frame.emplace();
    if (found == Found::Image && !DecodeImage(*m_frame))
        m_frame.reset();
    return m_frame ? &*m_frame : nullptr;
}

// Starts again at the trailer. That ends, since Open has counted an image on the same way.
GifSequence::Found GifSequence::FindImage()
{
    while (!m_reader.AtEnd()) {
        switch (static_cast<GifBlock>(m_reader.U8())) {
        case GifBlock::Terminator: break;
        case GifBlock::Extension:
            if (static_cast<GifLabel>(m_reader.U8()) == GifLabel::GraphicControl)
                ReadGifGraphicControl(m_reader, m_pendingControl);
            else
                m_reader.SkipSubBlocks(); // the counting pass knew the label
            break;
        case GifBlock::Image: return Found::Image;
        case GifBlock::Trailer:
            m_reader.MoveTo(m_firstBlock);
            m_canvas.Restart();
            break;
        default: return Found::Nothing;
        }
    }
    return Found::End;
}

bool GifSequence::DecodeImage(GifFrame& frame)
{
    const auto image = ReadGifImageDescriptor(m_reader);
    if (!image)
        return false;
    frame.image = *image;
    const bool hasRoom = frame.indexMemory.Allocate(image->widthPx, image->heightPx);
    const GifPixelData data = DecodeGifPixels(m_reader, frame.indexMemory.Pixels());
    if (!data.isValid || !hasRoom)
        return false;
    frame.pixelsInData = data.count;
    if (m_pendingControl.isPresent) {
        frame.control = m_pendingControl;
        m_pendingControl.isPresent = false;
    }
    return m_canvas.Draw(m_screen, m_background, frame);
}
