#include "platform/linux/display/screenshot.h"

#include "platform/host/viewport_rows.h"
#include "platform/linux/display/frame.h"

#include <png.h>

namespace cardsong::display {

bool SaveScreenshot(const std::string& path)
{
    Frame frame;
    gdi::CopyScreen(frame);
    std::vector<std::uint32_t> words(frame.size());
    host::WidenRow(frame, { 0, 8, 16 }, words);
    std::vector<png_byte> bytes;
    bytes.reserve(words.size() * 3);
    for (const std::uint32_t word : words) {
        for (const int shift : { 0, 8, 16 })
            bytes.push_back(static_cast<png_byte>(word >> shift));
    }
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = kFrameWidthPx;
    image.height = kFrameHeightPx;
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, path.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

} // namespace cardsong::display
