#include "support/FaultyPlatform.h"

namespace sitekeeper {
namespace {

/// Counts the calls of one platform and picks the one that fails.
class FaultPlan
{
public:
    explicit FaultPlan(int failingCall) : m_failingCall(failingCall) {}

    bool Fails(const std::wstring& call)
    {
        m_calls.push_back(call);
        return static_cast<int>(m_calls.size()) == m_failingCall;
    }

    [[nodiscard]] const std::vector<std::wstring>& Calls() const { return m_calls; }
    [[nodiscard]] bool HasFailed() const
    {
        return m_failingCall > 0 && static_cast<int>(m_calls.size()) >= m_failingCall;
    }

private:
    int m_failingCall;
    std::vector<std::wstring> m_calls;
};

class FaultySubKeys final : public SubKeys
{
public:
    FaultySubKeys(std::unique_ptr<SubKeys> inner, const std::wstring& path, FaultPlan& plan)
        : m_inner(std::move(inner)), m_path(path), m_plan(plan)
    {}

    [[nodiscard]] std::uint32_t Count() const override { return m_inner->Count(); }
    [[nodiscard]] RegistryStatus ReadName(std::uint32_t index, std::wstring& name) const override
    {
        if (m_plan.Fails(L"sub-key " + std::to_wstring(index) + L" of " + m_path)) {
            name.clear();
            return InjectedStatus;
        }
        return m_inner->ReadName(index, name);
    }

private:
    std::unique_ptr<SubKeys> m_inner;
    std::wstring m_path;
    FaultPlan& m_plan;
};

class FaultyRegistry final : public Registry
{
public:
    FaultyRegistry(Registry& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                  const std::wstring& name, KeyAccess access,
                                                                  std::size_t limit) const override
    {
        return m_plan.Fails(L"read " + MemoryRegistry::PathText(hive, key) + L" : " + name)
                   ? std::nullopt
                   : m_inner.ReadValue(hive, key, name, access, limit);
    }

    bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                    std::span<const std::byte> bytes) override
    {
        return !m_plan.Fails(L"write " + MemoryRegistry::PathText(hive, key) + L" : " + name) &&
               m_inner.WriteValue(hive, key, name, type, bytes);
    }

    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const override
    {
        const std::wstring path = MemoryRegistry::PathText(hive, key);
        if (m_plan.Fails(L"sub-keys of " + path)) {
            return {InjectedStatus, nullptr};
        }
        OpenedSubKeys opened = m_inner.OpenSubKeys(hive, key);
        if (opened.keys) {
            opened.keys = std::make_unique<FaultySubKeys>(std::move(opened.keys), path, m_plan);
        }
        return opened;
    }

private:
    Registry& m_inner;
    FaultPlan& m_plan;
};

/// A write that fails leaves half of its bytes, as a full disk does.
class FaultyOutputFile final : public OutputFile
{
public:
    FaultyOutputFile(std::unique_ptr<OutputFile> inner, const std::wstring& path, FaultPlan& plan)
        : m_inner(std::move(inner)), m_path(path), m_plan(plan)
    {}

