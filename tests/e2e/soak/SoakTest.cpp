// Random but legal gestures on the real program. SITEKEEPER_SEED chooses them, SITEKEEPER_GESTURES or
// SITEKEEPER_MINUTES says how many; the same seed gives the same gestures. scripts/soak.sh runs the long form.
#include "e2e/Journey.h"
#include "e2e/soak/Gestures.h"
#include "e2e/soak/Invariants.h"
#include "e2e/support/FileTree.h"
#include "e2e/support/Wide.h"

#include <windows.h>

#include <lmcons.h>

#include <algorithm>
#include <array>
#include <cwchar>
#include <iostream>

namespace sitekeeper::e2e {
namespace {

constexpr std::uint64_t UsualSeed = 20231;
constexpr std::uint64_t UsualGestures = 50;
constexpr std::size_t ShownHistory = 80;

std::uint64_t Given(const wchar_t* variable, std::uint64_t usually)
{
    const std::wstring text = EnvironmentText(variable);
    return text.empty() ? usually : std::wcstoull(text.c_str(), nullptr, 10);
}

std::wstring CurrentUser()
{
    std::array<wchar_t, UNLEN + 1> name{};
    auto size = static_cast<DWORD>(name.size());
    ::GetUserNameW(name.data(), &size);
    return name.data();
}

class Soak : public Journey
{
protected:
    Soak()
    {
        for (const std::wstring& folder : Model::RealFolders()) {
            MakeFolders(folder.substr(0, folder.size() - 1));
        }
        WriteValue(Hive::Machine, InstallationKey, L"Application Path", TextValue(Model::DesignFolders));
        WriteValue(Hive::Machine, Model::TrustedPathsKey, L"", TextValue(Model::TrustedPathsBefore));
    }

    /// The accounts that this computer has, as the program finds them.
    static Names FindAccounts()
    {
        const ProgramRun run(Installation::Program());
        const MainWindow main(run);
        main.Choose(Command::UserAccess);
        const UserAccessWindow dialog(run);
        Names accounts = dialog.NamesIn(AccessControl::Users);
        dialog.Leave(AccessControl::Cancel);
        main.Click(Control::Cancel);
        static_cast<void>(run.WaitForEnd());
        RemoveFile(ListFile);
        RemoveValue(Hive::User, PositionKey, L"Application");
        return accounts;
    }

    /// One gesture and what must hold behind it; what is wrong, empty when all is well.
    static std::string Perform(Scene& scene, Usage& usage)
    {
        const Gesture& gesture = ChooseGesture(scene);
        scene.history.push_back("#" + std::to_string(scene.history.size() + 1) + " " + gesture.name);
        try {
            gesture.perform(scene);
            std::string broken = BrokenInvariants(scene);
            return broken.empty() ? usage.Measure(scene) : broken;
        } catch (const std::exception& error) {
            return std::string(error.what()) + "\n";
        }
    }

    static std::string LastOf(const std::vector<std::string>& history)
    {
        std::string text;
        const std::size_t first = history.size() - std::min(history.size(), ShownHistory);
        for (std::size_t index = first; index < history.size(); ++index) {
            text += "  " + history[index] + "\n";
        }
        return text;
    }
};

} // namespace

TEST_F(Soak, RandomGesturesLeaveOnlyWhatTheyMean)
{
    const std::uint64_t seed = Given(L"SITEKEEPER_SEED", UsualSeed);
    const std::uint64_t minutes = Given(L"SITEKEEPER_MINUTES", 0);
    const std::uint64_t gestures = Given(L"SITEKEEPER_GESTURES", minutes == 0 ? UsualGestures : UINT64_MAX);
    const ULONGLONG end = minutes == 0 ? ~0ULL : ::GetTickCount64() + minutes * 60000;

    EchoProgram explorer = StandInForExplorer(Suite());
    Scene scene(seed, Model(CurrentUser(), FindAccounts()), std::move(explorer));
    Usage usage;
    std::string broken;
    while (broken.empty() && scene.history.size() < gestures && ::GetTickCount64() < end) {
        broken = Perform(scene, usage);
    }
    std::cout << usage.Summary() << '\n';
    if (!broken.empty()) {
        SaveMoment(::GetDesktopWindow(), L"soak-" + std::to_wstring(seed));
        ADD_FAILURE() << "seed " << seed << ", gesture " << scene.history.size() << ":\n"
                      << broken << "what was done, the last of it:\n"
                      << LastOf(scene.history);
    }
    std::cout << scene.history.size() << " gestures, seed " << seed << ": " << (broken.empty() ? "all well" : "broken")
              << '\n';
}

} // namespace sitekeeper::e2e
