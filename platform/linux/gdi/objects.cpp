#include "platform/linux/gdi/objects.h"

#include <array>
#include <cstring>
#include <utility>

namespace cardsong::gdi {
namespace {

// The real system stops a process at 10,000 handles; a program that leaks should meet the same wall here.
constexpr std::size_t kMaxObjects = 10000;
// Under the black text of a selected row: light, and of the skin's family.
constexpr COLORREF kHighlightColor = RGB(0x9F, 0xE3, 0xFA);

struct Slot {
    std::unique_ptr<Object> object;
    ULONG_PTR serial = 0; // grows with every use of the slot, so that an old handle never names a new object
};

struct Table {
    std::vector<Slot> slots;
    std::vector<std::size_t> freeSlots;
};

Table& TheTable()
{
    static Table* table = new Table; // lives until the process ends: windows are painted to the last
    return *table;
}

HANDLE HandleOf(std::size_t index, ULONG_PTR serial)
{
    return reinterpret_cast<HANDLE>((serial << 16) | (index + 1));
}

Slot* SlotOf(HANDLE handle)
{
    const auto value = reinterpret_cast<ULONG_PTR>(handle);
    const std::size_t index = (value & 0xFFFF) - 1;
    auto& slots = TheTable().slots;
    if ((value & 0xFFFF) == 0 || index >= slots.size())
        return nullptr;
    Slot& slot = slots[index];
    return slot.object && HandleOf(index, slot.serial) == handle ? &slot : nullptr;
}

HANDLE AddStock(std::unique_ptr<Object> object)
{
    object->isStock = true;
    return AddObject(std::move(object));
}

HANDLE StockBrush(COLORREF color, bool isHollow = false)
{
    auto brush = std::make_unique<Brush>();
    brush->pixel = PixelFromColor(color);
    brush->isHollow = isHollow;
    return AddStock(std::move(brush));
}

HANDLE StockFont()
{
    auto font = std::make_unique<Font>();
    font->description.lfHeight = kDefaultEmPx * -1;
    font->description.lfWeight = 400;
    return AddStock(std::move(font));
}

} // namespace

std::mutex& RoomLock()
{
    static std::mutex lock;
    return lock;
}

HANDLE AddObject(std::unique_ptr<Object> object)
{
    Table& table = TheTable();
    if (table.freeSlots.empty()) {
        if (table.slots.size() >= kMaxObjects)
            return nullptr;
        table.slots.emplace_back();
        table.freeSlots.push_back(table.slots.size() - 1);
    }
    const std::size_t index = table.freeSlots.back();
    table.freeSlots.pop_back();
    Slot& slot = table.slots[index];
    slot.object = std::move(object);
    ++slot.serial;
    return HandleOf(index, slot.serial);
}

Object* FindObject(HANDLE handle)
{
    Slot* slot = SlotOf(handle);
    return slot != nullptr ? slot->object.get() : nullptr;
}

void RemoveObject(HANDLE handle)
{
    if (Slot* slot = SlotOf(handle)) {
        slot->object.reset();
        TheTable().freeSlots.push_back((reinterpret_cast<ULONG_PTR>(handle) & 0xFFFF) - 1);
    }
}

BOOL DeleteOrMark(HANDLE handle)
{
    Object* object = FindObject(handle);
    if (object == nullptr || !object->MayBeDeleted())
        return FALSE;
    if (object->isStock)
        return TRUE;
    if (object->selections > 0)
        object->deletionAsked = true;
    else
        RemoveObject(handle);
    return TRUE;
}

HANDLE HeldObject::Exchange(HANDLE next)
{
    if (Object* object = FindObject(next))
        ++object->selections;
    const HANDLE before = std::exchange(m_handle, next);
    Object* released = FindObject(before);
    if (released != nullptr && --released->selections == 0 && released->deletionAsked)
        RemoveObject(before);
    return before;
}

HANDLE DefaultBitmap()
{
    static const HANDLE bitmap = [] {
        auto object = std::make_unique<Bitmap>();
        object->surface = { nullptr, 1, 1, 1 };
        object->rowBytes = 2;
        object->isMonochrome = true;
        return AddStock(std::move(object));
    }();
    return bitmap;
}

HANDLE StockObject(int index)
{
    static const std::array<std::pair<int, HANDLE>, 8> objects = { {
        { WHITE_BRUSH, StockBrush(RGB(255, 255, 255)) },
        { LTGRAY_BRUSH, StockBrush(RGB(192, 192, 192)) },
        { GRAY_BRUSH, StockBrush(RGB(128, 128, 128)) },
        { DKGRAY_BRUSH, StockBrush(RGB(64, 64, 64)) },
        { BLACK_BRUSH, StockBrush(RGB(0, 0, 0)) },
        { NULL_BRUSH, StockBrush(0, true) },
        { BLACK_PEN, AddStock(std::make_unique<Pen>()) },
        { SYSTEM_FONT, StockFont() },
    } };
    for (const auto& [number, handle] : objects) {
        if (number == index)
            return handle;
    }
    return nullptr;
}

HANDLE SystemColorBrush(int index)
{
    static const HANDLE highlight = StockBrush(kHighlightColor);
    return index == COLOR_HIGHLIGHT ? highlight : nullptr;
}

} // namespace cardsong::gdi

using namespace cardsong::gdi;

HGDIOBJ GetStockObject(int index)
{
    const std::lock_guard lock(RoomLock());
    return StockObject(index);
}

BOOL DeleteObject(HGDIOBJ handle)
{
    const std::lock_guard lock(RoomLock());
    return DeleteOrMark(handle);
}

namespace {

int DescribeBitmap(const Bitmap& bitmap, int sizeBytes, LPVOID record)
{
    constexpr int kRecordBytes = sizeof(BITMAP);
    if (record == nullptr)
        return kRecordBytes;
    if (sizeBytes < kRecordBytes)
        return 0;
    BITMAP description{};
    description.bmWidth = bitmap.surface.widthPx;
    description.bmHeight = bitmap.surface.heightPx;
    description.bmWidthBytes = bitmap.rowBytes;
    description.bmPlanes = 1;
    description.bmBitsPixel = bitmap.isMonochrome ? 1 : 16;
    description.bmBits = bitmap.isSection ? bitmap.pixels.get() : nullptr;
    std::memcpy(record, &description, sizeof(description));
    return kRecordBytes;
}

int DescribeFont(const Font& font, int sizeBytes, LPVOID record)
{
    constexpr int kRecordBytes = sizeof(LOGFONTW);
    if (record == nullptr)
        return kRecordBytes;
    const int copied = std::clamp(sizeBytes, 0, kRecordBytes);
    std::memcpy(record, &font.description, static_cast<std::size_t>(copied));
    return copied;
}

} // namespace

int GetObjectW(HANDLE handle, int sizeBytes, LPVOID record)
{
    const std::lock_guard lock(RoomLock());
    if (const Bitmap* bitmap = Find<Bitmap>(handle))
        return DescribeBitmap(*bitmap, sizeBytes, record);
    if (const Font* font = Find<Font>(handle))
        return DescribeFont(*font, sizeBytes, record);
    return 0;
}
