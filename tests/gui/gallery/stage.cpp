#include "tests/gui/gallery/stage.h"

#include "common/string_table.h"
#include "platform/linux/display/screenshot.h"
#include "platform/linux/gdi/screen.h"
#include "platform/linux/user/input.h"
#include "platform/screen_size.h"

#include <utility>

namespace cardsong::gallery {
namespace {

constexpr LPCWSTR kOwnerClass = TEXT("GalleryOwner");

LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return DefWindowProcW(window, message, wParam, lParam);
}

} // namespace

Stage::Stage(LANGID language, std::string pngPath) : m_language(language), m_pngPath(std::move(pngPath))
{
    kernel::DeviceTree tree = kernel::CurrentDeviceTree();
    tree.systemDirectory = CARDSONG_DEVICE_TREE;
    tree.uiLanguage = language;
    kernel::InstallDeviceTree(tree);
    kernel::InstallClock(&m_clock);
    g_hInstance = kernel::ProgramInstance();
    gdi::ClearScreen();
    WNDCLASSW description = {};
    description.lpfnWndProc = OwnerProcedure;
    description.lpszClassName = kOwnerClass;
    RegisterClassW(&description);
    m_owner = CreateWindowExW(0, kOwnerClass, TEXT(""), WS_POPUP | WS_VISIBLE, 0, 0, kScreenWidthPx, kScreenHeightPx,
                              nullptr, nullptr, g_hInstance, nullptr);
    Pump();
}

Stage::~Stage()
{
    user::ResetWindows();
    kernel::InstallClock(nullptr);
}

void Stage::Pump()
{
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
        DispatchMessageW(&message);
}

void Stage::Tap(POINT at)
{
    user::PointerDown(at);
    Pump();
    user::PointerUp(at);
    Pump();
}

void Stage::Advance(int milliseconds)
{
    m_clock.Advance(static_cast<std::uint64_t>(milliseconds));
    Pump();
}

void Stage::Shoot()
{
    Pump();
    m_isShot = display::SaveScreenshot(m_pngPath);
}

} // namespace cardsong::gallery
