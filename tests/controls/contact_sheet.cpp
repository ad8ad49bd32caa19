// Draws every control of a skin in every state, with its captions, as the program draws them, and writes each picture
// to standard output as a line "name width height" and its RGB bytes. For tools/contact-sheet.
//
// contact_sheet TREE SKIN LANGUAGE     TREE: the installed device tree; SKIN: a folder laid over it, or empty;
// LANGUAGE: a tag
#include "common/string_table.h"
#include "controls/player_buttons.h"
#include "gui/gif_bitmap.h"
#include "gui/soft_key_bar.h"
#include "platform/device_tree.h"
#include "platform/host/language_tag.h"
#include "platform/screen_size.h"

#include <cstdio>
#include <span>
#include <string>
#include <vector>

namespace {

constexpr COLORREF kWhite = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kListTitleColor = 0xF2BE00;
constexpr int kPoints = 14;
constexpr RECT kScreen = { 0, 0, kScreenWidthPx, kScreenHeightPx };

enum class State { Normal, Pressed, Disabled };
constexpr State kStates[] = { State::Normal, State::Pressed, State::Disabled };
constexpr const char* kStateNames[] = { "normal", "pressed", "disabled" };

// A picture of the screen that can be written.
class Screen {
public:
    explicit Screen(LPCWSTR background = nullptr)
        : m_context(CreateCompatibleDC(nullptr)), m_bitmap(CreateRgb565Dib(kScreenWidthPx, kScreenHeightPx, &m_bits)),
          m_selected(m_context.Get(), m_bitmap.Get())
    {
        const UniqueBrush black(CreateSolidBrush(0));
        FillRect(m_context.Get(), &kScreen, black.Get());
        Put(background, 0, 0);
    }
    HDC Context() const { return m_context.Get(); }
    void Put(LPCWSTR file, int x, int y)
    {
        SkinImage(LoadGifBitmap(file)).DrawKeyed(m_context.Get(), x, y, kSkinKeyColor);
    }
    void Write(const WString& text, COLORREF color, RECT area, UINT format) const
    {
        const UniqueFont font = CreateCaptionFont(m_context.Get(), kPoints);
        const SelectedObject selected(m_context.Get(), font.Get());
        SetBkMode(m_context.Get(), TRANSPARENT);
        SetTextColor(m_context.Get(), color);
        DrawTextW(m_context.Get(), text.c_str(), -1, &area, format);
    }
    // Prints the part `area`.
    void Print(const std::string& name, const RECT& area) const
    {
        std::printf("%s %d %d\n", name.c_str(), static_cast<int>(area.right - area.left),
                    static_cast<int>(area.bottom - area.top));
        for (int y = area.top; y < area.bottom; ++y) {
            for (int x = area.left; x < area.right; ++x) {
                const unsigned word = m_bits[y * kScreenWidthPx + x];
                const unsigned red = word >> 11;
                const unsigned green = word >> 5 & 63;
                const unsigned blue = word & 31;
                std::putchar(static_cast<int>(red << 3 | red >> 2));
                std::putchar(static_cast<int>(green << 2 | green >> 4));
                std::putchar(static_cast<int>(blue << 3 | blue >> 2));
            }
        }
    }

private:
    std::uint16_t* m_bits = nullptr;
    UniqueMemoryContext m_context;
    UniqueBitmap m_bitmap;
    SelectedObject m_selected;
};

// The window that buttons want to stand in; nobody sees it.
HWND MakeParent()
{
    return CreateWindowExW(0, TEXT("static"), TEXT(""), WS_POPUP, 0, 0, kScreenWidthPx, kScreenHeightPx, nullptr,
                           nullptr, g_hInstance, nullptr);
}

void DrawButton(SkinButton& button, State state, const Screen& screen)
{
    if (button.Window() == nullptr)
        return;
    DRAWITEMSTRUCT request = {};
    request.CtlType = ODT_BUTTON;
    request.CtlID = button.ControlId();
    request.itemAction = state == State::Pressed ? ODA_SELECT : ODA_DRAWENTIRE;
    request.itemState = state == State::Pressed ? ODS_SELECTED : state == State::Disabled ? ODS_DISABLED : 0U;
    request.hDC = screen.Context();
    request.rcItem = button.Place();
    button.DrawItem(request);
}

WString Text(UINT id)
{
    return ReadString(g_hStringModule, id);
}

// ---- the player ----

struct TransportFaces {
    const char* name;
    State state;
    std::vector<UINT> ids;
};

void PrintTransport(HWND parent)
{
    const std::vector<UINT> first = { kCommandPrevious, kCommandStop,      kCommandPlay,
                                      kCommandNext,     kCommandRepeatOff, kCommandShuffleOff };
    const std::vector<UINT> second = { kCommandPrevious, kCommandStop,      kCommandPause,
                                       kCommandNext,     kCommandRepeatAll, kCommandShuffleOn };
    std::vector<UINT> third = second;
    third[4] = kCommandRepeatSingle;
    const TransportFaces rows[] = {
        { "keys-normal", State::Normal, first },        { "keys-playing", State::Normal, second },
        { "keys-repeat-one", State::Normal, third },    { "keys-pressed", State::Pressed, first },
        { "keys-pressed-on", State::Pressed, third },   { "keys-disabled", State::Disabled, first },
        { "keys-disabled-on", State::Disabled, third },
    };
    PlayerButtonSet set;
    CreatePlayerButtons(set, parent, PlayerButtonKind::Music);
    for (const TransportFaces& row : rows) {
        const Screen screen(TEXT("\\Windows\\gui_musicplayer_background.gif"));
        for (const UINT id : row.ids)
            DrawButton(*set.Find(id), row.state, screen);
        screen.Print(row.name, { 0, 155, kScreenWidthPx, 208 });
    }
}

void PrintPlayerPanel()
{
    Screen screen(TEXT("\\Windows\\gui_musicplayer_background.gif"));
    screen.Put(TEXT("\\Windows\\gui_musicplayer_progress_but_normal.gif"), 17, 139);
    screen.Print("panel", { 0, 0, kScreenWidthPx, 159 });
    screen.Put(TEXT("\\Windows\\gui_musicplayer_progress_but_full.gif"), 17, 139);
    screen.Print("bar-full", { 0, 135, kScreenWidthPx, 159 });
}

// ---- soft keys ----

struct Bar {
    const char* name;
    int count;
    std::vector<int> ids; // a command, whose caption is the string below
    std::vector<int> strings;
};

void PrintBars(HWND parent)
{
    const Bar bars[] = {
        { "bar-of-3", 3, { 18, 24, kSoftKeyVolumeId }, { 17002, 17003, 0 } },
        { "bar-of-4", 4, { 30, 35, 16, 18 }, { 17030, 17035, 17016, 17002 } },
        { "bar-of-4-pair", 4, { 30, 35, kSoftKeyPairId, 0 }, { 17030, 17035, 0, 0 } },
        { "bar-of-5", 5, { 29, 33, 25, 31, 16 }, { 17029, 17033, 17025, 17031, 17016 } },
        { "bar-of-6", 6, { 29, 33, 25, 31, 28, 16 }, { 17029, 17033, 17025, 17031, 17028, 17016 } },
    };
    for (const Bar& row : bars) {
        std::vector<ButtonCaption> captions;
        for (const int id : row.strings)
            captions.push_back({ nullptr, id, kPoints, kWhite });
        for (const State state : kStates) {
            SoftKeyBar bar;
            std::vector<int> ids = row.ids;
            ids.push_back(0); // a bar with a pair reads one more
            bar.Create(parent, g_hStringModule, row.count, ids, captions);
            const Screen screen;
            bar.DrawBackground(screen.Context());
            for (SkinButton& button : bar.Buttons())
                DrawButton(button, state, screen);
            screen.Print(row.name + std::string("-") + kStateNames[static_cast<int>(state)],
                         { 0, 208, kScreenWidthPx, kScreenHeightPx });
        }
    }
}

// ---- lists ----

void PrintList(HWND parent)
{
    constexpr int ids[] = { 30, 35, kSoftKeyListScrollId, 0, 0 };
    const ButtonCaption captions[] = { { nullptr, 17030, kPoints, kWhite }, { nullptr, 17035, kPoints, kWhite } };
    for (const State state : kStates) {
        SoftKeyBar bar;
        bar.Create(parent, g_hStringModule, 4, ids, captions);
        Screen screen(TEXT("\\Windows\\gui_full_bg2.gif"));
        screen.Write(Text(17011) + TEXT("  1/3"), kListTitleColor, { 0, 0, 300, 26 }, DT_SINGLELINE | DT_VCENTER);
        constexpr RECT selected = { 0, 73, 258, 117 };
        const UniqueBrush highlight(CreateSolidBrush(RGB(0x9F, 0xE3, 0xFA)));
        FillRect(screen.Context(), &selected, highlight.Get());
        for (int row = 0; row < 4; ++row) {
            const int topPx = 27 + 46 * row;
            screen.Put(row % 2 == 0 ? TEXT("\\Windows\\gui_checkbox_check.gif")
                                    : TEXT("\\Windows\\gui_checkbox_uncheck.gif"),
                       0, topPx);
            screen.Write(Text(17010), 0, { 45, topPx, 190, topPx + 44 }, DT_SINGLELINE | DT_VCENTER);
        }
        bar.DrawBackground(screen.Context());
        for (SkinButton& button : bar.Buttons())
            DrawButton(button, state, screen);
        screen.Print(std::string("list-") + kStateNames[static_cast<int>(state)], kScreen);
    }
}

// ---- alerts ----

struct Alert {
    const char* name;
    LPCWSTR ground;
    UINT title;
    UINT message;
    int left; // caption of the left button; 0: none
    int right;
};

void PrintAlerts(HWND parent)
{
    const Alert alerts[] = {
        { "alert-error", TEXT("\\Windows\\popup_mainzone_error_bg.gif"), 17001, 1039, 0, 1005 },
        { "alert-question", TEXT("\\Windows\\popup_mainzone_info_bg.gif"), 17010, 17042, 1003, 1004 },
        { "alert-info", TEXT("\\Windows\\popup_mainzone_info_bg.gif"), 17043, 17044, 1001, 1005 },
    };
    constexpr ButtonImageSet images = { TEXT("\\Windows\\gui_popup_but_normal.gif"),
                                        TEXT("\\Windows\\gui_popup_but_down.gif"), nullptr,
                                        TEXT("\\Windows\\gui_popup_but_disable.gif") };
    for (std::size_t i = 0; i < std::size(alerts); ++i) {
        const Alert& alert = alerts[i];
        Screen screen(alert.ground);
        screen.Write(Text(alert.title), kWhite, { 32, 10, 288, 34 }, DT_WORDBREAK);
        screen.Write(Text(alert.message), 0, { 35, 75, 285, 180 }, DT_WORDBREAK | DT_CENTER);
        for (const int string : { alert.left, alert.right }) {
            if (string == 0)
                continue;
            const int leftPx = string == alert.left ? 20 : 160;
            const ButtonCaption caption = { nullptr, string, kPoints, kWhite };
            SkinButton button;
            button.Create(parent, g_hStringModule, 181, { leftPx, 201, leftPx + 140, 233 }, &caption, &images);
            DrawButton(button, kStates[i], screen);
        }
        screen.Print(alert.name, kScreen);
    }
}

void InstallDevice(const char* tree, const char* skin, const char* language)
{
    cardsong::kernel::DeviceTree device;
    device.systemDirectory = tree;
    device.skinDirectory = skin;
    device.uiLanguage = cardsong::host::LanguageFromTag(language);
    cardsong::kernel::InstallDeviceTree(device);
    g_hInstance = cardsong::kernel::ProgramInstance();
    g_hStringModule = LoadStringModule();
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 4)
        return 2;
    InstallDevice(arguments[1], arguments[2], arguments[3]);
    const HWND parent = MakeParent();
    PrintPlayerPanel();
    PrintTransport(parent);
    PrintBars(parent);
    PrintList(parent);
    PrintAlerts(parent);
    FreeLibrary(g_hStringModule);
    DestroyWindow(parent);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
