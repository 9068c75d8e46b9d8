// The list file's store, with each of its allocations failing in turn: it stays whole, and the file is the old or the
// new one.
#include "access/IniFile.h"
#include "AllocationFailures.h"
#include "PausingPlatform.h"
#include "platform/PlatformError.h"

#include <algorithm>
#include <map>
#include <optional>

namespace sitekeeper {
namespace {

using Names = std::vector<std::wstring>;
/// Keys and values by section.
using Entries = std::map<std::wstring, std::map<std::wstring, std::wstring>>;

constexpr const wchar_t* StorePath = L"C:\\Data\\UserDatafile.ini";
constexpr const wchar_t* OtherPath = L"C:\\Data\\other.ini";
constexpr const wchar_t* SectionNames[] = {L"", L"User List", L"SiteKeeper", L"SheetWriter", L"New"};

/// More than the store looks up at once, with duplicates, empty values, lines that are none, and characters that take
/// several bytes.
std::string FileText()
{
    std::string text = "loose = line\nno entry\n";
    for (const char* const section : {"User List", "SiteKeeper", "SheetWriter"}) {
        text += std::string("[") + section + "]\n";
        for (int number = 70; number > 0; --number) {
            const std::string name = "user " + std::to_string(number % 60) + (number % 7 == 0 ? " \xC3\xA9" : "");
            text += name + " = " + (number % 11 == 0 ? std::string() : name + " in " + section) + "\n";
        }
    }
    return text;
}

struct StoreWorld
{
    StoreWorld()
    {
        files.AddFolder(L"C:\\Suite"); // where a store begins that was not told its file
        files.AddFile(StorePath, FileText());
        files.AddFile(OtherPath, "[New]\nzoe = zoe\nadam = adam\n");
        store.emplace(pausing, codePage, L"C:\\Suite\\SiteKeeper64.exe");
    }

