// How the HTML Help control is found and what it is asked for. The one that is registered here writes its calls down.
#include "support/Wine.h"
#include "win32/Handles.h"
#include "win32/Win32HelpViewer.h"

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* ControlKey =
    L"Software\\Classes\\CLSID\\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\\InprocServer32";
constexpr const wchar_t* HelpFile = L"C:\\Suite\\Help\\SiteKeeper.chm";
constexpr const wchar_t* ContentsCall = L"1234 1 0 C:\\Suite\\Help\\SiteKeeper.chm";
constexpr const wchar_t* TopicCall = L"1234 0 0 C:\\Suite\\Help\\SiteKeeper.chm::/Introduction.htm";
constexpr auto Owner = static_cast<WindowId>(0x1234);

/// The default value of the control's key as it is now, and again at the end.
class Registration
{
public:
    Registration()
    {
        ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, ControlKey, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, m_key.put(), nullptr);
        DWORD size = 0;
        if (::RegQueryValueExW(m_key.get(), nullptr, nullptr, &m_type, nullptr, &size) == ERROR_SUCCESS) {
            m_former.emplace(size);
            ::RegQueryValueExW(m_key.get(), nullptr, nullptr, &m_type, m_former->data(), &size);
        }
    }
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration()
    {
        if (m_former) {
            ::RegSetValueExW(m_key.get(), nullptr, 0, m_type, m_former->data(), static_cast<DWORD>(m_former->size()));
        } else {
            Remove();
        }
    }

    void Set(DWORD type, const std::wstring& path) const
    {
        ::RegSetValueExW(m_key.get(), nullptr, 0, type, reinterpret_cast<const BYTE*>(path.c_str()),
                         static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    }
    void Remove() const { ::RegDeleteValueW(m_key.get(), nullptr); }

private:
    UniqueRegistryKey m_key;
    DWORD m_type = REG_NONE;
    std::optional<std::vector<BYTE>> m_former;
};

class HelpViewerTest : public ::testing::Test
{
protected:
    HelpViewerTest()
    {
        fs::remove_all(Folder);
        fs::create_directories(ByNameFolder);
        fs::copy_file(SITEKEEPER_FAKE_HELP_CONTROL, Registered);
        ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_CALLS", Calls.c_str());
        ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_FOLDER", Folder.c_str());
        ::SetEnvironmentVariableW(L"H", Folder.c_str());
    }
    ~HelpViewerTest() override
    {
        ::SetDllDirectoryW(nullptr);
        ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_CALLS", nullptr);
        ::SetEnvironmentVariableW(L"SITEKEEPER_HELP_FOLDER", nullptr);
        ::SetEnvironmentVariableW(L"H", nullptr);
        std::error_code ignored;
        fs::remove_all(Folder, ignored);
    }

    /// From now on "hhctrl.ocx" is found by its name alone, and writes down its calls elsewhere.
    void OfferByName() const
    {
        fs::copy_file(SITEKEEPER_FAKE_HELP_CONTROL, ByNameFolder / L"hhctrl.ocx");
        ::SetDllDirectoryW(ByNameFolder.c_str());
    }

    /// What the control was asked for since the last time, a line for each call.
    [[nodiscard]] std::wstring TakeCalls() const
    {
        std::ifstream file(Calls, std::ios::binary);
        const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
        file.close();
        fs::remove(Calls);
        std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
        bytes.copy(reinterpret_cast<char*>(text.data()), text.size() * sizeof(wchar_t));
        return text;
    }

    /// Whether the control that is found by name is in use.
    [[nodiscard]] bool IsByNameLoaded() const
    {
        return ::GetModuleHandleW((ByNameFolder / L"hhctrl.ocx").c_str()) != nullptr;
    }
    /// That control, and no other, got one call. (Wine puts its own in the place of any file of that name.)
    void ExpectByName(const std::wstring& call) const
    {
        EXPECT_TRUE(IsByNameLoaded());
        EXPECT_EQ(TakeCalls(), IsWine() ? L"" : call + L"\n");
    }
    void ExpectRegistered(const std::wstring& call) const
    {
        EXPECT_FALSE(IsByNameLoaded());
        EXPECT_EQ(TakeCalls(), call + L"\n");
    }

    /// A path to the registered control of so many characters.
    [[nodiscard]] std::wstring LongPath(std::size_t length) const
    {
        std::wstring path = Folder.wstring() + L"\\";
        const std::wstring name = L"Control.dll";
        while (path.size() + name.size() + 2 <= length) {
            path += L".\\"; // the folder itself
        }
        if (path.size() + name.size() < length) {
            path += L'\\'; // a doubled separator
        }
        return path + name;
    }

    /// What follows the folder in a path to the control.
    [[nodiscard]] std::wstring Below(const std::wstring& path) const { return path.substr(Folder.wstring().size()); }

    const fs::path Folder = L"C:\\SiteKeeperHelpTest";
    const fs::path ByNameFolder = Folder / L"ByName";
    const fs::path Registered = Folder / L"Control.dll";
    const fs::path Calls = Folder / L"calls.txt";
    Registration m_registration;
    Win32HelpViewer m_viewer;
};

