#include "bench/gif/peers.h"

#include <gif_lib.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace {

int ReadFromMemory(GifFileType* gif, GifByteType* target, int count)
{
    auto& rest = *static_cast<std::span<const std::byte>*>(gif->UserData);
    const auto taken = std::min(static_cast<std::size_t>(count), rest.size());
    std::memcpy(target, rest.data(), taken);
    rest = rest.subspan(taken);
    return static_cast<int>(taken);
}

class Giflib {
public:
    explicit Giflib(std::span<const std::byte> file) : m_rest(file), m_gif(DGifOpen(&m_rest, ReadFromMemory, nullptr))
    {
        if (m_gif == nullptr)
            std::abort();
    }
    ~Giflib() { DGifCloseFile(m_gif, nullptr); }
    Giflib(const Giflib&) = delete;
    Giflib& operator=(const Giflib&) = delete;

    // Goes to the next image, with its transparent index; false at the end.
    bool NextImage()
    {
        m_transparent = NO_TRANSPARENT_COLOR;
        GifRecordType record = UNDEFINED_RECORD_TYPE;
        while (DGifGetRecordType(m_gif, &record) == GIF_OK && record != TERMINATE_RECORD_TYPE) {
            if (record == EXTENSION_RECORD_TYPE)
                ReadExtension();
            else if (DGifGetImageDesc(m_gif) == GIF_OK)
                return true;
        }
        return false;
    }
    // The indices of that image.
    std::span<const GifByteType> Raster()
    {
        const std::size_t count = std::size_t{ Width() } * Height();
        m_raster.resize(std::max(m_raster.size(), count));
        if (DGifGetLine(m_gif, m_raster.data(), static_cast<int>(count)) != GIF_OK)
            std::abort();
        return std::span(m_raster).first(count);
    }
    std::array<std::uint16_t, 256> Palette() const
    {
        const ColorMapObject* const map = m_gif->Image.ColorMap != nullptr ? m_gif->Image.ColorMap : m_gif->SColorMap;
        std::array<std::uint16_t, 256> palette{};
        std::transform(map->Colors, map->Colors + map->ColorCount, palette.begin(), [](const GifColorType& color) {
            return static_cast<std::uint16_t>((color.Red >> 3) << 11 | (color.Green >> 2) << 5 | color.Blue >> 3);
        });
        return palette;
    }
    std::size_t ScreenWidth() const { return static_cast<std::size_t>(m_gif->SWidth); }
    std::size_t ScreenHeight() const { return static_cast<std::size_t>(m_gif->SHeight); }
    std::size_t Left() const { return static_cast<std::size_t>(m_gif->Image.Left); }
    std::size_t Top() const { return static_cast<std::size_t>(m_gif->Image.Top); }
    std::size_t Width() const { return static_cast<std::size_t>(m_gif->Image.Width); }
    std::size_t Height() const { return static_cast<std::size_t>(m_gif->Image.Height); }
    int TransparentIndex() const { return m_transparent; }

private:
    void ReadExtension()
    {
        int label = 0;
        GifByteType* block = nullptr;
        DGifGetExtension(m_gif, &label, &block);
        for (; block != nullptr; DGifGetExtensionNext(m_gif, &block)) {
            GraphicsControlBlock control;
            if (label == GRAPHICS_EXT_FUNC_CODE && DGifExtensionToGCB(block[0], block + 1, &control) == GIF_OK)
                m_transparent = control.TransparentColor;
        }
    }

    std::span<const std::byte> m_rest;
    GifFileType* m_gif;
    std::vector<GifByteType> m_raster;
    int m_transparent = NO_TRANSPARENT_COLOR;
};

void Draw(Giflib& gif, Canvas& canvas)
{
    const auto raster = gif.Raster();
    const auto palette = gif.Palette();
    const int transparent = gif.TransparentIndex();
    for (std::size_t y = 0; y < gif.Height(); ++y) {
        const GifByteType* const indices = &raster[y * gif.Width()];
        std::uint16_t* const target = &canvas[(gif.Top() + y) * gif.ScreenWidth() + gif.Left()];
        for (std::size_t x = 0; x < gif.Width(); ++x) {
            if (indices[x] != transparent)
                target[x] = palette[indices[x]];
        }
    }
}

} // namespace

Canvas FirstFrameByGiflib(std::span<const std::byte> file)
{
    Giflib gif(file);
    if (!gif.NextImage())
        std::abort();
    const auto raster = gif.Raster();
    const auto palette = gif.Palette();
    Canvas canvas(raster.size());
    std::ranges::transform(raster, canvas.begin(), [&](GifByteType index) { return palette[index]; });
    return canvas;
}

Canvas AnimationByGiflib(std::span<const std::byte> file, Composition composition)
{
    Giflib gif(file);
    Canvas canvas(gif.ScreenWidth() * gif.ScreenHeight());
    while (gif.NextImage()) {
        if (composition == Composition::InPlace) {
            Draw(gif, canvas);
        } else {
            Canvas frame = canvas;
            Draw(gif, frame);
            canvas = frame;
        }
    }
    return canvas;
}
