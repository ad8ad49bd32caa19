// Keeps song titles in Cardsong's list, tells which Chinese code page each is in, and prints them all as UTF-8.
//
//     g++ -std=c++20 song_titles.cpp $(pkg-config --cflags --libs cardsong-device) -o song_titles && ./song_titles
#include <cardsong/device.h>

#include <iostream>
#include <string>
#include <vector>

namespace {

// What ID3v1 tags of two songs hold, and one of plain ASCII: the first in GB2312, the second in Big5.
std::vector<std::string> g_titles = {
    "\xB0\xAE\xB5\xC4\xB8\xE8", // a song of love
    "\xB7\x52\xAA\xBA\xBA\x71", // the same title with traditional characters
    "Yesterday",
};

const char* NameOf(std::int32_t codePage)
{
    switch (codePage) {
    case kCodePageGb2312: return "GB2312";
    case kCodePageBig5: return "Big5";
    default: return "ASCII";
    }
}

// The units below 0x10000 that gbToUnicode writes.
std::string Utf8(const std::vector<Utf16Unit>& units)
{
    std::string text;
    for (const unsigned unit : units) {
        if (unit < 0x80) {
            text += static_cast<char>(unit);
        } else if (unit < 0x800) {
            text += { static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F)) };
        } else {
            text += { static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
                      static_cast<char>(0x80 | (unit & 0x3F)) };
        }
    }
    return text;
}

std::string DisplayTitle(std::string title)
{
    if (GetCodePage(title.c_str()) == kCodePageBig5)
        Big5ToGb(title.c_str(), title.data());  // as long as before, so it may stay where it is
    std::vector<Utf16Unit> units(title.size()); // zeros: gbToUnicode writes none behind the text
    gbToUnicode(title.c_str(), units.data());
    while (!units.empty() && units.back() == 0)
        units.pop_back();
    return Utf8(units);
}

} // namespace

int main()
{
    CPtrListCtrl songs; // holds pointers, and never frees what they point to
    for (std::string& title : g_titles)
        songs.Add(&title, -1);

    for (std::int32_t i = 0; i < songs.GetCount(); ++i) {
        const auto& title = *static_cast<std::string*>(songs.GetAt(i));
        std::cout << NameOf(GetCodePage(title.c_str())) << '\t' << DisplayTitle(title) << '\n';
    }

    CPtrArrayCtrl backwards;
    for (std::int32_t i = songs.GetCount() - 1; i >= 0; --i)
        backwards.Add(songs.GetAt(i), -1);
    std::cout << "first of " << backwards.GetCount()
              << ", backwards: " << *static_cast<std::string*>(backwards.GetHead()) << '\n';
}
