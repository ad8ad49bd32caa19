#include "gui/skin_list_title.h"

#include "common/string_table.h"

void SkinListTitle::Set(LPCWSTR text)
{
    m_stringId = 0;
    Take(text != nullptr ? WStringView(text) : WStringView());
}

void SkinListTitle::Reload(HMODULE strings)
{
    if (IsString())
        Take(ReadString(strings, m_stringId));
}

WString SkinListTitle::OnPage(std::int32_t page, std::int32_t pages) const
{
    if (m_pageIndicator == SkinListPageIndicator::Hidden)
        return m_text;
    WCHAR number[32] = {};
    wsprintfW(number, TEXT("  %d/%d"), page, pages);
    return m_text + number;
}

void SkinListTitle::Take(WStringView text)
{
    m_text = text.substr(0, kSkinListTitleUnits - 1);
}
