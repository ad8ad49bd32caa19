// Every frame of a few hundred files beside giflib's, put on the screen by plain rules of our own.
#include "gif/gif_sequence.h"

#include <gif_lib.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

using Canvas = std::vector<std::uint16_t>;
constexpr std::uint16_t kPlain565 = 0x1234;

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return { std::istreambuf_iterator<char>(stream), {} };
}

std::vector<std::filesystem::path> Files()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(CARDSONG_TEST_GIFS)) {
        if (entry.path().extension() == ".gif")
            paths.push_back(entry.path());
    }
    std::ranges::sort(paths);
    return paths;
}

int ReadFromMemory(GifFileType* gif, GifByteType* target, int count)
{
    auto& rest = *static_cast<std::string_view*>(gif->UserData);
    const std::size_t taken = rest.copy(reinterpret_cast<char*>(target), static_cast<std::size_t>(count));
    rest.remove_prefix(taken);
    return static_cast<int>(taken);
}

// A file as giflib reads it, whole; the rasters of interlaced images are in order.
class Slurped {
public:
    explicit Slurped(std::string_view file) : m_gif(DGifOpen(&file, ReadFromMemory, nullptr))
    {
        m_isRead = m_gif != nullptr && DGifSlurp(m_gif) == GIF_OK;
    }
    ~Slurped()
    {
        if (m_gif != nullptr)
            DGifCloseFile(m_gif, nullptr);
    }
    Slurped(const Slurped&) = delete;
    Slurped& operator=(const Slurped&) = delete;

    bool IsRead() const { return m_isRead; }
    const GifFileType& Gif() const { return *m_gif; }
    int FrameCount() const { return m_gif->ImageCount; }
    const SavedImage& Frame(int number) const { return m_gif->SavedImages[number]; }
    GraphicsControlBlock Control(int number) const
    {
        GraphicsControlBlock control = { DISPOSAL_UNSPECIFIED, false, 0, NO_TRANSPARENT_COLOR };
        DGifSavedExtensionToGCB(m_gif, number, &control);
        return control;
    }

private:
    GifFileType* m_gif;
    bool m_isRead = false;
};

std::uint16_t ColorOf(const ColorMapObject* map, int index)
{
    if (map == nullptr || index >= map->ColorCount)
        return 0;
    const GifColorType color = map->Colors[index];
    return static_cast<std::uint16_t>((color.Red >> 3) << 11 | (color.Green >> 2) << 5 | color.Blue >> 3);
}

// The screen, frame after frame: two whole canvases, pixel by pixel.
class PlainComposition {
public:
    explicit PlainComposition(const Slurped& file)
        : m_file(file), m_background(file.Gif().SColorMap != nullptr ? GlobalBackground(file.Gif()) : kPlain565),
          m_width(file.Gif().SWidth), m_height(file.Gif().SHeight)
    {
        Restart();
    }

    void Restart() { m_previous.assign(static_cast<std::size_t>(m_width * m_height), m_background); }

    Canvas Draw(int number)
    {
        const SavedImage& frame = m_file.Frame(number);
        const GraphicsControlBlock control = m_file.Control(number);
        const ColorMapObject* const map =
            frame.ImageDesc.ColorMap != nullptr ? frame.ImageDesc.ColorMap : m_file.Gif().SColorMap;
        Canvas canvas = m_previous;
        ForEachPixel(frame.ImageDesc, [&](std::size_t at, int inFrame) {
            const int index = frame.RasterBits[inFrame];
            if (index != control.TransparentColor)
                canvas[at] = ColorOf(map, index);
        });
        if (control.DisposalMode <= DISPOSE_DO_NOT)
            m_previous = canvas;
        else if (control.DisposalMode == DISPOSE_BACKGROUND && m_file.Gif().SColorMap == nullptr)
            Restart();
        else if (control.DisposalMode == DISPOSE_BACKGROUND)
            ForEachPixel(frame.ImageDesc, [&](std::size_t at, int) { m_previous[at] = m_background; });
        return canvas;
    }

private:
    static std::uint16_t GlobalBackground(const GifFileType& gif)
    {
        return ColorOf(gif.SColorMap, gif.SBackGroundColor < gif.SColorMap->ColorCount ? gif.SBackGroundColor : 0);
    }

