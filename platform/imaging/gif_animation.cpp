#include "platform/imaging/gif_animation.h"

#include "platform/whole_file.h"

#include <algorithm>
#include <utility>

namespace cardsong::imaging {

namespace {

std::uint16_t Rgb565Of(COLORREF color)
{
    const auto part = [color](unsigned shift) { return static_cast<std::uint8_t>(color >> shift); };
    return Rgb565(part(0), part(8), part(16));
}

} // namespace

GifAnimation::GifAnimation(COLORREF key) : m_key(Rgb565Of(key)) {}

GifAnimation::~GifAnimation()
{
    DeleteObject(m_picture.bitmap);
}

bool GifAnimation::Open(LPCWSTR path)
{
    auto file = kernel::ReadWholeFile(path, kMaxFileBytes);
    if (!file)
        return false;
    m_file = std::move(*file);
    if (!StartRound())
        return false;
    const GifScreen& screen = m_images.Screen();
    if (screen.widthPx == 0 || screen.heightPx == 0 || screen.widthPx > kMaxSidePx || screen.heightPx > kMaxSidePx ||
        screen.widthPx > kMaxAnimationPixels / screen.heightPx)
        return false;
    m_picture = MakeRgb565Section(WidthPx(), HeightPx());
    return m_picture.bitmap != nullptr;
}

bool GifAnimation::ShowNextFrame()
{
    if (IsLastFrame() && !StartRound())
        return false;
    const GifFrame* const frame = m_images.DecodeNextFrame();
    if (frame == nullptr || frame->canvas.empty() || frame->image.widthPx > kMaxSidePx ||
        frame->image.heightPx > kMaxSidePx)
        return false;
    ++m_next;
    constexpr std::uint32_t kMsInHundredth = 10;
    m_delayMs = frame->control.isPresent ? frame->control.delayHundredths * kMsInHundredth : kUntoldDelayMs;
    GdiFlush(); // the picture's pixels are written directly
    const auto width = static_cast<std::size_t>(WidthPx());
    const auto canvas = frame->canvas;
    for (std::size_t y = 0; y < static_cast<std::size_t>(HeightPx()); ++y)
        std::ranges::copy(canvas.subspan(y * width, width), m_picture.Row(y));
    return true;
}

// The picture is empty again, whatever the file's own end says.
bool GifAnimation::StartRound()
{
    m_next = 0;
    return m_images.Open(m_file, m_key, GifBackground::Given);
}

} // namespace cardsong::imaging
