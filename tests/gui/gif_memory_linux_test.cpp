// How much memory a decode takes at its peak. This program counts what `new` gives out; the bitmap's pixels come from
// the drawing side and are not among it.
#include "gui/gif_bitmap.h"
#include "gui/gif_decoder.h"

#include "common/gdi_handles.h"
#include "tests/gif/gif_builder.h"
#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

using namespace cardsong::test;

namespace {

std::atomic<std::size_t> g_heldBytes = 0;
std::atomic<std::size_t> g_peakBytes = 0;

constexpr std::size_t kHeaderBytes = 16; // keeps the alignment of malloc

void* Allocate(std::size_t sizeBytes)
{
    auto* const memory = static_cast<std::size_t*>(std::malloc(sizeBytes + kHeaderBytes));
    if (memory == nullptr)
        return nullptr;
    *memory = sizeBytes;
    g_heldBytes += sizeBytes;
    g_peakBytes = std::max(g_peakBytes.load(), g_heldBytes.load());
    return reinterpret_cast<std::byte*>(memory) + kHeaderBytes;
}

void Release(void* pointer)
{
    if (pointer == nullptr)
        return;
    void* const memory = static_cast<std::byte*>(pointer) - kHeaderBytes;
    g_heldBytes -= *static_cast<std::size_t*>(memory);
    std::free(memory);
}

} // namespace

void* operator new(std::size_t sizeBytes)
{
    void* const memory = Allocate(sizeBytes);
    return memory != nullptr ? memory : throw std::bad_alloc();
}
void* operator new(std::size_t sizeBytes, const std::nothrow_t&) noexcept
{
    return Allocate(sizeBytes);
}
void* operator new[](std::size_t sizeBytes)
{
    return operator new(sizeBytes);
}
void* operator new[](std::size_t sizeBytes, const std::nothrow_t&) noexcept
{
    return Allocate(sizeBytes);
}
void operator delete(void* memory) noexcept
{
    Release(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    Release(memory);
}
void operator delete[](void* memory) noexcept
{
    Release(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    Release(memory);
}

namespace {

constexpr std::size_t kOther = 64 * 1024;
constexpr std::uint16_t kWidth = 320;
constexpr std::uint16_t kHeight = 240;
constexpr std::size_t kIndexBytes = std::size_t{ kWidth } * kHeight;
constexpr std::size_t kCanvasBytes = 2 * kIndexBytes;
const std::vector<GifColor> kFourColors{ kBlack, kRed, kGreen, kBlue };

class GifMemory : public testing::Test {
protected:
    // A file of whole pictures with these disposals, and one transparent index.
    WString Write(std::initializer_list<unsigned> disposals, unsigned packed = 0)
    {
        GifBuilder builder;
        builder.Screen(kWidth, kHeight, kFourColors);
        for (const unsigned disposal : disposals)
            builder.GraphicControl(disposal, 10, 0)
                .Image(
                    { .width = kWidth, .height = kHeight, .indices = NoiseIndices(kIndexBytes, 4), .packed = packed });
        const std::string bytes = builder.Trailer().Text();
        m_fileBytes = bytes.size();
        m_device.WriteFile("user/scratch/picture.gif", bytes);
        return m_device.Path(TEXT("picture.gif"));
    }
    // The most that `work` held at a time beyond what was there before.
    static std::size_t PeakOf(auto&& work)
    {
        const std::size_t before = g_heldBytes;
        g_peakBytes = before;
        work();
        return g_peakBytes - before;
    }

    ScratchDevice m_device;
    std::size_t m_fileBytes = 0;
};

} // namespace

TEST_F(GifMemory, APictureTakesItsFileItsIndicesAndOneCanvas)
{
    for (const unsigned disposal : { 0U, 2U, 3U }) {
        for (const unsigned packed : { 0U, kInterlace }) {
            const WString path = Write({ disposal }, packed);
            UniqueBitmap bitmap;
            const std::size_t peak = PeakOf([&] { bitmap.Reset(LoadGifBitmap(path.c_str())); });
            EXPECT_TRUE(bitmap);
            EXPECT_LE(peak, m_fileBytes + kIndexBytes + kCanvasBytes + kOther);
            EXPECT_GE(peak, m_fileBytes + kIndexBytes + kCanvasBytes);
        }
    }
}

TEST_F(GifMemory, AnAnimationTakesNoMoreThanASecondCanvas)
{
    const WString path = Write({ 0, 3, 2, 3, 3, 1, 3 });
    const std::size_t peak = PeakOf([&] {
        GifDecoder decoder(path.c_str(), 0);
        ASSERT_TRUE(decoder.Open());
        for (int i = 0; i < 16; ++i)
            ASSERT_NE(decoder.DecodeNextFrame(), nullptr);
    });
    EXPECT_LE(peak, m_fileBytes + kIndexBytes + 2 * kCanvasBytes + kOther);
    EXPECT_GE(peak, m_fileBytes + kIndexBytes + 2 * kCanvasBytes); // the third frame from the end needs both
}

TEST_F(GifMemory, AnAnimationThatTakesNothingBackNeedsOneCanvas)
{
    const WString path = Write({ 0, 1, 2, 0, 2 });
    const std::size_t peak = PeakOf([&] {
        GifDecoder decoder(path.c_str(), 0);
        ASSERT_TRUE(decoder.Open());
        for (int i = 0; i < 11; ++i)
            ASSERT_NE(decoder.DecodeNextFrame(), nullptr);
    });
    EXPECT_LE(peak, m_fileBytes + kIndexBytes + kCanvasBytes + kOther);
}

TEST_F(GifMemory, NothingIsHeldWhenTheDecoderIsGone)
{
    const WString path = Write({ 0, 3 });
    LoadGifBitmap(nullptr); // whatever is made at the first use
    const std::size_t before = g_heldBytes;
    {
        GifDecoder decoder(path.c_str(), 0);
        ASSERT_TRUE(decoder.Open());
        ASSERT_NE(decoder.DecodeNextFrame(), nullptr);
        ASSERT_NE(decoder.DecodeNextFrame(), nullptr);
    }
    EXPECT_EQ(g_heldBytes, before);
}
