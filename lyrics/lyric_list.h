// The timed lines of one song: the one place that knows the items of a lyric list by their type. It knows no song, file
// or window.
#pragma once

#include "containers/ptr_list_ctrl.h"

#include "platform/ce.h"

#include <memory>

// A text that several lines may share: a chorus with a hundred stamps is held once.
using LyricText = std::shared_ptr<const WString>;

struct LyricLine {
    std::int32_t timeMs = 0; // from the start of the song
    LyricText text;          // never null or empty; zero-terminated

    const WCHAR* Text() const { return text->c_str(); }
};

// Between the texts of lines that have the same time.
inline constexpr const WCHAR* kLyricJoint = TEXT("   ");

// Letters are compared without case.
bool IsSameLyric(WStringView a, WStringView b);

// A view that reads. It borrows the list, which outlives it. Times ascend, and no two lines have the same.
class ConstLyricList {
public:
    explicit ConstLyricList(const CPtrListCtrl& list) : m_list(list) {}

    std::int32_t Count() const { return m_list.GetCount(); }
    bool IsEmpty() const { return m_list.IsEmpty(); }
    // `index`: 0..Count()-1.
    const LyricLine& At(std::int32_t index) const { return *Find(index); }
    // Null where the list has no line.
    const LyricLine* Find(std::int32_t index) const;

private:
    const CPtrListCtrl& m_list;
};

// A view that also changes the list. A line in the list belongs to the list's owner, who calls FreeAll before the list
// ends.
class LyricList {
public:
    explicit LyricList(CPtrListCtrl& list) : m_list(list) {}

    std::int32_t Count() const { return m_list.GetCount(); }
    bool IsEmpty() const { return m_list.IsEmpty(); }
    const LyricLine& At(std::int32_t index) const { return *Find(index); }

    // Puts the line into its place. Where a line has this time already, the text is joined to its text; one that is the
    // same is dropped. 1, or 0 for a text that is null or empty. The search begins at the end of the list.
    int Add(std::int32_t timeMs, LyricText text) const;
    // The line comes behind every other: `timeMs` is above the time of the last, and `text` is not empty.
    void Append(std::int32_t timeMs, LyricText text) const;
    // Of neighbours with the same text only the first stays.
    void RemoveRepeats() const;
    // Frees every line and empties the list.
    void FreeAll() const;

private:
    LyricLine* Find(std::int32_t index) const;

    CPtrListCtrl& m_list;
};
