#include "shortcuts/ShortcutFiles.h"

#include "support/FoldersOnly.h"
#include "support/MemoryPlatform.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

/// A file system that only remembers which folders were asked for.
class FolderRequests final : public FoldersOnly
{
public:
    [[nodiscard]] bool Exists(const std::wstring& path) const override { return path.empty(); }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override { return path; }
    bool MakeFolder(const std::wstring& path) override
    {
        requests.push_back(path);
        return false;
    }

    State requests;
};

TEST(CreateFolderPath, AsksForEachFolderOnTheWay)
{
    const struct
    {
        const wchar_t* path = nullptr;
        State requests;
    } rows[] = {
        {L"C:\\A\\B\\x.lnk", {L"C:\\A", L"C:\\A\\B"}},
        {L"C:\\A\\B\\", {L"C:\\A", L"C:\\A\\B"}},
        {L"C:\\A\\B\\\\\\", {L"C:\\A", L"C:\\A\\B"}},
        {L"C:\\A\\\\B\\x", {L"C:\\A", L"C:\\A\\", L"C:\\A\\\\B"}},
        {L"C:\\x.lnk", {}},
        {L"x.lnk", {}},
        {L"", {}},
        {L"\\", {}},
        {L"\\\\\\", {}},
        {L"\\x", {}},
        {L"A\\x", {}},
        {L"A\\B\\x", {L"A\\B"}},
        {L"\\A\\x", {L"\\A"}},
        {L"\\\\server\\share\\A\\x", {L"\\", L"\\\\server", L"\\\\server\\share", L"\\\\server\\share\\A"}},
        {L"C:/A/B/x.lnk", {}},
    };
    for (const auto& row : rows) {
        FolderRequests files;
        CreateFolderPath(files, row.path);
        EXPECT_EQ(files.requests, row.requests) << row.path;
    }
}

TEST(CreateFolderPath, TakesABackslashInAQuotedRunForAnOrdinaryCharacter)
{
    const struct
    {
        const wchar_t* path = nullptr;
        State requests;
    } rows[] = {
        {L"C:\\\"A\\B\"\\x", {L"C:\\A\\B"}},
        {L"C:\\P\"A\\B\"S\\C\\x", {L"C:\\PA\\BS", L"C:\\PA\\BS\\C"}},
        {L"C:\\\"A\"\"B\"\\x", {L"C:\\A\"B"}},
        {L"C:\\\"A\"\"\\B\"\\x", {L"C:\\A\"\\B"}},
        {L"C:\\\"\"\\x", {L"C:\\"}},
        {L"C:\\\"\"\"\"\\x", {L"C:\\\""}},
        {L"C:\\\"A\" \"B\"\\x", {L"C:\\A B"}},
        {L"C:\\\"A\\B\\x", {L"C:\\A\\B"}},
        {L"\"C:\\A\"\\B\\x", {L"C:\\A\\B"}},
        {L"C:\\\"A\\x\"", {L"C:\\A"}}, // the folder is cut off first, the run then never closes
    };
    for (const auto& row : rows) {
        FolderRequests files;
        CreateFolderPath(files, row.path);
        EXPECT_EQ(files.requests, row.requests) << row.path;
    }
}

TEST(CreateFolderPath, MakesWhatIsMissing)
{
    MemoryFileSystem files;
    files.AddFolder(L"C:\\A");
    CreateFolderPath(files, L"C:\\A\\B\\C\\x.lnk");
    EXPECT_EQ(files.Listing(), (State{L"C:\\", L"C:\\A\\", L"C:\\A\\B\\", L"C:\\A\\B\\C\\"}));
}

TEST(CreateFolderPath, PassesOverWhatCannotBeMade)
{
    MemoryFileSystem files;
    files.AddFile(L"C:\\A", "a file in the way");
    CreateFolderPath(files, L"C:\\A\\B\\x.lnk");
    CreateFolderPath(files, L"Q:\\A\\B\\x.lnk");
    EXPECT_EQ(files.Listing(), (State{L"C:\\", L"C:\\A = \"a file in the way\""}));
}

class ShortcutWriting : public ::testing::Test
{
protected:
    void SetUp() override
    {
        memory.files.AddFolder(L"D:\\S");
        ASSERT_TRUE(memory.shell.EnterComponents());
    }

    ResultCode Create(const std::wstring& toolFolder, const std::wstring& program, int ignored = 0, int iconIndex = 0)
    {
        return CreateShortcut(memory.files, memory.shell, Path, toolFolder, program, ignored, iconIndex);
    }

    const std::wstring Path = L"D:\\S\\Tool.lnk";
    MemoryPlatform memory;
};

TEST_F(ShortcutWriting, SaysWhereTheToolIs)
{
    EXPECT_EQ(Create(L"N:\\Suite\\Applications", L"Tool64.exe", 0, 3), ResultCode::Ok);
    EXPECT_EQ(memory.files.ReadShortcut(Path), (ShortcutFile{.target = L"N:\\Suite\\Applications\\Tool64.exe",
                                                             .arguments = L"",
                                                             .workingFolder = L"N:\\Suite\\Applications\\",
                                                             .iconFile = L"N:\\Suite\\Applications\\Tool64.exe",
                                                             .iconIndex = 3}));
}

TEST_F(ShortcutWriting, MakesOnlyTheTargetAFullPath)
{
    memory.files.SetCurrentFolder(L"E:\\Here");
    EXPECT_EQ(Create(L"..\\Suite\\\\Applications\\", L"Tool64.exe"), ResultCode::Ok);
    const auto shortcut = memory.files.ReadShortcut(Path);
    ASSERT_TRUE(shortcut);
    EXPECT_EQ(shortcut->target, L"E:\\Suite\\Applications\\Tool64.exe");
    EXPECT_EQ(shortcut->workingFolder, L"..\\Suite\\\\Applications\\");
    EXPECT_EQ(shortcut->iconFile, L"..\\Suite\\\\Applications\\Tool64.exe");
}

TEST_F(ShortcutWriting, IgnoresTheNumberBeforeTheIcon)
{
    EXPECT_EQ(Create(L"N:\\A", L"Tool64.exe", 0), ResultCode::Ok);
    const auto first = memory.files.ReadShortcut(Path);
    EXPECT_EQ(Create(L"N:\\A", L"Tool64.exe", 99), ResultCode::Ok);
    EXPECT_EQ(memory.files.ReadShortcut(Path), first);
}

TEST_F(ShortcutWriting, FailsWhereTheFullPathIsTooLong)
{
    const std::wstring folder = L"N:\\" + std::wstring(245, L'x');
    ASSERT_EQ((folder + L"\\T12345.exe").size(), 259U);
    EXPECT_EQ(Create(folder, L"T12345.exe"), ResultCode::Ok);
    memory.files.AddFile(Path, "old");
    EXPECT_EQ(Create(folder, L"T123456.exe"), ResultCode::Fail);
    EXPECT_EQ(memory.files.ContentOf(Path), "old");
}

TEST_F(ShortcutWriting, GivesTheShellsCode)
{
    memory.files.AddFile(Path, "old");
    memory.files.RefuseWriting(Path);
    EXPECT_EQ(Create(L"N:\\A", L"Tool64.exe"), AccessDenied);
    memory.shell.LeaveComponents();
    EXPECT_EQ(Create(L"N:\\A", L"Tool64.exe"), ComponentsNotEntered);
    EXPECT_EQ(memory.files.ContentOf(Path), "old");
}

} // namespace
} // namespace sitekeeper
