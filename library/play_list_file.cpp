#include "library/play_list_file.h"

#include "common/kernel_handles.h"
#include "library/card_of_list.h"
#include "library/decimal_text.h"
#include "library/play_time_text.h"
#include "library/song_list.h"

#include <algorithm>
#include <array>
#include <limits>

namespace {

// Written whole before it takes the place of the list: neither a full disk nor a power loss costs the old list.
constexpr const WCHAR* kUnfinishedFile = TEXT("\\Windows\\play_list.new");
constexpr WCHAR kSeparator = TEXT('$');
constexpr WCHAR kRecordEnd = 0x0A0D; // the bytes 0D 0A
constexpr std::size_t kMostRecordUnits = 1000;

UniqueFile OpenFile(const WCHAR* path, DWORD disposition)
{
    return UniqueFile(CreateFileW(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

// Collects bytes into blocks, so that a long list costs neither memory nor a call for each record.
class BlockWriter {
public:
    explicit BlockWriter(HANDLE file) : m_file(file) { m_block.reserve(kBlockBytes); }

    void Append(WCHAR unit)
    {
        m_block += static_cast<char>(unit & 0xFF);
        m_block += static_cast<char>(unit >> 8);
        if (m_block.size() >= kBlockBytes)
            WriteBlock();
    }

    // True when every byte has reached the disk.
    bool Finish()
    {
        WriteBlock();
        return m_isWhole && FlushFileBuffers(m_file);
    }

private:
    static constexpr std::size_t kBlockBytes = 16384;

    void WriteBlock()
    {
        const auto sizeBytes = static_cast<DWORD>(m_block.size());
        DWORD writtenBytes = 0;
        m_isWhole = m_isWhole && WriteFile(m_file, m_block.data(), sizeBytes, &writtenBytes, nullptr) &&
                    writtenBytes == sizeBytes;
        m_block.clear();
    }

    const HANDLE m_file;
    std::string m_block;
    bool m_isWhole = true;
};

// A negative duration comes from the list itself and goes back as it is.
std::int64_t WrittenSeconds(const MediaFileEntry& entry)
{
    constexpr double kLeast = std::numeric_limits<std::int32_t>::min(); // the least that is read
    return entry.duration < 0 ? static_cast<std::int64_t>(std::max(entry.duration, kLeast))
                              : WholeSeconds(entry.duration);
}

void AppendRecords(const CPtrListCtrl& list, BlockWriter& writer)
{
    const ConstSongList songs(list);
    for (std::int32_t i = 0; i < songs.Count(); ++i) {
        const MediaFileEntry* const entry = songs.Find(i);
        if (entry == nullptr)
            break;
        if (entry->fileName[0] == 0)
            continue;
        for (const WCHAR unit : PlayListRecordText(i + 1, *entry))
            writer.Append(unit);
        writer.Append(kRecordEnd);
    }
}

bool WriteRecords(const std::vector<const CPtrListCtrl*>& lists, const WCHAR* path)
{
    const UniqueFile file = OpenFile(path, CREATE_ALWAYS);
    if (!file)
        return false;
    BlockWriter writer(file.Get());
    for (const CPtrListCtrl* const list : lists)
        AppendRecords(*list, writer);
    return writer.Finish();
}

// Cuts the bytes of the file into records, however they arrive.
class RecordCutter {
public:
    explicit RecordCutter(const std::function<void(WStringView)>& visit) : m_visit(visit) {}

    void Feed(std::uint8_t byte)
    {
        if (!m_hasLowByte) {
            m_lowByte = byte;
            m_hasLowByte = true;
            return;
        }
        m_hasLowByte = false;
        const auto unit = static_cast<WCHAR>(m_lowByte | byte << 8);
        if (unit == kRecordEnd)
            End();
        else if (m_record.size() < kMostRecordUnits)
            m_record += unit;
    }

    void End()
    {
        m_visit(m_record);
        m_record.clear();
    }

private:
    const std::function<void(WStringView)>& m_visit;
    WString m_record;
    std::uint8_t m_lowByte = 0;
    bool m_hasLowByte = false;
};

// The text before the next separator, which is taken off `text` together with it. False without a separator.
bool TakeField(WStringView& text, WStringView& field)
{
    const std::size_t separator = text.find(kSeparator);
    if (separator == WStringView::npos)
        return false;
    field = text.substr(0, separator);
    text.remove_prefix(separator + 1);
    return true;
}

} // namespace

WString PlayListRecordText(std::int32_t number, const MediaFileEntry& entry)
{
    WString text = DecimalText(static_cast<std::uint32_t>(number));
    ((text += kSeparator) += entry.fileName) += kSeparator;
    (text += entry.folder) += kSeparator;
    text += DecimalText(WrittenSeconds(entry));
    return text;
}

void SavePlayList(const CPtrListCtrl& list)
{
    SavePlayLists({ &list });
}

void SavePlayLists(const std::vector<const CPtrListCtrl*>& lists)
{
    if (!WriteRecords(lists, kUnfinishedFile) || !DeleteAndRenameFile(kPlayListFile, kUnfinishedFile))
        DeleteFileW(kUnfinishedFile);
}

void LoadPlayList(CPtrListCtrl& list)
{
    ReadPlayListRecords([&list](WStringView record) { ParsePlayListRecord(record, list); });
}

void ReadPlayListRecords(const std::function<void(WStringView record)>& visit)
{
    const UniqueFile file = OpenFile(kPlayListFile, OPEN_EXISTING);
    if (!file)
        return;
    RecordCutter records(visit);
    std::array<std::uint8_t, 1000> block;
    DWORD readBytes = 0;
    while (ReadFile(file.Get(), block.data(), static_cast<DWORD>(block.size()), &readBytes, nullptr) != FALSE &&
           readBytes > 0) {
        for (DWORD i = 0; i < readBytes; ++i)
            records.Feed(block[i]);
    }
    records.End();
}

int ParsePlayListRecord(WStringView text, CPtrListCtrl& list)
{
    std::unique_ptr<MediaFileEntry> entry = ReadPlayListRecord(text, nullptr);
    if (!entry || !IsSongThere(*entry))
        return 0;
    SongList(list).Append(std::move(entry));
    return 1;
}

std::unique_ptr<MediaFileEntry> ReadPlayListRecord(WStringView text, std::int32_t* number)
{
    text = text.substr(0, kMostRecordUnits);
    text = text.substr(0, text.find(kRecordEnd));
    WStringView numberText;
    WStringView fileName;
    WStringView folder;
    if (!TakeField(text, numberText) || !TakeField(text, fileName) || !TakeField(text, folder) || fileName.empty() ||
        fileName.front() == 0)
        return nullptr;
    std::unique_ptr<MediaFileEntry> entry = NewMediaEntry(fileName, folder);
    if (!entry)
        return nullptr;
    entry->duration = static_cast<double>(_wtol(WString(text).c_str()));
    if (number != nullptr)
        *number = static_cast<std::int32_t>(_wtol(WString(numberText).c_str()));
    return entry;
}
