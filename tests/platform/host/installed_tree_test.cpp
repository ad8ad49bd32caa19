#include "platform/host/installed_tree.h"

#include "platform/ce.h"

#include <gtest/gtest.h>

#include <fstream>

using namespace cardsong::host;
using Path = std::filesystem::path;

namespace {

class InstalledTree : public testing::Test {
protected:
    InstalledTree()
    {
        std::filesystem::remove_all(m_root);
        std::filesystem::create_directories(m_root / "bin");
    }
    ~InstalledTree() override { std::filesystem::remove_all(m_root); }

    void Make(const Path& folder) const { std::filesystem::create_directories(m_root / folder); }

    const Path m_root = std::filesystem::temp_directory_path() / ("cardsong-tree-" + std::to_string(GetTickCount()));
    const Path m_program = m_root / "bin" / "cardsong";
    const Path m_installed = m_root / "share" / "cardsong" / "device";
    const Path m_built = m_root / "bin" / "device" / "tree";
};

TEST_F(InstalledTree, LiesInTheShareFolderOfAnInstalledProgram)
{
    Make(m_installed / "Windows");
    EXPECT_EQ(FindInstalledTree(m_program), m_installed);
}

TEST_F(InstalledTree, LiesBesideAProgramThatWasJustBuilt)
{
    Make(m_built / "Windows");
    EXPECT_EQ(FindInstalledTree(m_program), m_built);
}

TEST_F(InstalledTree, IsTheInstalledOneWhereBothAreThere)
{
    Make(m_installed / "Windows");
    Make(m_built / "Windows");
    EXPECT_EQ(FindInstalledTree(m_program), m_installed);
}

TEST_F(InstalledTree, IsMissingWhereItsFolderIsEmpty)
{
    Make(m_built);
    EXPECT_EQ(FindInstalledTree(m_program), std::nullopt);
}

TEST_F(InstalledTree, IsMissingWhereItsFolderIsAFile)
{
    Make(m_built);
    std::ofstream(m_built / "Windows") << "no folder";
    EXPECT_EQ(FindInstalledTree(m_program), std::nullopt);
}

TEST_F(InstalledTree, ThatIsMissingIsExplainedWithBothPlaces)
{
    const std::string text = ExplainMissingTree(m_program);
    EXPECT_NE(text.find(m_installed.string()), std::string::npos) << text;
    EXPECT_NE(text.find(m_built.string()), std::string::npos) << text;
    EXPECT_EQ(text.find('\n'), std::string::npos);
}

} // namespace
