#include "autocad/TrustedPathKeys.h"

#include "support/AutoCADTree.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

class TrustedPathKeysTest : public ::testing::Test
{
protected:
    void Find() { FindAutoCADTrustedPathKeys(m_registry, m_keys, m_releases); }

    MemoryRegistry m_registry;
    Texts m_keys{L"from before"};
    Texts m_releases{L"R24", L"and another"};
};

TEST(EnumRegistrySubKeys, GivesTheNamesInTheRegistrysOrder)
{
    MemoryRegistry registry;
    for (const wchar_t* const key : {L"K\\b\\below", L"K\\C", L"K\\a", L"Kx\\other", L"K\\a b"}) {
        registry.AddKey(Hive::LocalMachine, key);
    }
    registry.AddKey(Hive::CurrentUser, L"K\\of the user");
    Texts names{L"from before"};
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"k", names), RegistryStatus::Success);
    EXPECT_EQ(names, (Texts{L"a", L"a b", L"b", L"C"}));
    registry.SetOrder(Hive::LocalMachine, L"K", {L"C", L"a b", L"b", L"a"});
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"K", names), RegistryStatus::Success);
    EXPECT_EQ(names, (Texts{L"C", L"a b", L"b", L"a"}));
}

TEST(EnumRegistrySubKeys, GivesNamesOfAnyLength)
{
    MemoryRegistry registry;
    const Texts expected{std::wstring(1, L'a'), std::wstring(255, L'b'), std::wstring(5000, L'c')};
    for (const std::wstring& name : expected) {
        registry.AddKey(Hive::LocalMachine, L"K\\" + name);
    }
    Texts names;
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"K", names), RegistryStatus::Success);
    EXPECT_EQ(names, expected);
}

TEST(EnumRegistrySubKeys, SucceedsWhereThereAreNone)
{
    MemoryRegistry registry;
    registry.AddKey(Hive::LocalMachine, L"K");
    Texts names{L"from before"};
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"K", names), RegistryStatus::Success);
    EXPECT_EQ(names, Texts{});
}

TEST(EnumRegistrySubKeys, GivesTheStatusOfAnOpeningThatFails)
{
    MemoryRegistry registry;
    Texts names{L"from before"};
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"K", names), RegistryStatus::NotFound);
    EXPECT_EQ(names, Texts{});
    registry.AddKey(Hive::LocalMachine, L"K\\a");
    registry.RefuseReading(Hive::LocalMachine, L"K", KeyAccess::Read);
    names = {L"from before"};
    EXPECT_EQ(EnumRegistrySubKeys(registry, L"K", names), RegistryStatus::AccessDenied);
    EXPECT_EQ(names, Texts{});
}

TEST_F(TrustedPathKeysTest, EmptiesBothListsWithoutAutoCAD)
{
    Find();
    EXPECT_EQ(m_keys, Texts{});
    EXPECT_EQ(m_releases, Texts{});
}

TEST_F(TrustedPathKeysTest, TakesTheReleasesR20ToR24Only)
{
    for (const wchar_t* const release : {L"R18.0", L"R19.1", L"R25.0", L"R2", L"R", L"r24.0", L"XR24", L"R 24", L"R1",
                                         L"R30.0", L"ACAD", L"20.0", L"R\u0662\u0664"}) {
        AddProduct(m_registry, release, L"P", L"C:\\A");
    }
    Find();
    EXPECT_EQ(m_keys, Texts{});
    EXPECT_EQ(m_releases, Texts{});
    for (const wchar_t* const release : {L"R24.3", L"R20.0", L"R21", L"R22.0", L"R23.1", L"R23.0", L"R2400", L"R24x"}) {
        AddProduct(m_registry, release, L"P", L"C:\\A");
    }
    Find();
    EXPECT_EQ(m_keys, (Texts{PathsKey(L"R20.0", L"P"), PathsKey(L"R21", L"P"), PathsKey(L"R22.0", L"P"),
                             PathsKey(L"R23.0", L"P"), PathsKey(L"R23.1", L"P"), PathsKey(L"R24.3", L"P"),
                             PathsKey(L"R2400", L"P"), PathsKey(L"R24x", L"P")}));
    EXPECT_EQ(m_releases, (Texts{L"R20", L"R21", L"R22", L"R23", L"R23", L"R24", L"R24", L"R24"}));
}

