// What the journeys rely on when they read files that other programs have only just written.
#include "e2e/support/FileTree.h"

#include <windows.h>

#include <gmock/gmock.h>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

class FileTree : public testing::Test
{
protected:
    FileTree() { WriteWholeFile(m_path, "whole"); }
    ~FileTree() override { RemoveFolder(L"C:\\FileTree"); }

    /// The file as another program holds it.
    HANDLE Hold(DWORD access, DWORD sharing)
    {
        m_holder = ::CreateFileW(m_path.c_str(), access, sharing, nullptr, OPEN_EXISTING, 0, nullptr);
        return m_holder;
    }
    void TearDown() override { ::CloseHandle(m_holder); }

    const std::wstring m_path = L"C:\\FileTree\\file.txt";
    HANDLE m_holder = INVALID_HANDLE_VALUE;
};

TEST_F(FileTree, ReadsAFileThatItsMoverStillHolds)
{
    ASSERT_NE(Hold(DELETE | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE), INVALID_HANDLE_VALUE);
    EXPECT_EQ(ReadWholeFile(m_path), "whole");
}

TEST_F(FileTree, TellsAFileThatMayNotBeReadFromOneThatIsMissing)
{
    ASSERT_NE(Hold(GENERIC_WRITE, 0), INVALID_HANDLE_VALUE);
    EXPECT_THROW(static_cast<void>(ReadWholeFile(m_path)), std::runtime_error);
    EXPECT_EQ(ReadWholeFile(L"C:\\FileTree\\missing.txt"), std::nullopt);
    EXPECT_EQ(ReadWholeFile(L"C:\\Missing\\file.txt"), std::nullopt);
}

} // namespace
} // namespace sitekeeper::e2e