    // Calls visit(place on the screen, place in the frame) for each pixel of the frame that lies on the screen.
    void ForEachPixel(const GifImageDesc& image, auto&& visit) const
    {
        for (int y = 0; y < image.Height && image.Top + y < m_height; ++y) {
            for (int x = 0; x < image.Width && image.Left + x < m_width; ++x)
                visit(static_cast<std::size_t>((image.Top + y) * m_width + image.Left + x), y * image.Width + x);
        }
    }

    const Slurped& m_file;
    std::uint16_t m_background;
    int m_width;
    int m_height;
    Canvas m_previous;
};

} // namespace

TEST(GifPeer, EveryFrameOfTwoRoundsIsAsGiflibReadsIt)
{
    const auto paths = Files();
    EXPECT_GE(paths.size(), 300U);
    int frames = 0;
    for (const auto& path : paths) {
        SCOPED_TRACE(path.filename());
        const std::string file = ReadFile(path);
        const Slurped expected(file);
        ASSERT_TRUE(expected.IsRead());
        GifSequence sequence;
        ASSERT_TRUE(sequence.Open(std::as_bytes(std::span(file)), kPlain565));
        ASSERT_EQ(sequence.FrameCount(), static_cast<std::uint32_t>(expected.FrameCount()));
        PlainComposition composition(expected);
        for (int round = 0; round < 2; ++round, composition.Restart()) {
            for (int number = 0; number < expected.FrameCount(); ++number, ++frames) {
                const GifFrame* const frame = sequence.DecodeNextFrame();
                ASSERT_NE(frame, nullptr) << "frame " << number;
                ASSERT_TRUE(std::ranges::equal(frame->canvas, composition.Draw(number))) << "frame " << number;
            }
        }
    }
    EXPECT_GE(frames, 1200);
}

TEST(GifPeer, TheFilesAreOfEveryKind)
{
    std::set<std::string> kinds;
    for (const auto& path : Files()) {
        const std::string file = ReadFile(path);
        GifSequence sequence;
        ASSERT_TRUE(sequence.Open(std::as_bytes(std::span(file)), kPlain565));
        const GifScreen& screen = sequence.Screen();
        kinds.insert(screen.widthPx % 2 == 0 ? "even width" : "odd width");
        kinds.insert(screen.heightPx % 2 == 0 ? "even height" : "odd height");
        kinds.insert(screen.globalTable.size == 0 ? "no global table"
                                                  : "global table of " + std::to_string(screen.globalTable.size));
        kinds.insert(sequence.FrameCount() == 1 ? "still" : "animated");
        for (std::uint32_t i = 0; i < sequence.FrameCount(); ++i) {
            const GifFrame* const frame = sequence.DecodeNextFrame();
            ASSERT_NE(frame, nullptr);
            const GifImageDescriptor& image = frame->image;
            kinds.insert(image.isInterlaced ? "interlaced" : "in order");
            kinds.insert(image.localTable.size == 0 ? "no local table" : "local table");
            kinds.insert("disposal " + std::to_string(frame->control.disposal));
            kinds.insert(frame->control.hasTransparency ? "transparent" : "opaque");
            kinds.insert(image.leftPx + image.widthPx > screen.widthPx ? "beside the screen" : "on the screen");
        }
    }
    const std::set<std::string> expected{ "animated",
                                          "beside the screen",
                                          "disposal 0",
                                          "disposal 1",
                                          "disposal 2",
                                          "disposal 3",
                                          "disposal 7",
                                          "even height",
                                          "even width",
                                          "global table of 128",
                                          "global table of 16",
                                          "global table of 2",
                                          "global table of 256",
                                          "global table of 32",
                                          "global table of 4",
                                          "global table of 64",
                                          "global table of 8",
                                          "in order",
                                          "interlaced",
                                          "local table",
                                          "no global table",
                                          "no local table",
                                          "odd height",
                                          "odd width",
                                          "on the screen",
                                          "opaque",
                                          "still",
                                          "transparent" };
    EXPECT_EQ(kinds, expected);
}