TEST_F(HelpViewerTest, AsksTheRegisteredControlForContentsAndForPages)
{
    OfferByName();
    m_registration.Set(REG_SZ, Registered);
    m_viewer.ShowContents(Owner, HelpFile);
    m_viewer.ShowTopic(Owner, std::wstring(HelpFile) + L"::/Introduction.htm");
    EXPECT_EQ(TakeCalls(), std::wstring(ContentsCall) + L"\n" + TopicCall + L"\n");
    EXPECT_FALSE(IsByNameLoaded());
}

TEST_F(HelpViewerTest, LoadsNothingBeforeHelpIsAskedFor)
{
    m_registration.Set(REG_SZ, Registered);
    EXPECT_EQ(::GetModuleHandleW(Registered.c_str()), nullptr);
    m_viewer.ShowContents(Owner, HelpFile);
    EXPECT_NE(::GetModuleHandleW(Registered.c_str()), nullptr);
}

TEST_F(HelpViewerTest, ExpandsTheVariablesOfAnExpandableText)
{
    OfferByName();
    m_registration.Set(REG_EXPAND_SZ, L"%SITEKEEPER_HELP_FOLDER%\\Control.dll");
    m_viewer.ShowContents(Owner, HelpFile);
    ExpectRegistered(ContentsCall);
}

TEST_F(HelpViewerTest, LeavesTheVariablesOfAPlainTextAlone)
{
    OfferByName();
    m_registration.Set(REG_SZ, L"%SITEKEEPER_HELP_FOLDER%\\Control.dll");
    m_viewer.ShowContents(Owner, HelpFile);
    ExpectByName(ContentsCall);
}

TEST_F(HelpViewerTest, TakesAPathOf260CharactersWithItsEndAndNoLonger)
{
    OfferByName();
    const struct
    {
        DWORD type;
        std::wstring path;
        bool isTaken;
    } rows[] = {
        {REG_SZ, LongPath(258), true},
        {REG_SZ, LongPath(259), true},
        {REG_SZ, LongPath(260), false},
        {REG_SZ, LongPath(400), false},
        {REG_EXPAND_SZ, LongPath(259), true},
        {REG_EXPAND_SZ, LongPath(260), false},
        // by the length of what is stored, and by that of what it stands for
        {REG_EXPAND_SZ, L"%SITEKEEPER_HELP_FOLDER%" + Below(LongPath(250)), true},
        {REG_EXPAND_SZ, L"%SITEKEEPER_HELP_FOLDER%" + Below(LongPath(258)), false},
        {REG_EXPAND_SZ, L"%H%" + Below(LongPath(259)), true},
        {REG_EXPAND_SZ, L"%H%" + Below(LongPath(260)), false},
    };
    for (const auto& row : rows) {
        m_registration.Set(row.type, row.path);
        Win32HelpViewer viewer;
        viewer.ShowContents(Owner, HelpFile);
        SCOPED_TRACE(std::to_string(row.type) + ' ' + std::to_string(row.path.size()));
        if (row.isTaken) {
            ExpectRegistered(ContentsCall);
        } else {
            ExpectByName(ContentsCall);
        }
    }
}

TEST_F(HelpViewerTest, FallsBackOnTheControlsNameWhereNoneCanBeLoaded)
{
    OfferByName();
    std::ofstream(Folder / L"text.dll") << "no library";
    for (const std::wstring& path :
         {std::wstring(), Folder.wstring() + L"\\missing.dll", Folder.wstring() + L"\\text.dll", Folder.wstring()}) {
        m_registration.Set(REG_SZ, path);
        Win32HelpViewer viewer;
        viewer.ShowTopic(Owner, std::wstring(HelpFile) + L"::/Introduction.htm");
        ExpectByName(TopicCall);
    }
    m_registration.Remove();
    m_viewer.ShowContents(Owner, HelpFile);
    ExpectByName(ContentsCall);
}

TEST_F(HelpViewerTest, RemembersSilentlyThatTheControlHasNoSuchEntry)
{
    OfferByName();
    m_registration.Set(REG_SZ, SITEKEEPER_CONTROL_WITHOUT_ENTRY);
    m_viewer.ShowContents(Owner, HelpFile);
    EXPECT_EQ(TakeCalls(), L"");
    EXPECT_FALSE(IsByNameLoaded()) << "the name is for a control that cannot be loaded";
    m_registration.Set(REG_SZ, Registered);
    m_viewer.ShowContents(Owner, HelpFile);
    m_viewer.ShowTopic(Owner, std::wstring(HelpFile) + L"::/Introduction.htm");
    EXPECT_EQ(TakeCalls(), L"");
    Win32HelpViewer another;
    another.ShowContents(Owner, HelpFile);
    EXPECT_EQ(TakeCalls(), std::wstring(ContentsCall) + L"\n") << "only the first one had met the other";
}

TEST_F(HelpViewerTest, AsksTheControlItFoundAlsoWhenAnotherIsRegisteredMeanwhile)
{
    m_registration.Set(REG_SZ, Registered);
    m_viewer.ShowContents(Owner, HelpFile);
    m_registration.Set(REG_SZ, SITEKEEPER_CONTROL_WITHOUT_ENTRY);
    m_viewer.ShowContents(Owner, HelpFile);
    EXPECT_EQ(TakeCalls(), std::wstring(ContentsCall) + L"\n" + ContentsCall + L"\n");
}

} // namespace
} // namespace sitekeeper
