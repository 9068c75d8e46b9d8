#include "contract/Win32Clipboards.h"
#include "contract/Win32Files.h"
#include "contract/Win32Recorder.h"
#include "contract/World.h"
#include "support/HandleCount.h"
#include "support/Wine.h"
#include "win32/Handles.h"
#include "win32/Win32Accounts.h"
#include "win32/Win32Clipboard.h"
#include "win32/Win32Clock.h"
#include "win32/Win32CodePage.h"
#include "win32/Win32Environment.h"
#include "win32/Win32FileSystem.h"
#include "win32/Win32Modules.h"
#include "win32/Win32Processes.h"
#include "win32/Win32Registry.h"
#include "win32/Win32Shell.h"
#include "win32/Win32VersionResources.h"

#include <windows.h>

#include <objbase.h>
#include <shlobj.h>

#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace sitekeeper {
namespace {

namespace fs = std::filesystem;

constexpr DWORD OpenForReading = 0; // STGM_READ, whose macro clang-tidy takes for a literal of ours

void ClearScratchKeys()
{
    for (const HKEY root : {HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER}) {
        ::RegDeleteTreeW(root, ScratchKey);
        ::RegDeleteKeyW(root, ScratchKey);
        ::RegDeleteKeyW(root, L"Software\\ORIVEL"); // stays where anything else lives in it
    }
}

/// Read-only files too, as tests leave them.
void RemoveTree(const fs::path& folder)
{
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ignored)) {
        ::SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    }
    fs::remove_all(folder, ignored);
}

/// The component runtime for reading a shortcut, whatever the test has entered or left.
class RuntimeScope
{
public:
    RuntimeScope() = default;
    RuntimeScope(const RuntimeScope&) = delete;
    RuntimeScope& operator=(const RuntimeScope&) = delete;
    ~RuntimeScope()
    {
        if (SUCCEEDED(m_result)) {
            ::CoUninitialize();
        }
    }

private:
    HRESULT m_result = ::CoInitialize(nullptr);
};

class Win32World final : public World
{
public:
    Win32World()
        : m_formerFolder(fs::current_path()),
          m_scratch(fs::temp_directory_path() / (L"SiteKeeperContract" + std::to_wstring(::GetCurrentProcessId())))
    {
        ClearScratchKeys();
        RemoveTree(m_scratch);
        fs::create_directory(m_scratch);
    }
    Win32World(const Win32World&) = delete;
    Win32World& operator=(const Win32World&) = delete;
    ~Win32World() override
    {
        std::error_code ignored; // a scratch folder that stays behind is no defect of what is tested
        fs::current_path(m_formerFolder, ignored);
        RemoveTree(m_scratch);
        ClearScratchKeys();
    }

    [[nodiscard]] Registry& TheRegistry() override { return m_registry; }
    [[nodiscard]] FileSystem& Files() override { return m_files; }
    [[nodiscard]] Shell& TheShell() override { return m_shell; }
    [[nodiscard]] Modules& TheModules() override { return m_modules; }
    [[nodiscard]] Environment& TheEnvironment() override { return m_environment; }
    [[nodiscard]] Accounts& TheAccounts() override { return m_accounts; }
    [[nodiscard]] Clock& TheClock() override { return m_clock; }
    [[nodiscard]] CodePage& TheCodePage() override { return m_codePage; }
    [[nodiscard]] Clipboard& TheClipboard() override { return m_clipboard; }
    [[nodiscard]] Processes& TheProcesses() override { return m_processes; }
    [[nodiscard]] VersionResources& TheVersionResources() override { return m_versions; }

    [[nodiscard]] std::wstring ScratchFolder() override { return m_scratch.wstring() + L"\\"; }
    void MakeFile(const std::wstring& path, const std::string& content) override
    {
        std::ofstream file(fs::path(path), std::ios::binary);
        file << content;
        if (!file.flush()) {
            throw std::runtime_error("the test cannot make its file");
        }
    }
    [[nodiscard]] std::string ContentOf(const std::wstring& path) override
    {
        std::ifstream file(fs::path(path), std::ios::binary);
        return file ? std::string(std::istreambuf_iterator<char>(file), {}) : "(no file)";
    }
    [[nodiscard]] std::optional<ShortcutFile> ReadShortcut(const std::wstring& path) override;
    void SetCurrentFolder(const std::wstring& path) override { fs::current_path(path); }

