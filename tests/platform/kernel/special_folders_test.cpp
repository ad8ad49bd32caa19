#include "tests/platform/kernel/device_fixture.h"

#include <array>

namespace {

class SpecialFolders : public cardsong::test::DeviceTest {
protected:
    // What the system answers, and the path that it leaves in a buffer filled with "x".
    BOOL Ask(int folder, BOOL create)
    {
        path.fill(TEXT('x'));
        return SHGetSpecialFolderPathW(nullptr, path.data(), folder, create);
    }

    std::array<WCHAR, MAX_PATH> path = {};
};

TEST_F(SpecialFolders, TheUsersDocumentsAreMadeWhenAsked)
{
    EXPECT_TRUE(Ask(CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(WString(path.data()), TEXT("\\My Documents"));
    EXPECT_EQ(GetFileAttributesW(path.data()) & FILE_ATTRIBUTE_DIRECTORY, DWORD{ FILE_ATTRIBUTE_DIRECTORY });
    EXPECT_TRUE(Ask(CSIDL_PERSONAL, TRUE)) << "there already";
    EXPECT_TRUE(Ask(CSIDL_PERSONAL, FALSE));
    EXPECT_EQ(WString(path.data()), TEXT("\\My Documents"));
}

TEST_F(SpecialFolders, TheNumberOfTheDocumentsIsFive)
{
    EXPECT_TRUE(Ask(5, TRUE));
}

TEST_F(SpecialFolders, DocumentsThatAreMissingAreNoPath)
{
    EXPECT_FALSE(Ask(CSIDL_PERSONAL, FALSE));
    EXPECT_EQ(path[0], 0);
    EXPECT_EQ(All(TEXT("\\My Documents")), cardsong::test::Names{});
}

TEST_F(SpecialFolders, AFileInThePlaceOfTheDocumentsIsNoFolder)
{
    device.WriteFile("user/My Documents", "text");
    EXPECT_FALSE(Ask(CSIDL_PERSONAL, TRUE));
    EXPECT_EQ(path[0], 0);
}

// A device has no desktop, and its start menu is nothing that we show.
TEST_F(SpecialFolders, NoOtherFolderIsKnown)
{
    for (const int folder : { 0, 2, 4, 6, -1 }) {
        EXPECT_FALSE(Ask(folder, TRUE)) << folder;
        EXPECT_EQ(path[0], 0) << folder;
    }
}

TEST_F(SpecialFolders, WithoutABufferNothingIsAnswered)
{
    EXPECT_FALSE(SHGetSpecialFolderPathW(nullptr, nullptr, CSIDL_PERSONAL, TRUE));
}

} // namespace
