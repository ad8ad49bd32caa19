#include "gui/caption_text.h"

#include "platform/screen_size.h"

#include <climits>

namespace {

constexpr LANGID kChineseSimplified = 2052;
constexpr LANGID kChineseTraditional = 1028;
constexpr int kOtherLanguagesPoints = 11;
constexpr LONG kNormalWeight = 400;
constexpr LONG kBoldWeight = 700;
constexpr int kPointsPerInch = 72;

} // namespace

LOGFONTW ChooseCaptionFont(LANGID language, int sizePoints, int logPixelsY)
{
    const bool isChinese = language == kChineseSimplified || language == kChineseTraditional;
    LOGFONTW description = {};
    description.lfHeight = -((isChinese ? sizePoints : kOtherLanguagesPoints) * logPixelsY / kPointsPerInch);
    description.lfWeight = isChinese ? kNormalWeight : kBoldWeight;
    return description;
}

UniqueFont CreateCaptionFont(HDC context, int sizePoints)
{
    const LOGFONTW description =
        ChooseCaptionFont(GetUserDefaultUILanguage(), sizePoints, GetDeviceCaps(context, LOGPIXELSY));
    return UniqueFont(CreateFontIndirectW(&description));
}

HFONT CaptionFont::Get(HDC context, int sizePoints)
{
    const LOGFONTW description =
        ChooseCaptionFont(GetUserDefaultUILanguage(), sizePoints, GetDeviceCaps(context, LOGPIXELSY));
    if (!m_font || description.lfHeight != m_height || description.lfWeight != m_weight) {
        m_font.Reset(CreateFontIndirectW(&description));
        m_height = description.lfHeight;
        m_weight = description.lfWeight;
    }
    return m_font.Get();
}

void MeasureText(HDC context, LPCWSTR text, RECT& rect)
{
    TEXTMETRICW metrics = {};
    GetTextMetricsW(context, &metrics);
    rect.left = 0;
    rect.top = 0;
    rect.bottom = metrics.tmHeight + metrics.tmExternalLeading;
    if (text == nullptr) {
        rect.right = kScreenWidthPx;
        return;
    }
    SIZE size = {};
    int fit = 0;
    GetTextExtentExPointW(context, text, static_cast<int>(WStringView(text).size()), INT_MAX, &fit, nullptr, &size);
    rect.right += size.cx;
}