    void SetModified(const std::wstring& path, Seconds moment) override { SetModifiedOf(path, moment); }
    void SetAttributes(const std::wstring& path, FileAttributes attributes) override
    {
        SetFileAttributesOf(path, attributes);
    }
    [[nodiscard]] FileAttributes AttributesOf(const std::wstring& path) override { return FileAttributesOf(path); }
    void RestrictRights(const std::wstring& path) override { LeaveRightsToOwner(path); }
    [[nodiscard]] std::string RightsOf(const std::wstring& path) override { return TextOfRights(path); }
    [[nodiscard]] std::wstring SpellingOf(const std::wstring& path) override { return SpelledName(path); }
    [[nodiscard]] std::shared_ptr<void> Hold(const std::wstring& path, FileHolder holder) override
    {
        return HoldFile(path, holder);
    }

    [[nodiscard]] std::vector<std::wstring> WithoutBytes() override;

    [[nodiscard]] WindowId Window() override { return m_window.Id(); }
    void EmptyClipboard() override { EmptyRealClipboard(m_window); }
    void PutPictureOnClipboard() override { PutPictureOnRealClipboard(m_window); }
    [[nodiscard]] std::shared_ptr<void> HoldClipboard() override { return OpenRealClipboard(); }

    void SetVariable(const std::wstring& name, const std::wstring& text) override
    {
        ::_wputenv_s(name.c_str(), text.c_str());
    }
    void RemoveVariable(const std::wstring& name) override { ::_wputenv_s(name.c_str(), L""); }

    [[nodiscard]] bool IsWine() override { return sitekeeper::IsWine(); }

    void MakeRecorder(const std::wstring& path) override { CopyRecorder(path); }
    [[nodiscard]] std::optional<StartedAs> AwaitRecord(const std::wstring& path) override { return RecordOf(path); }
    [[nodiscard]] bool IsRecorderRunning(const std::wstring& path) override { return IsRecording(path); }
    void EndRecorder(const std::wstring& path) override { EndRecording(path); }
    [[nodiscard]] std::wstring CurrentFolder() override { return fs::current_path().wstring() + L"\\"; }
    [[nodiscard]] unsigned OpenHandles() override { return CountHandles(::GetCurrentProcess()); }

    [[nodiscard]] std::wstring FileWithVersion() override { return LibraryPath(); }
    [[nodiscard]] std::wstring LibraryName() override { return L"shlwapi.dll"; }
    [[nodiscard]] std::wstring LibraryPath() override
    {
        std::array<wchar_t, MAX_PATH> folder{};
        ::GetSystemDirectoryW(folder.data(), MAX_PATH);
        return std::wstring(folder.data()) + L"\\shlwapi.dll";
    }

private:
    fs::path m_formerFolder;
    fs::path m_scratch;
    Win32Registry m_registry;
    Win32FileSystem m_files;
    Win32Shell m_shell;
    Win32Modules m_modules;
    Win32Environment m_environment;
    Win32Accounts m_accounts;
    Win32Clock m_clock;
    Win32CodePage m_codePage;
    Win32Clipboard m_clipboard;
    Win32Processes m_processes;
    Win32VersionResources m_versions;
    TestWindow m_window;
};

/// Whatever the code page, nothing stands for the lone half of a pair. Western systems lack the others too, some of
/// which look like characters that they have.
std::vector<std::wstring> Win32World::WithoutBytes()
{
    constexpr UINT Western = 1252;
    std::vector<std::wstring> texts = {L"\xD800", L"\xDBFF", L"\xDC00", L"\xDFFF"};
    if (::GetACP() == Western) {
        texts.insert(texts.end(), {L"\u4E2D", L"\u0100", L"\uFF21", L"\u2032", L"\u221E", L"\U0001F600"});
    }
    return texts;
}

std::optional<ShortcutFile> Win32World::ReadShortcut(const std::wstring& path)
{
    const RuntimeScope runtime;
    ComPtr<IShellLinkW> link;
    ComPtr<IPersistFile> file;
    if (FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW,
                                  reinterpret_cast<void**>(link.put()))) ||
        FAILED(link->QueryInterface(IID_IPersistFile, reinterpret_cast<void**>(file.put()))) ||
        FAILED(file->Load(path.c_str(), OpenForReading))) {
        return std::nullopt;
    }
    std::array<wchar_t, 1024> text{};
    const auto room = static_cast<int>(text.size());
    ShortcutFile shortcut;
    if (SUCCEEDED(link->GetPath(text.data(), room, nullptr, SLGP_RAWPATH))) {
        shortcut.target = text.data();
    }
    if (SUCCEEDED(link->GetArguments(text.data(), room))) {
        shortcut.arguments = text.data();
    }
    if (SUCCEEDED(link->GetWorkingDirectory(text.data(), room))) {
        shortcut.workingFolder = text.data();
    }
    if (SUCCEEDED(link->GetIconLocation(text.data(), room, &shortcut.iconIndex))) {
        shortcut.iconFile = text.data();
    }
    return shortcut;
}

} // namespace

std::unique_ptr<World> MakeWorld()
{
    return std::make_unique<Win32World>();
}

} // namespace sitekeeper
