#include "support/UserAccessFixture.h"

#include "app/DlgOccManager.h"
#include "support/Input.h"

#include <iterator>
#include <memory>
#include <utility>

namespace sitekeeper {

UserAccessTest::UserAccessTest()
{
    memory.files.AddFolder(L"N:\\Suite\\Data");
    m_settings.WriteFolder(SuiteFolder::Datafiles, L"N:\\Suite\\Data\\");
    m_app.EnableControlContainer(std::make_unique<CDlgOccManager>());
}

INT_PTR UserAccessTest::Run(std::vector<DriverStep> steps)
{
    return RunOwnedBy(CWnd(), std::move(steps));
}

INT_PTR UserAccessTest::RunOwnedBy(const CWnd& owner, std::vector<DriverStep> steps)
{
    steps.insert(steps.begin(), Await("wait for the dialog", [](const UserAccessPage& page) { return page.IsOpen(); }));
    CUserAccessDlg dialog(m_app, owner, {m_lists, memory.clipboard});
    m_dialog = &dialog;
    INT_PTR result = 0;
    {
        const ModalDriver driver(std::move(steps), m_patienceMs);
        result = dialog.DoModal();
    }
    m_dialog = nullptr;
    return result;
}

DriverStep UserAccessTest::Do(std::string name, Gesture gesture)
{
    return {std::move(name), [this, gesture = std::move(gesture)] {
                gesture(UserAccessPage(m_dialog->Handle()));
                return true;
            }};
}

DriverStep UserAccessTest::Await(std::string name, Question question)
{
    return {std::move(name),
            [this, question = std::move(question)] { return question(UserAccessPage(m_dialog->Handle())); }};
}

DriverStep UserAccessTest::Press(int button)
{
    return Do("press button " + std::to_string(button), [button](const UserAccessPage& page) { page.Click(button); });
}

std::vector<DriverStep> UserAccessTest::Drag(int list, const std::wstring& name,
                                             const std::function<POINT(const UserAccessPage&)>& to)
{
    const auto start = [list, name](const UserAccessPage& page) { return page.PlaceOf(list, name); };
    return {
        Do("move to the name", [start](const UserAccessPage& page) { MoveMouse(start(page)); }),
        Do("press", [](const UserAccessPage&) { PressMouse(); }),
        Do("move a little",
           [start](const UserAccessPage& page) {
               const POINT point = start(page);
               MoveMouse({point.x + 6, point.y + 6});
           }),
        Do("move on",
           [start](const UserAccessPage& page) {
               const POINT point = start(page);
               MoveMouse({point.x + 16, point.y + 8});
           }),
        Await("the drag has begun", [](const UserAccessPage& page) { return ::GetCapture() == page.Window(); }),
        Do("move to the target", [to](const UserAccessPage& page) { MoveMouse(to(page)); }),
        Do("release", [](const UserAccessPage&) { ReleaseMouse(); }),
        Await("the drag has ended", [](const UserAccessPage&) { return ::GetCapture() == nullptr; }),
    };
}

std::vector<DriverStep> UserAccessTest::DragOnto(int list, const std::wstring& name, int target)
{
    return Drag(list, name, [target](const UserAccessPage& page) { return page.EmptyPlaceIn(target); });
}

DriverStep UserAccessTest::Expect(std::vector<Names> lists)
{
    return Do("look at the lists", [lists = std::move(lists)](const UserAccessPage& page) {
        std::vector<Names> shown;
        for (const int list : {UserList, LedgerComposerList, SiteKeeperList, SheetWriterList, NormKeeperList}) {
            shown.push_back(page.NamesOf(list));
        }
        EXPECT_EQ(shown, lists);
    });
}

std::vector<DriverStep> Joined(std::vector<std::vector<DriverStep>> scripts)
{
    std::vector<DriverStep> all;
    for (std::vector<DriverStep>& script : scripts) {
        all.insert(all.end(), std::make_move_iterator(script.begin()), std::make_move_iterator(script.end()));
    }
    return all;
}

} // namespace sitekeeper