TEST_F(TrustedPathKeysTest, LeavesOutAProductWithoutTheSetting)
{
    AddProduct(m_registry, L"R24.0", L"A", L"C:\\A");
    m_registry.AddKey(Hive::LocalMachine, ProductKey(L"R24.0", L"B") + L"\\Variables");
    m_registry.AddKey(Hive::LocalMachine, PathsKey(L"R24.0", L"C"));
    m_registry.SetText(Hive::LocalMachine, PathsKey(L"R24.0", L"D"), L"a named value", L"C:\\A");
    m_registry.SetText(Hive::CurrentUser, PathsKey(L"R24.0", L"E"), L"", L"C:\\A");
    Find();
    EXPECT_EQ(m_keys, Texts{PathsKey(L"R24.0", L"A")});
    EXPECT_EQ(m_releases, Texts{L"R24"});
}

TEST_F(TrustedPathKeysTest, KeepsAnEmptySettingAndLeavesOutOneThatReadsDefault)
{
    AddProduct(m_registry, L"R24.0", L"A", L"");
    AddProduct(m_registry, L"R24.0", L"B", L"DEFAULT");
    AddProduct(m_registry, L"R24.0", L"C", L"Default");
    AddProduct(m_registry, L"R24.0", L"D", L"DEFAULT;");
    m_registry.SetBytes(Hive::LocalMachine, PathsKey(L"R24.0", L"E"), L"", ValueType::Text, {});
    Find();
    EXPECT_EQ(m_keys, (Texts{PathsKey(L"R24.0", L"A"), PathsKey(L"R24.0", L"C"), PathsKey(L"R24.0", L"D"),
                             PathsKey(L"R24.0", L"E")}));
    EXPECT_EQ(m_releases, (Texts{L"R24", L"R24", L"R24", L"R24"}));
}

TEST_F(TrustedPathKeysTest, LeavesOutASettingBeyond2048Bytes)
{
    AddProduct(m_registry, L"R24.0", L"A", std::wstring(1023, L'x')); // and the terminator: 2048 bytes
    AddProduct(m_registry, L"R24.0", L"B", std::wstring(1024, L'x'));
    AddProduct(m_registry, L"R24.0", L"C", L"C:\\A");
    Find();
    EXPECT_EQ(m_keys, (Texts{PathsKey(L"R24.0", L"A"), PathsKey(L"R24.0", L"C")}));
}

TEST_F(TrustedPathKeysTest, KeepsTheOrderOfReleasesAndProducts)
{
    for (const wchar_t* const release : {L"R20.0", L"R22.0"}) {
        for (const wchar_t* const product : {L"A", L"B", L"C"}) {
            AddProduct(m_registry, release, product, L"C:\\A");
        }
        m_registry.SetOrder(Hive::LocalMachine, std::wstring(AutoCADTree) + L"\\" + release, {L"B", L"C", L"A"});
    }
    m_registry.SetOrder(Hive::LocalMachine, AutoCADTree, {L"R22.0", L"R20.0"});
    Find();
    EXPECT_EQ(m_keys, (Texts{PathsKey(L"R22.0", L"B"), PathsKey(L"R22.0", L"C"), PathsKey(L"R22.0", L"A"),
                             PathsKey(L"R20.0", L"B"), PathsKey(L"R20.0", L"C"), PathsKey(L"R20.0", L"A")}));
    EXPECT_EQ(m_releases, (Texts{L"R22", L"R22", L"R22", L"R20", L"R20", L"R20"}));
}

TEST_F(TrustedPathKeysTest, RefillsTheListsAtEveryRun)
{
    AddProduct(m_registry, L"R24.0", L"A", L"C:\\A");
    AddProduct(m_registry, L"R24.0", L"B", L"C:\\A");
    Find();
    Find();
    EXPECT_EQ(m_keys.size(), 2U);
    m_registry.RemoveValue(Hive::LocalMachine, PathsKey(L"R24.0", L"A"), L"");
    Find();
    EXPECT_EQ(m_keys, Texts{PathsKey(L"R24.0", L"B")});
    EXPECT_EQ(m_releases, Texts{L"R24"});
}

TEST_F(TrustedPathKeysTest, LeavesOutWhatCannotBeRead)
{
    AddProduct(m_registry, L"R22.0", L"A", L"C:\\A");
    AddProduct(m_registry, L"R24.0", L"A", L"C:\\A");
    AddProduct(m_registry, L"R24.0", L"B", L"C:\\A");
    m_registry.RefuseReading(Hive::LocalMachine, PathsKey(L"R24.0", L"A"), KeyAccess::QueryValue);
    m_registry.RefuseReading(Hive::LocalMachine, std::wstring(AutoCADTree) + L"\\R22.0", KeyAccess::Read);
    Find();
    EXPECT_EQ(m_keys, Texts{PathsKey(L"R24.0", L"B")});
    m_registry.RefuseReading(Hive::LocalMachine, AutoCADTree, KeyAccess::Read);
    Find();
    EXPECT_EQ(m_keys, Texts{});
    EXPECT_EQ(m_releases, Texts{});
}

} // namespace
} // namespace sitekeeper
