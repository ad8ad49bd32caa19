#include "platform/host/skins.h"

#include "tests/platform/scratch_device.h"

#include <gtest/gtest.h>

using namespace cardsong::host;
using cardsong::test::ScratchDevice;
using Path = std::filesystem::path;

namespace {

class SkinChoice : public testing::Test {
protected:
    // The folder, or empty with `m_complaint`.
    Path Choose(const std::string& name)
    {
        const auto answer = ChooseSkin(name, m_device.UserDirectory(), m_device.SystemDirectory());
        const auto* const error = std::get_if<SkinError>(&answer);
        m_complaint = error != nullptr ? error->message : "";
        return error != nullptr ? Path() : std::get<Path>(answer);
    }
    Path Installed(const char* name) const { return Path(m_device.SystemDirectory()) / "Skins" / name; }
    Path Own(const char* name) const { return Path(m_device.UserDirectory()) / "Skins" / name; }

    ScratchDevice m_device;
    std::string m_complaint;
};

} // namespace

TEST_F(SkinChoice, FindsAnInstalledSkin)
{
    m_device.MakeFolder("system/Skins/amber");
    EXPECT_EQ(Choose("amber"), Installed("amber"));
    EXPECT_EQ(m_complaint, "");
}

TEST_F(SkinChoice, FindsASkinOfTheUsersOwn)
{
    m_device.MakeFolder("user/Skins/mine");
    EXPECT_EQ(Choose("mine"), Own("mine"));
}

TEST_F(SkinChoice, TakesTheUsersOwnSkinBeforeAnInstalledOne)
{
    m_device.MakeFolder("system/Skins/amber");
    m_device.MakeFolder("user/Skins/amber");
    EXPECT_EQ(Choose("amber"), Own("amber"));
}

TEST_F(SkinChoice, WithoutANameIsNoSkin)
{
    m_device.MakeFolder("user/Skins/mine");
    EXPECT_EQ(Choose(""), Path());
    EXPECT_EQ(m_complaint, "");
}

TEST_F(SkinChoice, SaysSoWhereThereAreNoSkins)
{
    EXPECT_EQ(Choose("amber"), Path());
    EXPECT_EQ(m_complaint, "--skin: there is no skin amber");
}

TEST_F(SkinChoice, NeverLeavesTheFolderOfTheSkins)
{
    m_device.MakeFolder("user/Skins/mine/deeper");
    m_device.MakeFolder("system/Windows");
    for (const char* name : { ".", "..", "../Windows", "mine/deeper", "mine/", "/", "../Skins/mine" }) {
        EXPECT_EQ(Choose(name), Path()) << name;
        EXPECT_NE(m_complaint, "") << name;
    }
}

TEST_F(SkinChoice, TakesNoFileForASkin)
{
    m_device.WriteFile("user/Skins/readme.txt", "no skin");
    Choose("readme.txt");
    EXPECT_EQ(m_complaint, "--skin: there is no skin readme.txt");
}

TEST_F(SkinChoice, HidesFoldersWhoseNamesBeginWithADot)
{
    m_device.MakeFolder("user/Skins/.draft");
    Choose(".draft");
    EXPECT_EQ(m_complaint, "--skin: there is no skin .draft");
}

TEST_F(SkinChoice, ListsEverySkinOnceInTheOrderOfTheirNames)
{
    for (const char* folder : { "user/Skins/mine", "user/Skins/amber", "system/Skins/amber", "system/Skins/classic" })
        m_device.MakeFolder(folder);
    Choose("nosuch");
    EXPECT_EQ(m_complaint, "--skin: there is no skin nosuch; there is amber, classic, mine");
}

TEST_F(SkinChoice, KnowsNamesInAnyScript)
{
    m_device.MakeFolder("user/Skins/夜");
    EXPECT_NE(Choose("夜"), Path());
    Choose("昼");
    EXPECT_EQ(m_complaint, "--skin: there is no skin 昼; there is 夜");
}
