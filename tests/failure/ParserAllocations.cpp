// The parsers of what others wrote, with each allocation failing in turn.
#include "AllocationFailures.h"
#include "autocad/TrustedPathKeys.h"
#include "autocad/TrustedPaths.h"
#include "frame/DialogTemplate.h"
#include "maindlg/AboutText.h"
#include "maindlg/Uninstaller.h"
#include "maindlg/VersionStrings.h"
#include "PausingPlatform.h"
#include "settings/Product.h"
#include "support/AutoCADTree.h"
#include "support/TemplateBuilder.h"
#include "support/VersionBlockBuilder.h"
#include "text/Tokens.h"
#include "update/PublishedUpdate.h"

#include <algorithm>
#include <optional>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

/// Most operations give one text or nothing.
struct TextWorld
{
    PausingPlatform platform;
    Platform ports = platform.Ports();
    std::wstring text;
};

constexpr const char* Plain =
    "<a href=\"downloads/LX_2023_Plus_Update2024_05_06.exe\">the plain beginning of a page</a>";
constexpr const char* Wide = "and \xC3\xA9 something else that makes it wide";

struct PageWorld : TextWorld
{
    PageText page;
    std::optional<Seconds> date;
};

/// A page holds the pieces that were appended, the last one whole or in part; more of it can be appended.
int CollectAPage()
{
    return SweepAllocations<PageWorld>(
        [](PageWorld& world) {
            world.page.Append(Plain, world.platform.memory.codePage);
            world.page.Append(Wide, world.platform.memory.codePage);
        },
        [](PageWorld& world, Ending ending) {
            PageText whole;
            whole.Append(Plain, world.platform.memory.codePage);
            whole.Append(Wide, world.platform.memory.codePage);
            const std::wstring text = world.page.Text();
            EXPECT_TRUE(whole.Text().starts_with(text));
            EXPECT_TRUE(ending == Ending::Raised || text == whole.Text());
            world.page.Append("!", world.platform.memory.codePage);
            EXPECT_EQ(world.page.Text(), text + L"!");
        });
}

int ReadTheUpdatePage()
{
    const TimeZoneScope zone(Utc);
    constexpr const wchar_t* Address = L"https://updates.example/software-updates/";
    return SweepAllocations<PageWorld>(
        [](PageWorld& world) {
            {
                const AllocationPause pause;
                world.platform.memory.web.Publish(Address, std::string(Plain) + Wide);
            }
            const PageText page = ReadPageText(world.ports.web, world.ports.codePage, Address);
            world.date = PublishedDate(page, 0, world.ports.clock, Address);
        },
        [](PageWorld& world, Ending ending) {
            EXPECT_EQ(world.date, ending == Ending::Done ? std::optional<Seconds>(1714953600) : std::nullopt);
        });
}

/// A date that is none ends with its error or, without memory to say which, with that.
int RefuseAPublishedDate()
{
    const TimeZoneScope zone(Utc);
    return SweepAllocations<PageWorld>(
        [](PageWorld& world) {
            PageText page;
            page.Append("LX_2023_Plus_Update2024_13_06.exe, with a longer text behind it", world.ports.codePage);
            try {
                world.date = PublishedDate(page, 0, world.ports.clock, L"https://updates.example/");
            } catch (const PlatformError&) {
                world.text = L"refused";
            }
        },
        [](PageWorld& world, Ending ending) {
            EXPECT_FALSE(world.date);
            EXPECT_EQ(world.text, ending == Ending::Done ? L"refused" : L"");
        });
}

struct ReminderWorld
{
    ReminderWorld()
    {
        platform.memory.registry.SetText(Hive::CurrentUser, Key, L"CheckWebVersionDate", L"2024-05-06 07:08:09");
    }

    inline static const std::wstring Key = InstallationSettings::UpdateReminderKey();
    PausingPlatform platform;
    InstallationSettings settings = platform.Settings();
    std::optional<Seconds> date;
};

int ReadAStoredDate()
{
    const TimeZoneScope zone(Utc);
    return SweepAllocations<ReminderWorld>(
        [](ReminderWorld& world) { world.date = world.settings.ReadUpdateDate(ReminderWorld::Key, 0); },
        [](ReminderWorld& world, Ending ending) {
            EXPECT_EQ(world.date, ending == Ending::Done ? std::optional<Seconds>(1714979289) : std::nullopt);
        });
}

int StoreADate()
{
    const TimeZoneScope zone(Utc);
    return SweepAllocations<ReminderWorld>(
        [](ReminderWorld& world) { world.settings.WriteUpdateDate(ReminderWorld::Key, 0); },
        [](ReminderWorld& world, Ending ending) {
            EXPECT_EQ(world.settings.ReadUpdateDate(ReminderWorld::Key, 1), ending == Ending::Done ? 0 : 1714979289);
        });
}

constexpr const wchar_t* Program = L"C:\\Suite\\Applications\\SiteKeeper64.exe";

struct VersionWorld : TextWorld
{
    VersionWorld()
    {
        const auto texts = VersionNode(L"040904e4", ValueKind::Text, {},
                                       {TextNode(L"Comments", L"a text that is long enough for memory of its own"),
                                        TextNode(L"FileDescription", L"Site Keeper, and a few words more"),
                                        TextNode(L"FileVersion", L"1.2"),
                                        TextNode(L"LegalCopyright", L"(c) the makers of the suite")});
        const auto block = VersionNode(
            L"VS_VERSION_INFO", ValueKind::Binary, std::vector<std::byte>(52),
            {VersionNode(L"StringFileInfo", ValueKind::Text, {}, {texts}),
             VersionNode(L"VarFileInfo", ValueKind::Text, {},
                         {VersionNode(L"Translation", ValueKind::Binary, Translations({0x0409, 0x04E4}))})});
        platform.memory.versions.Set(Program, block);
        platform.memory.registry.SetText(Hive::LocalMachine, SuiteKey, L"ProductUpdate", L"3, and a longer text");
    }

