// Handles of the drawing side: what each one is, whether it lives, who has selected it. Knows nothing of drawing.
#pragma once

#include "platform/linux/ce/gdi.h"
#include "platform/linux/gdi/surface.h"

#include <memory>
#include <mutex>
#include <vector>

namespace cardsong::gdi {

struct FontFace;

// The one lock of the room: handles, pixels and the text cache. Every function of the API takes it once, at its top;
// everything declared in this folder's other headers expects it to be held.
std::mutex& RoomLock();

enum class ObjectKind : std::uint8_t { Bitmap, Brush, Pen, Font, Context };

struct Object {
    explicit Object(ObjectKind objectKind) : kind(objectKind) {}
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual bool MayBeDeleted() const { return true; } // by DeleteObject and DeleteDC

    const ObjectKind kind;
    bool isStock = false;
    bool deletionAsked = false; // destroyed when the last context lets go of it
    int selections = 0;
};

// Pixel blocks go back to bitmaps.cpp, which keeps a few for the next paint.
struct RecyclePixels {
    std::size_t words = 0;
    void operator()(std::uint16_t* pixels) const;
};
using PixelMemory = std::unique_ptr<std::uint16_t[], RecyclePixels>;

struct Bitmap final : Object {
    static constexpr ObjectKind kKind = ObjectKind::Bitmap;
    Bitmap() : Object(kKind) {}
    PixelMemory pixels;
    Surface surface;
    LONG rowBytes = 0;
    bool isSection = false;    // its owner sees the pixels
    bool isMonochrome = false; // its pixels are black or white, though kept as words
};

struct Brush final : Object {
    static constexpr ObjectKind kKind = ObjectKind::Brush;
    Brush() : Object(kKind) {}
    bool isHollow = false;
    std::uint16_t pixel = 0;
    PixelMemory patternPixels; // empty: solid
    Surface pattern;
};

struct Pen final : Object {
    static constexpr ObjectKind kKind = ObjectKind::Pen;
    Pen() : Object(kKind) {}
};

struct Font final : Object {
    static constexpr ObjectKind kKind = ObjectKind::Font;
    Font() : Object(kKind) {}
    LOGFONTW description{};
    std::shared_ptr<const FontFace> face; // found at the first text
};

// Height of the system's font, and of a font that was asked for with height 0: 12 points.
constexpr LONG kDefaultEmPx = 16;

// Returns null when the table is full.
HANDLE AddObject(std::unique_ptr<Object> object);
// The living object behind `handle`; null for every other value.
Object* FindObject(HANDLE handle);
void RemoveObject(HANDLE handle);
// As DeleteObject.
BOOL DeleteOrMark(HANDLE handle);

// A context's hold on an object. The last one to let go carries out a deletion that was asked for meanwhile.
class HeldObject {
public:
    HeldObject() = default;
    ~HeldObject() { Exchange(nullptr); }
    HeldObject(const HeldObject&) = delete;
    HeldObject& operator=(const HeldObject&) = delete;

    HANDLE Get() const { return m_handle; }
    // Takes hold of `next` (null: nothing), then lets go of the object before, and returns it.
    HANDLE Exchange(HANDLE next);

private:
    HANDLE m_handle = nullptr;
};

template <typename T>
T* Find(HANDLE handle)
{
    Object* object = FindObject(handle);
    return object != nullptr && object->kind == T::kKind ? static_cast<T*>(object) : nullptr;
}

// The bitmap of a fresh memory context: 1 x 1, the only one that several contexts may hold.
HANDLE DefaultBitmap();
// As GetStockObject; null for an index that we do not have.
HANDLE StockObject(int index);
// As GetSysColorBrush; null for a colour that we do not have.
HANDLE SystemColorBrush(int index);

} // namespace cardsong::gdi
