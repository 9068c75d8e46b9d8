#include "support/FaultyPlatform.h"

#include "support/FaultPlan.h"
#include "support/FaultyStorage.h"

#include <utility>

namespace sitekeeper {
namespace {

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
    void OpenProgram(const std::wstring& program, const std::wstring& parameters) override
    {
        if (!m_plan.Fails(L"open program " + program)) {
            m_inner.OpenProgram(program, parameters);
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
    void ShowTopic(WindowId owner, const std::wstring& address) override
    {
        if (!m_plan.Fails(L"help " + address)) {
            m_inner.ShowTopic(owner, address);
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

class FaultyVersionResources final : public VersionResources
{
public:
    FaultyVersionResources(VersionResources& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::vector<std::byte> ReadVersionBlock(const std::wstring& path) const override
    {
        return m_plan.Fails(L"version block " + path) ? std::vector<std::byte>() : m_inner.ReadVersionBlock(path);
    }

private:
    VersionResources& m_inner;
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

/// Its end, and its being given up, cannot fail as far as anybody is told.
class FaultyDocument final : public PrintDocument
{
public:
    FaultyDocument(std::unique_ptr<PrintDocument> inner, FaultPlan& plan) : m_inner(std::move(inner)), m_plan(plan) {}

    [[nodiscard]] int PageHeight() const override { return m_plan.Fails(L"page height") ? 0 : m_inner->PageHeight(); }
    [[nodiscard]] int Measure(std::wstring_view text) const override
    {
        return m_plan.Fails(L"measure " + std::to_wstring(text.size())) ? 0 : m_inner->Measure(text);
    }
    bool Begin(const std::wstring& name) override
    {
        return !m_plan.Fails(L"begin document " + name) && m_inner->Begin(name);
    }
    void BeginPage() override
    {
        if (!m_plan.Fails(L"begin page")) {
            m_inner->BeginPage();
        }
    }
    void Draw(std::wstring_view text) override
    {
        if (!m_plan.Fails(L"draw " + std::to_wstring(text.size()))) {
            m_inner->Draw(text);
        }
    }
    bool EndPage() override { return !m_plan.Fails(L"end page") && m_inner->EndPage(); }
    void End() override { m_inner->End(); }
    void Abort() override { m_inner->Abort(); }

private:
    std::unique_ptr<PrintDocument> m_inner;
    FaultPlan& m_plan;
};

class FaultyPrinter final : public Printer
{
public:
    FaultyPrinter(Printer& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::unique_ptr<PrintDocument> Choose(WindowId owner) override
    {
        if (m_plan.Fails(L"choose a printer")) {
            return nullptr;
        }
        std::unique_ptr<PrintDocument> document = m_inner.Choose(owner);
        return document == nullptr ? nullptr : std::make_unique<FaultyDocument>(std::move(document), m_plan);
    }

private:
    Printer& m_inner;
    FaultPlan& m_plan;
};

} // namespace

struct FaultyPlatform::Forwarders
{
    Forwarders(const Platform& inner, FaultPlan faults)
        : plan(std::move(faults)), registry(inner.registry, plan), files(inner.files, plan), shell(inner.shell, plan),
          folders(inner.folders, plan), messages(inner.messages, plan), modules(inner.modules, plan),
          environment(inner.environment, plan), accounts(inner.accounts, plan), clock(inner.clock, plan),
          help(inner.help, plan), codePage(inner.codePage, plan), clipboard(inner.clipboard, plan),
          web(inner.web, plan), processes(inner.processes, plan), versions(inner.versions, plan),
          printer(inner.printer, plan)
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
    FaultyVersionResources versions;
    FaultyPrinter printer;
};

FaultyPlatform::FaultyPlatform(const Platform& inner, FaultPlan plan)
    : m_forwarders(std::make_unique<Forwarders>(inner, std::move(plan)))
{}

FaultyPlatform::~FaultyPlatform() = default;

Platform FaultyPlatform::Ports()
{
    Forwarders& all = *m_forwarders;
    return {all.registry,    all.files,     all.shell,    all.folders, all.messages, all.modules,
            all.environment, all.accounts,  all.clock,    all.help,    all.codePage, all.clipboard,
            all.web,         all.processes, all.versions, all.printer};
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