    VersionStrings strings;
};

/// Each text is the right one or empty.
int ReadVersionTexts()
{
    return SweepAllocations<VersionWorld>(
        [](VersionWorld& world) {
            ReadVersionStrings(world.ports.versions, world.strings, L"C:\\Suite\\Applications\\SiteKeeper64", L".exe");
        },
        [](VersionWorld& world, Ending ending) {
            VersionStrings whole;
            ReadVersionStrings(world.ports.versions, whole, L"C:\\Suite\\Applications\\SiteKeeper64", L".exe");
            EXPECT_FALSE(whole[VersionString::LegalCopyright].empty());
            for (std::size_t which = 0; which < VersionStrings::Count; ++which) {
                const std::wstring& text = world.strings[static_cast<VersionString>(which)];
                EXPECT_TRUE(text == whole[static_cast<VersionString>(which)] ||
                            (text.empty() && ending == Ending::Raised));
            }
        });
}

int ComposeTheAboutText()
{
    return SweepAllocations<VersionWorld>(
        [](VersionWorld& world) { world.text = BuildAboutText(world.ports.versions, world.ports.registry, Program); },
        [](VersionWorld& world, Ending ending) { EXPECT_EQ(world.text.empty(), ending == Ending::Raised); });
}

struct TreeWorld
{
    TreeWorld()
    {
        MemoryRegistry& registry = platform.memory.registry;
        registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", L"S");
        AddProduct(registry, L"R21.0", L"A", L"C:\\A;S\\Designer\\common\\R21");
        AddProduct(registry, L"R24.0", L"B", L"C:\\Z");
    }

    PausingPlatform platform;
    Texts keys{L"from before"};
    Texts releases{L"from before"};
};

/// Both lists name the same products, all of them or none.
int FindProducts()
{
    return SweepAllocations<TreeWorld>(
        [](TreeWorld& world) { FindAutoCADTrustedPathKeys(world.platform.registry, world.keys, world.releases); },
        [](TreeWorld& world, Ending ending) {
            EXPECT_EQ(world.keys.size(), world.releases.size());
            EXPECT_EQ(world.keys.size(), ending == Ending::Done ? 2U : 0U);
        });
}

int ExtendTheTrustedPaths()
{
    return SweepAllocations<TreeWorld>(
        [](TreeWorld& world) { AddTrustedPaths(world.platform.registry, world.keys, world.releases); },
        [](TreeWorld& world, Ending ending) {
            TreeWorld expected;
            if (ending == Ending::Done) {
                AddProduct(expected.platform.memory.registry, L"R24.0", L"B", L"C:\\Z;" + FiveFolders(L"S", L"R24"));
            }
            EXPECT_EQ(world.platform.memory.registry.Listing(), expected.platform.memory.registry.Listing());
        });
}

/// A walk over tokens takes no memory at all.
int WalkOverTokens()
{
    return SweepAllocations<TextWorld>(
        [](TextWorld&) {
            std::ptrdiff_t position = 0;
            while (!NextToken(L";;C:\\A folder with a long name;C:\\B;", L';', position).value_or(L"").empty()) {
            }
            EXPECT_EQ(position, -1);
        },
        [](TextWorld&, Ending) {});
}

struct TemplateWorld
{
    TemplateBuilder layout = TemplateBuilder().PlainHead(0, 0).Text(L"").Text(L"").Text(L"a dialog's title");
    std::vector<std::byte> before = layout.Result();
    std::optional<std::vector<std::byte>> changed;
};

int GiveADialogItsFont()
{
    return SweepAllocations<TemplateWorld>(
        [](TemplateWorld& world) { world.changed = WithDialogFont(world.layout.Result(), L"Segoe UI", 0xFFF2); },
        [](TemplateWorld& world, Ending ending) {
            EXPECT_EQ(world.layout.Result(), world.before);
            EXPECT_EQ(world.changed.has_value(), ending == Ending::Done);
        });
}

struct ShortCommandWorld
{
    UninstallCommand command{L"from", L"before"};
};

int SplitAnUninstallCommand()
{
    static const std::wstring registered = L"C:\\Program Files\\Installer\\setup.exe -runfromtemp -l0x0409 -removeonly";
    return SweepAllocations<ShortCommandWorld>(
        [](ShortCommandWorld& world) { world.command = SplitUninstallString(registered); },
        [](ShortCommandWorld& world, Ending ending) {
            const UninstallCommand whole{L"C:\\Program Files\\Installer\\setup.exe", L"-runfromtemp -l0x0409"};
            EXPECT_EQ(world.command, ending == Ending::Done ? whole : (UninstallCommand{L"from", L"before"}));
        });
}

} // namespace

SweptOperations ParserAllocations()
{
    return {{"collect a page", CollectAPage},
            {"read the update page", ReadTheUpdatePage},
            {"refuse a published date", RefuseAPublishedDate},
            {"read a stored date", ReadAStoredDate},
            {"store a date", StoreADate},
            {"read the version texts", ReadVersionTexts},
            {"compose the About text", ComposeTheAboutText},
            {"find the AutoCAD products", FindProducts},
            {"add the trusted paths", ExtendTheTrustedPaths},
            {"walk over tokens", WalkOverTokens},
            {"give a dialog its font", GiveADialogItsFont},
            {"split an uninstall command", SplitAnUninstallCommand}};
}

} // namespace sitekeeper
