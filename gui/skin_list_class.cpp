#include "gui/skin_list_class.h"

#include "common/string_table.h"

#include <utility>
#include <vector>

namespace {

constexpr int kMostNumbers = 1000;

// Classes whose last window was still in a message of its own when its list went.
std::vector<WString> g_leftClasses;

void UnregisterLeftClasses()
{
    std::erase_if(g_leftClasses, [](const WString& name) { return UnregisterClassW(name.c_str(), g_hInstance); });
}

bool RegisterName(const WString& name, WNDPROC procedure)
{
    WNDCLASSW description = {};
    description.style = CS_HREDRAW | CS_VREDRAW;
    description.lpfnWndProc = procedure;
    description.hInstance = g_hInstance;
    description.hbrBackground = static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    description.lpszClassName = name.c_str();
    return !name.empty() && RegisterClassW(&description) != 0;
}

} // namespace

bool SkinListClass::Register(const WString& title, WNDPROC procedure)
{
    Unregister();
    UnregisterLeftClasses();
    WString name = title;
    for (int number = 2; !RegisterName(name, procedure); ++number) {
        if (number > kMostNumbers)
            return false;
        WCHAR digits[16] = {};
        wsprintfW(digits, TEXT("#%d"), number);
        name = title + digits;
    }
    m_name = name;
    return true;
}

void SkinListClass::Unregister()
{
    if (!m_name.empty())
        g_leftClasses.push_back(std::exchange(m_name, {}));
    UnregisterLeftClasses();
}
