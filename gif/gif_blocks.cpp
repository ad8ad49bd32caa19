#include "gif/gif_blocks.h"

#include "gif/gif_pixels.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace {

constexpr unsigned kTableFlag = 0x80;
constexpr std::size_t kBytesPerColor = 3;
// Many files ask for no delay at all; they are shown at ten pictures a second, as they were meant.
constexpr std::uint32_t kShortDelayHundredths = 5;
constexpr std::uint32_t kShownShortDelayHundredths = 10;

// Colours of the table that a packed byte announces, 0 when it announces none.
std::uint32_t TableSize(unsigned packed)
{
    return (packed & kTableFlag) != 0 ? 1U << ((packed & 7U) + 1U) : 0U;
}

GifColorTable ReadColorTable(GifReader& reader, std::uint32_t size)
{
    GifColorTable table;
    const auto bytes = reader.Take(size * kBytesPerColor);
    table.size = size;
    for (std::size_t i = 0; i * kBytesPerColor < bytes.size(); ++i) {
        const auto* color = &bytes[i * kBytesPerColor];
        table.colors[i] = Rgb565(std::to_integer<std::uint8_t>(color[0]), std::to_integer<std::uint8_t>(color[1]),
                                 std::to_integer<std::uint8_t>(color[2]));
    }
    return table;
}

std::array<char, 4> ReadTag(GifReader& reader)
{
    std::array<char, 4> tag{};
    std::generate_n(tag.begin(), 3, [&reader] { return static_cast<char>(reader.U8()); });
    return tag;
}

bool IsKnownLabel(GifLabel label)
{
    return label == GifLabel::PlainText || label == GifLabel::GraphicControl || label == GifLabel::Comment ||
           label == GifLabel::Application;
}

void SkipImage(GifReader& reader)
{
    reader.Skip(8); // left, top, width, height
    reader.Skip(TableSize(reader.U8()) * kBytesPerColor);
    reader.Skip(1); // minimum code size
    reader.SkipSubBlocks();
}

std::uint32_t CountUpToTrailer(GifReader& reader)
{
    std::uint32_t count = 0;
    while (!reader.AtEnd()) {
        switch (static_cast<GifBlock>(reader.U8())) {
        case GifBlock::Terminator: break; // a stray one
        case GifBlock::Extension:
            if (!reader.AtEnd() && !IsKnownLabel(static_cast<GifLabel>(reader.U8())))
                return 0;
            reader.SkipSubBlocks();
            break;
        case GifBlock::Image:
            ++count;
            SkipImage(reader);
            break;
        case GifBlock::Trailer: return count;
        default: return 0;
        }
    }
    return count;
}

} // namespace

std::optional<GifScreen> ReadGifScreen(GifReader& reader)
{
    GifScreen screen;
    screen.signature = ReadTag(reader);
    screen.version = ReadTag(reader);
    screen.widthPx = reader.U16Le();
    screen.heightPx = reader.U16Le();
    const unsigned packed = reader.U8();
    const std::uint32_t backgroundIndex = reader.U8();
    screen.pixelAspect = reader.U8();
    screen.colorResolution = ((packed & 0x70U) >> 4) + 1;
    screen.isSorted = (packed & 0x08U) != 0;
    screen.globalTable = ReadColorTable(reader, TableSize(packed));
    if (screen.globalTable.size != 0)
        screen.backgroundIndex = backgroundIndex < screen.globalTable.size ? backgroundIndex : 0;
    if (!reader.Ok() || screen.widthPx == 0 || screen.heightPx == 0 ||
        std::string_view(screen.signature.data()) != "GIF" || std::string_view(screen.version.data(), 3) > "89a")
        return std::nullopt;
    return screen;
}

std::uint32_t CountGifImages(GifReader& reader)
{
    const std::size_t start = reader.Offset();
    const std::uint32_t count = CountUpToTrailer(reader);
    reader.MoveTo(start);
    return count;
}

void ReadGifGraphicControl(GifReader& reader, GifGraphicControl& control)
{
    for (auto block = reader.SubBlock(); !block.empty(); block = reader.SubBlock()) {
        if (block.size() != 4)
            continue;
        GifReader fields(block);
        const unsigned packed = fields.U8();
        control.isPresent = true;
        control.disposal = (packed & 0x1CU) >> 2;
        control.waitsForUser = (packed & 0x02U) != 0;
        control.hasTransparency = (packed & 0x01U) != 0;
        const std::uint32_t delay = fields.U16Le();
        control.delayHundredths = delay <= kShortDelayHundredths ? kShownShortDelayHundredths : delay;
        control.transparentIndex = fields.U8();
    }
}

std::optional<GifImageDescriptor> ReadGifImageDescriptor(GifReader& reader)
{
    GifImageDescriptor image;
    image.leftPx = reader.U16Le();
    image.topPx = reader.U16Le();
    image.widthPx = reader.U16Le();
    image.heightPx = reader.U16Le();
    const unsigned packed = reader.U8();
    image.isInterlaced = (packed & 0x40U) != 0;
    image.isSorted = (packed & 0x20U) != 0;
    image.localTable = ReadColorTable(reader, TableSize(packed));
    if (!reader.Ok())
        return std::nullopt;
    return image;
}
