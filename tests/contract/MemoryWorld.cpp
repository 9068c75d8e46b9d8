#include "contract/World.h"
#include "support/MemoryPlatform.h"
#include "support/VersionBlockBuilder.h"
#include "text/Text.h"

#include <algorithm>

namespace sitekeeper {
namespace {

/// As long as a VS_FIXEDFILEINFO, and begun by its signature.
std::vector<std::byte> FixedInformation()
{
    std::vector<std::byte> information{std::byte{0xBD}, std::byte{0x04}, std::byte{0xEF}, std::byte{0xFE}};
    information.resize(52);
    return information;
}

class MemoryWorld final : public World
{
public:
    MemoryWorld()
    {
        m_memory.files.AddFolder(Scratch);
        m_memory.modules.AddLibrary(Library);
        m_memory.versions.Set(Library, VersionNode(L"VS_VERSION_INFO", ValueKind::Binary, FixedInformation()));
        m_memory.modules.AddLibrary(GetNameOfLibrary());
        m_memory.accounts.AddServer(L"", {L"Administrator", L"Guest", m_memory.accounts.UserName()});
        m_memory.accounts.AddServer(L"ARCHIVE", {L"Administrator"});
    }

    [[nodiscard]] Registry& TheRegistry() override { return m_memory.registry; }
    [[nodiscard]] FileSystem& Files() override { return m_memory.files; }
    [[nodiscard]] Shell& TheShell() override { return m_memory.shell; }
    [[nodiscard]] Modules& TheModules() override { return m_memory.modules; }
    [[nodiscard]] Environment& TheEnvironment() override { return m_memory.environment; }
    [[nodiscard]] Accounts& TheAccounts() override { return m_memory.accounts; }
    [[nodiscard]] Clock& TheClock() override { return m_memory.clock; }
    [[nodiscard]] CodePage& TheCodePage() override { return m_memory.codePage; }
    [[nodiscard]] Clipboard& TheClipboard() override { return m_memory.clipboard; }
    [[nodiscard]] Processes& TheProcesses() override { return m_memory.processes; }
    [[nodiscard]] VersionResources& TheVersionResources() override { return m_memory.versions; }

    [[nodiscard]] std::wstring ScratchFolder() override { return Scratch; }
    void MakeFile(const std::wstring& path, const std::string& content) override
    {
        m_memory.files.AddFile(path, content);
    }
    [[nodiscard]] std::string ContentOf(const std::wstring& path) override
    {
        return m_memory.files.ContentOf(path).value_or("(no file)");
    }
    [[nodiscard]] std::optional<ShortcutFile> ReadShortcut(const std::wstring& path) override
    {
        return m_memory.files.ReadShortcut(path);
    }
    void SetCurrentFolder(const std::wstring& path) override
    {
        m_memory.files.SetCurrentFolder(path);
        m_currentFolder = path;
    }

    void SetModified(const std::wstring& path, Seconds moment) override { m_memory.files.SetModified(path, moment); }
    void SetAttributes(const std::wstring& path, FileAttributes attributes) override
    {
        m_memory.files.SetAttributes(path, attributes);
    }
    [[nodiscard]] FileAttributes AttributesOf(const std::wstring& path) override
    {
        return m_memory.files.AttributesOf(path);
    }
    void RestrictRights(const std::wstring& path) override { m_memory.files.SetRights(path, "owner"); }
    [[nodiscard]] std::string RightsOf(const std::wstring& path) override { return m_memory.files.RightsOf(path); }
    [[nodiscard]] std::wstring SpellingOf(const std::wstring& path) override { return m_memory.files.SpellingOf(path); }
    [[nodiscard]] std::shared_ptr<void> Hold(const std::wstring& path, FileHolder holder) override
    {
        return m_memory.files.Hold(path, holder);
    }

    [[nodiscard]] std::vector<std::wstring> WithoutBytes() override
    {
        return {std::wstring(1, wchar_t{0xD800}), std::wstring(1, wchar_t{0xDBFF}), std::wstring(1, wchar_t{0xDC00}),
                std::wstring(1, wchar_t{0xDFFF})};
    }

    [[nodiscard]] WindowId Window() override { return WindowId{1}; }
    void EmptyClipboard() override { m_memory.clipboard.Set(std::nullopt); }
    void PutPictureOnClipboard() override { m_memory.clipboard.Set(std::nullopt); }
    [[nodiscard]] std::shared_ptr<void> HoldClipboard() override
    {
        m_memory.clipboard.Refuse(true);
        return {this, [this](void*) { m_memory.clipboard.Refuse(false); }};
    }

    void SetVariable(const std::wstring& name, const std::wstring& text) override
    {
        m_memory.environment.Set(name, text);
    }
    void RemoveVariable(const std::wstring& name) override { m_memory.environment.Remove(name); }

    [[nodiscard]] bool IsWine() override { return false; }

    void MakeRecorder(const std::wstring& path) override { m_memory.processes.AddProgram(path); }
    [[nodiscard]] std::optional<StartedAs> AwaitRecord(const std::wstring& path) override;
    [[nodiscard]] bool IsRecorderRunning(const std::wstring& path) override { return AwaitRecord(path).has_value(); }
    void EndRecorder(const std::wstring& path) override { m_ended.push_back(path); }
    [[nodiscard]] std::wstring CurrentFolder() override { return m_currentFolder; }
    [[nodiscard]] unsigned OpenHandles() override { return 0; }

    [[nodiscard]] std::wstring FileWithVersion() override { return Library; }
    [[nodiscard]] std::wstring LibraryName() override { return GetNameOfLibrary(); }
    [[nodiscard]] std::wstring LibraryPath() override { return Library; }

private:
    static std::wstring GetNameOfLibrary() { return L"some.dll"; }

    const std::wstring Scratch = L"C:\\Temp\\Scratch\\";
    const std::wstring Library = L"C:\\Windows\\some.dll";
    std::wstring m_currentFolder = L"C:\\Temp\\";
    std::vector<std::wstring> m_ended;
    MemoryPlatform m_memory;
};

/// What is started in memory is in the state that the port promises.
std::optional<StartedAs> MemoryWorld::AwaitRecord(const std::wstring& path)
{
    constexpr int StartedShow = 5;
    constexpr int StartedNormal = 1;
    constexpr std::uint32_t StartedPriority = 0x20;
    if (std::find(m_ended.begin(), m_ended.end(), path) != m_ended.end()) {
        return std::nullopt;
    }
    for (const MemoryProcesses::Started& started : m_memory.processes.AllStarted()) {
        if (ReplaceAll(started.program, L"\\\\", L"\\") == path) {
            return StartedAs{started.commandLine, StartedShow, StartedPriority, m_currentFolder};
        }
    }
    for (const MemoryShell::OpenedProgram& opened : m_memory.shell.OpenedPrograms()) {
        if (opened.program == path) {
            return StartedAs{L"\"" + path + L"\" " + opened.parameters, StartedNormal, StartedPriority,
                             m_currentFolder};
        }
    }
    return std::nullopt;
}

} // namespace

std::unique_ptr<World> MakeWorld()
{
    return std::make_unique<MemoryWorld>();
}

} // namespace sitekeeper
