// The title of a skinned list: a text, or a string in the language in force, and the number of the page behind it.
// Knows no window.
#pragma once

#include "platform/ce.h"

constexpr std::size_t kSkinListTitleUnits = 40; // with the terminating zero

enum class SkinListPageIndicator { Hidden, Shown }; // "  1/3" behind the title

class SkinListTitle {
public:
    // A text of its own; 39 units at most are taken. Null: none.
    void Set(LPCWSTR text);
    // A string of the module, read by Reload.
    void SetString(UINT stringId) { m_stringId = stringId; }
    bool IsString() const { return m_stringId != 0; }
    // Reads the string again; a title that is no string stays.
    void Reload(HMODULE strings);
    void SetPageIndicator(SkinListPageIndicator indicator) { m_pageIndicator = indicator; }

    const WString& Text() const { return m_text; }
    // The text with what stands behind it on page `page`, from 1, of `pages`.
    WString OnPage(std::int32_t page, std::int32_t pages) const;

private:
    void Take(WStringView text);

    WString m_text;
    UINT m_stringId = 0; // 0: the title is no string
    SkinListPageIndicator m_pageIndicator = SkinListPageIndicator::Hidden;
};