    MemoryFileSystem files;
    PausingFiles pausing{files};
    Utf8CodePage codePage;
    std::optional<CIniFile> store;
};

/// A store that has read the file.
struct LoadedStoreWorld : StoreWorld
{
    LoadedStoreWorld()
    {
        store->Open(StorePath);
        store->SetSection(L"SiteKeeper");
    }
};

/// One that has something to save besides.
struct ChangedStoreWorld : LoadedStoreWorld
{
    ChangedStoreWorld() { store->SetValue(L"added", L"a value"); }
};

/// What the store holds, each entry found by its key too.
Entries EntriesOf(CIniFile& store)
{
    Entries entries;
    for (const wchar_t* const section : SectionNames) {
        Names keys;
        Names values;
        store.SetSection(section);
        store.GetSectionEntries(keys, values);
        EXPECT_EQ(keys.size(), values.size());
        for (std::size_t place = 0; place < keys.size(); ++place) {
            EXPECT_TRUE(entries[section].try_emplace(keys[place], values[place]).second) << "twice the same key";
            std::wstring value;
            store.GetValue(keys[place], value, L"(not found)");
            EXPECT_EQ(value, values[place]);
        }
    }
    store.SetSection(L""); // where a file begins
    return entries;
}

Entries EntriesOf(const std::string& content)
{
    MemoryFileSystem files;
    const Utf8CodePage codePage;
    CIniFile store(files, codePage, L"");
    TextReader file(content, codePage);
    store.Load(file);
    return EntriesOf(store);
}

std::string ContentOf(const StoreWorld& world, const wchar_t* path)
{
    return world.files.ContentOf(path).value_or("(no file)");
}

/// A store that a failure left behind: all operations do what they always do.
void ExpectUsable(StoreWorld& world)
{
    CIniFile& store = *world.store;
    Entries expected = EntriesOf(store);
    store.SetSection(L"New");
    for (int number = 0; number < 100; ++number) {
        const std::wstring name = L"n" + std::to_wstring(number);
        store.SetValue(name, name);
        expected[L"New"][name] = name;
    }
    store.DeleteSection(L"SheetWriter");
    expected.erase(L"SheetWriter");
    EXPECT_EQ(EntriesOf(store), expected);
    EXPECT_EQ(store.Save(false), CIniFile::Success);
    EXPECT_EQ(EntriesOf(store), expected);
    for (const wchar_t* const path : {OtherPath, StorePath}) {
        EXPECT_EQ(store.Open(path), CIniFile::Success);
        EXPECT_EQ(EntriesOf(store), EntriesOf(ContentOf(world, path)));
    }
}

/// The store has nothing to save.
void ExpectClean(StoreWorld& world, const wchar_t* path)
{
    const std::string before = ContentOf(world, path);
    EXPECT_EQ(world.store->Save(false), CIniFile::Success);
    EXPECT_EQ(ContentOf(world, path), before);
}

int MakeAStore()
{
    return SweepAllocations<StoreWorld>(
        [](StoreWorld& world) {
            world.store.reset();
            world.store.emplace(world.pausing, world.codePage, L"C:\\A suite\\SiteKeeper64.exe");
        },
        [](StoreWorld& world, Ending ending) { EXPECT_EQ(world.store.has_value(), ending == Ending::Done); });
}

int LoadAFile()
{
    const Entries whole = EntriesOf(FileText());
    return SweepAllocations<StoreWorld>([](StoreWorld& world) { world.store->Open(StorePath); },
                                        [&whole](StoreWorld& world, Ending ending) {
                                            // All or nothing, and nothing to save.
                                            EXPECT_EQ(EntriesOf(*world.store),
                                                      ending == Ending::Done ? whole : Entries());
                                            ExpectClean(world, StorePath);
                                            EXPECT_EQ(ContentOf(world, StorePath), FileText());
                                            ExpectUsable(world);
                                        });
}

int LoadAnotherFile()
{
    const Entries other = EntriesOf("[New]\nzoe = zoe\nadam = adam\n");
    return SweepAllocations<ChangedStoreWorld>([](ChangedStoreWorld& world) { world.store->Open(OtherPath); },
                                               [&other](ChangedStoreWorld& world, Ending ending) {
                                                   if (ending == Ending::Done) {
                                                       EXPECT_EQ(EntriesOf(*world.store), other);
                                                       ExpectClean(world, OtherPath);
                                                   } else {
                                                       // As it was where the file could not be opened, otherwise empty,
                                                       // with nothing to save.
                                                       Entries left = EntriesOf(*world.store);
                                                       EXPECT_TRUE(left.empty() ||
                                                                   left[L"SiteKeeper"][L"added"] == L"a value");
                                                       if (left.empty()) {
                                                           ExpectClean(world, OtherPath);
                                                       }
                                                   }
                                                   ExpectUsable(world);
                                               });
}

int AddAFile()
{
    static const std::string added = "[New]\nzoe = zoe\n" + FileText();
    Entries whole = EntriesOf(FileText());
    whole[L"New"] = {{L"zoe", L"zoe"}, {L"loose", L"line"}};
    return SweepAllocations<LoadedStoreWorld>(
        [](LoadedStoreWorld& world) {
            TextReader file(added, world.codePage);
            world.store->Parse(file);
        },
        [&whole](LoadedStoreWorld& world, Ending ending) {
            if (ending == Ending::Done) {
                EXPECT_EQ(EntriesOf(*world.store), whole);
            }
            ExpectClean(world, StorePath);
            ExpectUsable(world);
        });
}

/// Runs an edit that is done wholly or not at all; one that is not leaves nothing to save either.
int SweepEdit(const std::function<void(CIniFile&)>& edit)
{
    Entries before;
    Entries after;
    {
        LoadedStoreWorld world;
        before = EntriesOf(*world.store);
        world.store->SetSection(L"SiteKeeper");
        edit(*world.store);
        after = EntriesOf(*world.store);
    }
    return SweepAllocations<LoadedStoreWorld>([&edit](LoadedStoreWorld& world) { edit(*world.store); },
                                              [&](LoadedStoreWorld& world, Ending ending) {
                                                  EXPECT_EQ(EntriesOf(*world.store),
                                                            ending == Ending::Done ? after : before);
                                                  if (ending == Ending::Raised) {
                                                      ExpectClean(world, StorePath);
                                                  }
                                                  ExpectUsable(world);
                                              });
}

const std::wstring LongText(5000, L'x'); // more than what is left of a block

int AddAValue()
{
    return SweepEdit([](CIniFile& store) { store.SetValue(LongText, L"another value"); });
}
int AddASectionsFirstValue()
{
    return SweepEdit([](CIniFile& store) {
        store.SetSection(L"New");
        store.SetValue(LongText, LongText);
    });
}
int ReplaceAValue()
{
    return SweepEdit([](CIniFile& store) { store.SetValue(L"user 1", LongText); });
}
int SetABoolValue()
{
    return SweepEdit([](CIniFile& store) { store.SetBoolValue(L"Administrator", 1); });
}
int DeleteASection()
{
    return SweepEdit([](CIniFile& store) { store.DeleteSection(L"User List"); });
}

int SortEntries()
{
    return SweepEdit([](CIniFile& store) { store.Sort(); });
}

int SetManyValues()
{
    Names keys;
    for (int number = 0; number < 300; ++number) {
        keys.push_back(L"key " + std::to_wstring(number));
    }
    return SweepAllocations<LoadedStoreWorld>(
        [&keys](LoadedStoreWorld& world) { world.store->SetValues(keys, keys); },
        [&keys](LoadedStoreWorld& world, Ending ending) {
            // The first of them are set, the others are not.
            const Entries entries = EntriesOf(*world.store);
            const auto& section = entries.at(L"SiteKeeper");
            const auto isMissing = [&section](const std::wstring& key) { return !section.contains(key); };
            const auto firstMissing = std::find_if(keys.begin(), keys.end(), isMissing);
            EXPECT_TRUE(std::all_of(firstMissing, keys.end(), isMissing));
            EXPECT_TRUE(ending == Ending::Raised || firstMissing == keys.end());
            ExpectUsable(world);
        });
}

int ReadASection()
{
    const Entries whole = EntriesOf(FileText());
    Names keys;
    Names values;
    return SweepAllocations<LoadedStoreWorld>(
        [&](LoadedStoreWorld& world) {
            std::wstring value;
            world.store->GetValue(L"user 1", value, L"");
            world.store->GetSectionEntries(keys, values);
        },
        [&](LoadedStoreWorld& world, Ending ending) {
            EXPECT_TRUE(ending == Ending::Raised || (keys.size() == values.size() && !keys.empty()));
            keys = Names();
            values = Names();
            ExpectClean(world, StorePath);
            EXPECT_EQ(EntriesOf(*world.store), whole);
        });
}

int SaveEntries()
{
    std::string saved;
    {
        ChangedStoreWorld world;
        EXPECT_EQ(world.store->Save(false), CIniFile::Success);
        saved = ContentOf(world, StorePath);
    }
    const Entries entries = EntriesOf(saved);
    return SweepAllocations<ChangedStoreWorld>([](ChangedStoreWorld& world) { world.store->Save(false); },
                                               [&](ChangedStoreWorld& world, Ending ending) {
                                                   EXPECT_EQ(EntriesOf(*world.store), entries);
                                                   const std::string content = ContentOf(world, StorePath);
                                                   EXPECT_TRUE(content == saved || content == FileText());
                                                   EXPECT_TRUE(ending == Ending::Raised || content == saved);
                                                   // What was not saved still is to be.
                                                   EXPECT_EQ(world.store->Save(false), CIniFile::Success);
                                                   EXPECT_EQ(ContentOf(world, StorePath), saved);
                                                   EXPECT_EQ(world.files.Listing().size(), 5U); // no neighbour
                                                   ExpectUsable(world);
                                               });
}

int EndAChangedStore()
{
    std::string saved;
    {
        ChangedStoreWorld world;
        world.store.reset();
        saved = ContentOf(world, StorePath);
    }
    return SweepAllocations<ChangedStoreWorld>([](ChangedStoreWorld& world) { world.store.reset(); },
                                               [&](ChangedStoreWorld& world, Ending ending) {
                                                   EXPECT_EQ(ending, Ending::Done);
                                                   const std::string content = ContentOf(world, StorePath);
                                                   EXPECT_TRUE(content == saved || content == FileText());
                                                   EXPECT_EQ(world.files.Listing().size(), 5U); // no neighbour
                                               });
}

} // namespace

SweptOperations StoreAllocations()
{
    return {{"make a store", MakeAStore},
            {"load a file into a store", LoadAFile},
            {"load another file into a changed store", LoadAnotherFile},
            {"add a file to a store", AddAFile},
            {"add a value", AddAValue},
            {"add a section's first value", AddASectionsFirstValue},
            {"replace a value", ReplaceAValue},
            {"set a Boolean value", SetABoolValue},
            {"set 300 values", SetManyValues},
            {"delete a section", DeleteASection},
            {"sort the entries", SortEntries},
            {"read a value and a section", ReadASection},
            {"save a changed store", SaveEntries},
            {"end a changed store", EndAChangedStore}};
}

} // namespace sitekeeper
