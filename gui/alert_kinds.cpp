#include "gui/alert_kinds.h"

#include "platform/screen_size.h"

#include <iterator>

namespace {

constexpr RECT kWholeScreen{ 0, 0, kScreenWidthPx, kScreenHeightPx };
constexpr RECT kProcessingBox{ 177, 73, 177 + 125, 73 + 125 };
constexpr LPCWSTR kErrorBackground = TEXT("\\Windows\\popup_mainzone_error_bg.gif");
constexpr LPCWSTR kInfoBackground = TEXT("\\Windows\\popup_mainzone_info_bg.gif");
constexpr LPCWSTR kProcessingAnimation = TEXT("\\Windows\\Processing.gif");

constexpr int kLeftPx = 20;
constexpr int kRightPx = 160;
constexpr AlertButton kNone{ kNoAlertButton, 0, 0 };
constexpr AlertButton kOk{ kAlertOkId, kRightPx, 1005 };
constexpr AlertButton kYes{ kAlertYesId, kLeftPx, 1003 };
constexpr AlertButton kNo{ kAlertNoId, kRightPx, 1004 };
constexpr AlertButton kBack{ kAlertBackId, kLeftPx, 1001 };

constexpr UINT kErrorMs = 5000;

constexpr AlertLook kLooks[] = {
    // by AlertKind
    { kWholeScreen, kErrorBackground, nullptr, { kOk, kNone }, true, kErrorMs },
    { kWholeScreen, kInfoBackground, nullptr, { kYes, kNo }, false, 0 },
    { kWholeScreen, kInfoBackground, nullptr, { kOk, kNone }, true, 0 },
    { kWholeScreen, kInfoBackground, nullptr, { kNone, kNone }, false, 0 },
    { kProcessingBox, nullptr, kProcessingAnimation, { kNone, kNone }, false, 0 },
    { kWholeScreen, kInfoBackground, nullptr, { kBack, kNone }, false, 0 },
};

constexpr LPCWSTR kSounds[] = {
    // by AlertSound
    TEXT("\\Windows\\TAVO_Audio_InfoMessage.wav"),
    TEXT("\\Windows\\TAVO_Audio_LowBattery.WAV"),
};

} // namespace

const AlertLook& AlertLookOf(int kind)
{
    return kLooks[kind >= 0 && kind < std::ssize(kLooks) ? kind : kAlertPlain];
}

LPCWSTR AlertSoundPath(int sound)
{
    return sound >= 0 && sound < std::ssize(kSounds) ? kSounds[sound] : nullptr;
}
