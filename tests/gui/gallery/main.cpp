// Takes pictures of the toolkit's windows in use, each in three languages: gallery FOLDER [NAME...] writes
// FOLDER/NAME-LANGUAGE.png. For eyes: what must hold is asserted by the tests.
#include "tests/gui/gallery/stage.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <vector>

using namespace cardsong::gallery;

namespace {

struct Language {
    LANGID id;
    const char* suffix;
};

constexpr Language kLanguages[] = { { 0x0409, "en" }, { 0x0404, "zh-TW" }, { 0x0804, "zh-CN" } };

std::vector<Picture> AllPictures()
{
    std::vector<Picture> all;
    for (const auto pictures : { AlertPictures(), ListPictures(), SoftKeyPictures() })
        all.insert(all.end(), pictures.begin(), pictures.end());
    return all;
}

bool Take(const Picture& picture, const Language& language, const std::string& folder)
{
    const std::string path = folder + "/" + picture.name + "-" + language.suffix + ".png";
    Stage stage(language.id, path);
    picture.take(stage);
    if (!stage.IsShot())
        std::fprintf(stderr, "gallery: no picture %s\n", path.c_str());
    return stage.IsShot();
}

} // namespace

int main(int count, char** words)
{
    const std::vector<std::string_view> arguments(words, words + count);
    if (count < 2) {
        std::fprintf(stderr, "usage: gallery FOLDER [NAME...]\n");
        return 2;
    }
    const std::string folder(arguments[1]);
    std::error_code ignored; // a folder that cannot be made shows in the first picture
    std::filesystem::create_directories(folder, ignored);
    bool areAllTaken = true;
    int taken = 0;
    for (const Picture& picture : AllPictures()) {
        if (count > 2 && std::find(arguments.begin() + 2, arguments.end(), picture.name) == arguments.end())
            continue;
        for (const Language& language : kLanguages) {
            areAllTaken = Take(picture, language, folder) && areAllTaken;
            ++taken;
        }
    }
    return areAllTaken && taken > 0 ? 0 : 1;
}