    bool Write(std::string_view bytes) override
    {
        if (m_plan.Fails(L"write to " + m_path)) {
            m_inner->Write(bytes.substr(0, bytes.size() / 2));
            return false;
        }
        return m_inner->Write(bytes);
    }
    bool EndHere() override { return !m_plan.Fails(L"end " + m_path) && m_inner->EndHere(); }
    bool Flush() override { return !m_plan.Fails(L"flush " + m_path) && m_inner->Flush(); }

private:
    std::unique_ptr<OutputFile> m_inner;
    std::wstring m_path;
    FaultPlan& m_plan;
};

class FaultyFileSystem final : public FileSystem
{
public:
    FaultyFileSystem(FileSystem& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] bool Exists(const std::wstring& path) const override
    {
        return !m_plan.Fails(L"exists " + path) && m_inner.Exists(path);
    }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override
    {
        return m_plan.Fails(L"full path " + path) ? std::nullopt : m_inner.FullPath(path);
    }
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override
    {
        if (!m_plan.Fails(L"search " + pattern)) {
            m_inner.Search(pattern, take);
        }
    }
    bool MakeFolder(const std::wstring& path) override
    {
        return !m_plan.Fails(L"make folder " + path) && m_inner.MakeFolder(path);
    }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override
    {
        return m_plan.Fails(L"read file " + path) ? std::nullopt : m_inner.ReadContent(path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override
    {
        return m_plan.Fails(L"open " + path) ? nullptr : Watched(m_inner.OpenForWriting(path), path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path, const std::wstring& model) override
    {
        return m_plan.Fails(L"make file " + path) ? nullptr : Watched(m_inner.MakeFileLike(path, model), path);
    }
    bool MoveOver(const std::wstring& from, const std::wstring& to) override
    {
        return !m_plan.Fails(L"move over " + to) && m_inner.MoveOver(from, to);
    }
    bool RemoveFile(const std::wstring& path) override
    {
        return !m_plan.Fails(L"remove " + path) && m_inner.RemoveFile(path);
    }

private:
    std::unique_ptr<OutputFile> Watched(std::unique_ptr<OutputFile> file, const std::wstring& path)
    {
        return file == nullptr ? nullptr : std::make_unique<FaultyOutputFile>(std::move(file), path, m_plan);
    }

    FileSystem& m_inner;
    FaultPlan& m_plan;
};

class FaultyShell final : public Shell
{
public:
    FaultyShell(Shell& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    bool EnterComponents() override { return !m_plan.Fails(L"enter components") && m_inner.EnterComponents(); }
    void LeaveComponents() noexcept override { m_inner.LeaveComponents(); }
    ResultCode SaveShortcut(const std::wstring& path, const ShortcutFile& shortcut) override
    {
        return m_plan.Fails(L"save " + path) ? InjectedFailure : m_inner.SaveShortcut(path, shortcut);
    }
    void Explore(const std::wstring& folder) override
    {
        if (!m_plan.Fails(L"explore " + folder)) {
            m_inner.Explore(folder);
        }
    }
    void Open(const std::wstring& address) override
    {
        if (!m_plan.Fails(L"open page " + address)) {
            m_inner.Open(address);
        }
    }

private:
    Shell& m_inner;
    FaultPlan& m_plan;
};

class FaultyFolderChooser final : public FolderChooser
{
public:
    FaultyFolderChooser(FolderChooser& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    void Choose(const std::wstring& title, std::wstring& path) override
    {
        if (m_plan.Fails(L"choose " + title)) {
            path.clear();
        } else {
            m_inner.Choose(title, path);
        }
    }

private:
    FolderChooser& m_inner;
    FaultPlan& m_plan;
};

class FaultyMessageBoxes final : public MessageBoxes
{
public:
    FaultyMessageBoxes(MessageBoxes& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    Answer Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                MessageStyle style) override
    {
        return m_plan.Fails(L"show " + text) ? Answer::None : m_inner.Show(owner, text, caption, style);
    }

private:
    MessageBoxes& m_inner;
    FaultPlan& m_plan;
};

class FaultyModules final : public Modules
{
public:
    FaultyModules(Modules& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] ModuleId Load(const std::wstring& path) override
    {
        return m_plan.Fails(L"load " + path) ? ModuleId::None : m_inner.Load(path);
    }
    void Release(ModuleId library) noexcept override { m_inner.Release(library); }

private:
    Modules& m_inner;
    FaultPlan& m_plan;
};

class FaultyEnvironment final : public Environment
{
public:
    FaultyEnvironment(Environment& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::optional<std::wstring> Variable(const std::wstring& name) const override
    {
        return m_plan.Fails(L"variable " + name) ? std::nullopt : m_inner.Variable(name);
    }

private:
    Environment& m_inner;
    FaultPlan& m_plan;
};

class FaultyAccounts final : public Accounts
{
public:
    FaultyAccounts(Accounts& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::wstring UserName() const override
    {
        return m_plan.Fails(L"user name") ? std::wstring() : m_inner.UserName();
    }
    [[nodiscard]] std::vector<std::wstring> Servers() const override
    {
        return m_plan.Fails(L"servers") ? std::vector<std::wstring>() : m_inner.Servers();
    }
    [[nodiscard]] AccountPage UsersOf(const std::wstring& server, std::uint32_t index,
                                      std::uint32_t count) const override
    {
        return m_plan.Fails(L"users of " + server) ? AccountPage{NetworkStatus::AccessDenied, {}, 0}
                                                   : m_inner.UsersOf(server, index, count);
    }

private:
    Accounts& m_inner;
    FaultPlan& m_plan;
};

class FaultyClock final : public Clock
{
public:
    FaultyClock(Clock& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] Seconds Now() const override { return m_inner.Now(); }
    [[nodiscard]] std::optional<CalendarTime> ToLocal(Seconds moment) const override
    {
        return m_plan.Fails(L"to local") ? std::nullopt : m_inner.ToLocal(moment);
    }
    [[nodiscard]] std::optional<Seconds> FromLocal(const CalendarTime& time) const override
    {
        return m_plan.Fails(L"from local") ? std::nullopt : m_inner.FromLocal(time);
    }
    [[nodiscard]] std::optional<std::wstring> Format(const std::wstring& pattern,
                                                     const CalendarTime& time) const override
    {
        return m_plan.Fails(L"format") ? std::nullopt : m_inner.Format(pattern, time);
    }

private:
    Clock& m_inner;
    FaultPlan& m_plan;
};

class FaultyHelpViewer final : public HelpViewer
{
public:
    FaultyHelpViewer(HelpViewer& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    void ShowContents(WindowId owner, const std::wstring& path) override
    {
        if (!m_plan.Fails(L"help " + path)) {
            m_inner.ShowContents(owner, path);
        }
    }

private:
    HelpViewer& m_inner;
    FaultPlan& m_plan;
};

class FaultyCodePage final : public CodePage
{
public:
    FaultyCodePage(CodePage& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    void Decode(std::string_view bytes, std::wstring& text) const override { m_inner.Decode(bytes, text); }
    [[nodiscard]] bool Encode(std::wstring_view text, std::string& bytes) const override
    {
        return !m_plan.Fails(L"encode " + std::wstring(text)) && m_inner.Encode(text, bytes);
    }

private:
    CodePage& m_inner;
    FaultPlan& m_plan;
};

class FaultyClipboard final : public Clipboard
{
public:
    FaultyClipboard(Clipboard& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    bool PutText(WindowId owner, const std::wstring& text) override
    {
        return !m_plan.Fails(L"put on the clipboard") && m_inner.PutText(owner, text);
    }
    [[nodiscard]] std::optional<std::wstring> Text(WindowId owner) const override
    {
        return m_plan.Fails(L"take from the clipboard") ? std::nullopt : m_inner.Text(owner);
    }

private:
    Clipboard& m_inner;
    FaultPlan& m_plan;
};

class FaultyWebSession final : public WebSession
{
public:
    FaultyWebSession(WebSession& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    void ReadPage(const std::wstring& address, std::size_t pieceSize, const TakePiece& take) override
    {
        if (!m_plan.Fails(L"read page " + address)) {
            m_inner.ReadPage(address, pieceSize, take);
        }
    }

private:
    WebSession& m_inner;
    FaultPlan& m_plan;
};

class FaultyProcesses final : public Processes
{
public:
    FaultyProcesses(Processes& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    bool Start(const std::wstring& program, const std::wstring& commandLine) override
    {
        return !m_plan.Fails(L"start " + program) && m_inner.Start(program, commandLine);
    }

private:
    Processes& m_inner;
    FaultPlan& m_plan;
};

} // namespace

struct FaultyPlatform::Forwarders
{
    Forwarders(const Platform& inner, int failingCall)
        : plan(failingCall), registry(inner.registry, plan), files(inner.files, plan), shell(inner.shell, plan),
          folders(inner.folders, plan), messages(inner.messages, plan), modules(inner.modules, plan),
          environment(inner.environment, plan), accounts(inner.accounts, plan), clock(inner.clock, plan),
          help(inner.help, plan), codePage(inner.codePage, plan), clipboard(inner.clipboard, plan),
          web(inner.web, plan), processes(inner.processes, plan)
    {}

    FaultPlan plan;
    FaultyRegistry registry;
    FaultyFileSystem files;
    FaultyShell shell;
    FaultyFolderChooser folders;
    FaultyMessageBoxes messages;
    FaultyModules modules;
    FaultyEnvironment environment;
    FaultyAccounts accounts;
    FaultyClock clock;
    FaultyHelpViewer help;
    FaultyCodePage codePage;
    FaultyClipboard clipboard;
    FaultyWebSession web;
    FaultyProcesses processes;
};

FaultyPlatform::FaultyPlatform(const Platform& inner, int failingCall)
    : m_forwarders(std::make_unique<Forwarders>(inner, failingCall))
{}

FaultyPlatform::~FaultyPlatform() = default;

Platform FaultyPlatform::Ports()
{
    Forwarders& all = *m_forwarders;
    return {all.registry, all.files, all.shell, all.folders,  all.messages,  all.modules, all.environment,
            all.accounts, all.clock, all.help,  all.codePage, all.clipboard, all.web,     all.processes};
}

const std::vector<std::wstring>& FaultyPlatform::Calls() const
{
    return m_forwarders->plan.Calls();
}

bool FaultyPlatform::HasFailed() const
{
    return m_forwarders->plan.HasFailed();
}

} // namespace sitekeeper
