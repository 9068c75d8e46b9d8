#include "app/DialogsLibrary.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::wstring Name = L"ORSWDialogsOEM64.dll";
const std::wstring FirstPlace = L"C:\\Program Files\\Common Files\\ORIVEL\\" + Name;
const std::wstring SecondPlace = L"D:\\Common\\ORIVEL\\" + Name;

class DialogsLibrary : public ::testing::Test
{
protected:
    void NameFirstPlace() { memory.environment.Set(L"CommonProgramFiles", L"C:\\Program Files\\Common Files"); }
    void NameSecondPlace()
    {
        memory.registry.SetText(Hive::LocalMachine, L"Software\\Microsoft\\Windows\\CurrentVersion", L"CommonFilesDir",
                                L"D:\\Common\\");
    }
    void Install(const std::wstring& path)
    {
        memory.files.AddFile(path);
        memory.modules.AddLibrary(path);
    }
    ModuleId Load()
    {
        const Platform ports = memory.Ports();
        return LoadDialogsLibrary(SettingsOn(ports), ports.files, ports.modules, ports.messages);
    }
    void ExpectComplaint(const std::wstring& text)
    {
        memory.messages.Expect();
        EXPECT_EQ(Load(), ModuleId::None);
        EXPECT_EQ(memory.messages.Shown(),
                  (std::vector<ScriptedMessageBoxes::Box>{{WindowId::None, text, std::nullopt, MessageStyle::Error}}));
        EXPECT_TRUE(memory.modules.Loaded().empty());
    }

    MemoryPlatform memory;
};

TEST_F(DialogsLibrary, ComesFromTheFirstPlace)
{
    NameFirstPlace();
    NameSecondPlace();
    Install(FirstPlace);
    Install(SecondPlace);
    const ModuleId library = Load();
    EXPECT_NE(library, ModuleId::None);
    EXPECT_EQ(memory.modules.Loaded(), State{FirstPlace});
    memory.modules.Release(library);
    EXPECT_TRUE(memory.modules.Loaded().empty());
}

TEST_F(DialogsLibrary, ComesFromTheSecondPlaceWhenTheFirstLacksIt)
{
    NameFirstPlace();
    NameSecondPlace();
    Install(SecondPlace);
    EXPECT_NE(Load(), ModuleId::None);
    EXPECT_EQ(memory.modules.Loaded(), State{SecondPlace});
}

TEST_F(DialogsLibrary, ComesFromTheSecondPlaceWhenTheFirstIsUnknown)
{
    NameSecondPlace();
    Install(FirstPlace);
    Install(SecondPlace);
    EXPECT_NE(Load(), ModuleId::None);
    EXPECT_EQ(memory.modules.Loaded(), State{SecondPlace});
}

TEST_F(DialogsLibrary, IsLookedForByItsBareNameWhereNoPlaceIsKnown)
{
    memory.files.SetCurrentFolder(L"E:\\Here");
    memory.files.AddFile(L"E:\\Here\\" + Name);
    memory.modules.AddLibrary(Name);
    EXPECT_NE(Load(), ModuleId::None);
    EXPECT_EQ(memory.modules.Loaded(), State{Name});
}

TEST_F(DialogsLibrary, ThatIsInNeitherPlaceIsReportedByItsName)
{
    NameFirstPlace();
    NameSecondPlace();
    ExpectComplaint(L"Couldn't find dll file: \nORSWDialogsOEM64.dll\n\nPlease check software installation.");
}

TEST_F(DialogsLibrary, ThatCannotBeLoadedIsReportedByItsPath)
{
    NameFirstPlace();
    NameSecondPlace();
    memory.files.AddFile(SecondPlace, "no library");
    ExpectComplaint(L"Couldn't load dll file: \nD:\\Common\\ORIVEL\\ORSWDialogsOEM64.dll\n\n"
                    L"Please check software installation.");
}

TEST_F(DialogsLibrary, ThatCannotBeLoadedIsNotTriedInTheOtherPlace)
{
    NameFirstPlace();
    NameSecondPlace();
    memory.files.AddFile(FirstPlace, "no library");
    Install(SecondPlace);
    ExpectComplaint(L"Couldn't load dll file: \nC:\\Program Files\\Common Files\\ORIVEL\\ORSWDialogsOEM64.dll\n\n"
                    L"Please check software installation.");
}

} // namespace
} // namespace sitekeeper
