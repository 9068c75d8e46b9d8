#include "settings/SuiteCatalogue.h"

#include "settings/Product.h"
#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>
#include <limits>

namespace sitekeeper {
namespace {

TEST(ToolName, IsTheCataloguesTextForEachNumber)
{
    const struct
    {
        int number;
        const wchar_t* name;
    } rows[] = {
        {std::numeric_limits<int>::min(), L""},
        {-1, L""},
        {0, L""},
        {1, L"ELECTRIC"},
        {2, L"PID"},
        {3, L"ISOMETRIC"},
        {4, L"ORTHO"},
        {5, L"Ledger Composer"},
        {6, L""},
        {7, L"SiteKeeper"},
        {8, L"SheetWriter"},
        {9, L"Norm Keeper"},
        {10, L"Record Desk"},
        {11, L"AutoCAD"},
        {12, L""},
        {std::numeric_limits<int>::max(), L""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToolName(row.number), row.name) << row.number;
    }
    EXPECT_EQ(ToolName(SiteKeeperNumber), L"SiteKeeper");
}

class DesignerFolders : public ::testing::Test
{
protected:
    void SetApplicationFolder(const std::wstring& folder)
    {
        memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"NetworkAppPath", folder);
    }

    MemoryPlatform memory;
    InstallationSettings settings = SettingsOn(memory.Ports());
};

TEST_F(DesignerFolders, OfATool)
{
    SetApplicationFolder(L"N:\\Suite");
    const struct
    {
        int number;
        const wchar_t* subFolder;
        const wchar_t* folder;
    } rows[] = {
        {1, L"Blocks", L"N:\\Suite\\Designer\\ELECTRIC\\Blocks\\"},
        {1, L"", L"N:\\Suite\\Designer\\ELECTRIC\\"},
        {5, L"A\\B", L"N:\\Suite\\Designer\\Ledger Composer\\A\\B\\"},
        {5, L"A\\", L"N:\\Suite\\Designer\\Ledger Composer\\A\\\\"},
        {0, L"", L"N:\\Suite\\Designer\\"},
        {0, L"Blocks", L"N:\\Suite\\Designer\\"},
        {6, L"Blocks", L"N:\\Suite\\Designer\\\\Blocks\\"},
        {12, L"", L"N:\\Suite\\Designer\\\\"},
        {-1, L"Blocks", L"N:\\Suite\\Designer\\\\Blocks\\"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(ToolDesignerFolder(settings, row.number, row.subFolder), row.folder) << row.number;
    }
}

TEST_F(DesignerFolders, SharedByAllModules)
{
    SetApplicationFolder(L"N:\\Suite\\");
    EXPECT_EQ(CommonDesignerFolder(settings, L""), L"N:\\Suite\\Designer\\Common\\");
    EXPECT_EQ(CommonDesignerFolder(settings, L"Blocks"), L"N:\\Suite\\Designer\\Common\\Blocks\\");
}

TEST_F(DesignerFolders, AreEmptyWithoutApplicationFolder)
{
    for (const int number : {-1, 0, 1, 6, 12}) {
        EXPECT_EQ(ToolDesignerFolder(settings, number, L"Blocks"), L"");
        EXPECT_EQ(ToolDesignerFolder(settings, number, L""), L"");
    }
    EXPECT_EQ(CommonDesignerFolder(settings, L"Blocks"), L"");
    SetApplicationFolder(L"");
    EXPECT_EQ(ToolDesignerFolder(settings, 1, L"Blocks"), L"");
    EXPECT_EQ(CommonDesignerFolder(settings, L""), L"");
}

} // namespace
} // namespace sitekeeper
