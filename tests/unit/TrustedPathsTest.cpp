#include "autocad/TrustedPaths.h"

#include "platform/PlatformError.h"
#include "settings/RegistryText.h"
#include "support/AutoCADTree.h"
#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

constexpr const wchar_t* Suite = L"C:\\Program Files\\Suite";

class TrustedPathsTest : public ::testing::Test
{
protected:
    TrustedPathsTest() { m_registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", Suite); }

    /// Runs the rule; the error's sentence, or "done".
    std::wstring Add()
    {
        try {
            AddTrustedPaths(m_registry, m_keys, m_releases);
        } catch (const PlatformError& error) {
            EXPECT_EQ(error.Code(), ResultCode::InvalidArgument);
            return error.Message();
        }
        return L"done";
    }

    [[nodiscard]] std::wstring Paths(const std::wstring& release, const std::wstring& product) const
    {
        return FindRegistryText(m_registry, Hive::LocalMachine, PathsKey(release, product), L"", KeyAccess::QueryValue)
            .value_or(L"(none)");
    }

    static bool Has(const std::wstring& text, const std::wstring& part)
    {
        return text.find(part) != std::wstring::npos;
    }

    MemoryRegistry m_registry;
    std::vector<std::wstring> m_keys;
    std::vector<std::wstring> m_releases;
};

TEST_F(TrustedPathsTest, AppendsTheFiveFoldersInTheirOrder)
{
    AddProduct(m_registry, L"R24.0", L"ProductA", L"");
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"ProductA"), L"C:\\Program Files\\Suite\\Designer\\common\\R24;"
                                            L"C:\\Program Files\\Suite\\Designer\\electric\\R24;"
                                            L"C:\\Program Files\\Suite\\Designer\\pid\\R24;"
                                            L"C:\\Program Files\\Suite\\Designer\\isometric\\R24;"
                                            L"C:\\Program Files\\Suite\\Designer\\ortho\\R24;");
    EXPECT_EQ(m_registry.Find(Hive::LocalMachine, PathsKey(L"R24.0", L"ProductA"), L"")->type, ValueType::Text);
    EXPECT_EQ(m_keys, std::vector<std::wstring>{PathsKey(L"R24.0", L"ProductA")});
    EXPECT_EQ(m_releases, std::vector<std::wstring>{L"R24"});
}

TEST_F(TrustedPathsTest, PutsASeparatorBehindWhatIsThereUnlessThereIsOne)
{
    const struct
    {
        const wchar_t* before;
        const wchar_t* kept;
    } rows[] = {
        {L"C:\\A", L"C:\\A;"},
        {L"C:\\A;", L"C:\\A;"},
        {L"C:\\A;;C:\\B", L"C:\\A;;C:\\B;"},
        {L";", L";"},
        {L" ", L" ;"},
        {L"C:\\Program Files\\Suite\\Designer\\electric\\R24;", L"C:\\Program Files\\Suite\\Designer\\electric\\R24;"},
        {L"C:\\Program Files\\Suite\\Designer\\common\\R2", L"C:\\Program Files\\Suite\\Designer\\common\\R2;"},
        {L"C:\\Program Files\\Suite\\Designer\\common\\R24\\...",
         L"C:\\Program Files\\Suite\\Designer\\common\\R24\\...;"},
        {L" C:\\Program Files\\Suite\\Designer\\common\\R24", L" C:\\Program Files\\Suite\\Designer\\common\\R24;"},
        {L"C:\\Program Files\\Suite\\Designer\\common\\R23;", L"C:\\Program Files\\Suite\\Designer\\common\\R23;"},
    };
    for (const auto& row : rows) {
        AddProduct(m_registry, L"R24.0", L"P", row.before);
        EXPECT_EQ(Add(), L"done");
        EXPECT_EQ(Paths(L"R24.0", L"P"), row.kept + FiveFolders(Suite, L"R24")) << row.before;
    }
}

TEST_F(TrustedPathsTest, LeavesAProductUntouchedThatHoldsTheFirstFolder)
{
    for (const wchar_t* const paths :
         {L"C:\\Program Files\\Suite\\Designer\\common\\R24", L"C:\\PROGRAM FILES\\suite\\designer\\COMMON\\r24;C:\\B",
          L"C:\\A;C:\\program files\\Suite\\Designer\\Common\\R24",
          L";;C:\\Program Files\\Suite\\Designer\\common\\R24;;"}) {
        AddProduct(m_registry, L"R24.0", L"P", paths);
        const auto before = m_registry.Listing();
        EXPECT_EQ(Add(), L"done");
        EXPECT_EQ(m_registry.Listing(), before) << paths;
    }
}

TEST_F(TrustedPathsTest, WritesASecondTimeNothing)
{
    AddProduct(m_registry, L"R21.0", L"P", L"C:\\A");
    EXPECT_EQ(Add(), L"done");
    const auto once = m_registry.Listing();
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(m_registry.Listing(), once);
}

TEST_F(TrustedPathsTest, WritesATextWhateverTypeStoodThere)
{
    m_registry.SetNumber(Hive::LocalMachine, PathsKey(L"R20.1", L"P"), L"", 0x00410042);
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R20.1", L"P"), L"BA;" + FiveFolders(Suite, L"R20"));
    EXPECT_EQ(m_registry.Find(Hive::LocalMachine, PathsKey(L"R20.1", L"P"), L"")->type, ValueType::Text);
}

TEST_F(TrustedPathsTest, DoesNothingWithoutAProduct)
{
    AddProduct(m_registry, L"R19.1", L"P", L"C:\\A");
    const auto before = m_registry.Listing();
    m_keys = {L"from before"};
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(m_registry.Listing(), before);
    EXPECT_TRUE(m_keys.empty());
}

TEST_F(TrustedPathsTest, TakesTheRootForAMissingApplicationPath)
{
    m_registry.RemoveValue(Hive::LocalMachine, InstallationKey, L"Application Path");
    AddProduct(m_registry, L"R24.0", L"P", L"C:\\A");
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"P"), L"C:\\A;" + FiveFolders(L"", L"R24"));
}

TEST_F(TrustedPathsTest, KeepsADoubledBackslash)
{
    m_registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", L"D:\\S\\");
    AddProduct(m_registry, L"R24.0", L"P", L"");
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"P"), FiveFolders(L"D:\\S\\", L"R24"));
}

TEST_F(TrustedPathsTest, DoesNotLookAtTheResultOfAWrite)
{
    AddProduct(m_registry, L"R24.0", L"P", L"C:\\A");
    m_registry.RefuseWriting(Hive::LocalMachine, PathsKey(L"R24.0", L"P"));
    const auto before = m_registry.Listing();
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(m_registry.Listing(), before);
}

// --- the position that is carried over ------------------------------------------------------------------------------

TEST_F(TrustedPathsTest, WritesTheFirstOfTwoProductsAndRefusesTheSecond)
{
    AddProduct(m_registry, L"R23.0", L"A", L"C:\\A");
    AddProduct(m_registry, L"R24.0", L"B", L"C:\\B");
    const std::wstring message = Add();
    EXPECT_TRUE(Has(message, L"HKEY_LOCAL_MACHINE\\" + PathsKey(L"R24.0", L"B"))) << message;
    EXPECT_TRUE(Has(message, L"The products before it, 1 in number, are done, and what was written for them stays."))
        << message;
    EXPECT_EQ(Paths(L"R23.0", L"A"), L"C:\\A;" + FiveFolders(Suite, L"R23"));
    EXPECT_EQ(Paths(L"R24.0", L"B"), L"C:\\B");
}

// As the help tells those who send the command again.
TEST_F(TrustedPathsTest, WritesTheSecondProductWhenItComesAgainAndDoublesItAfterThat)
{
    AddProduct(m_registry, L"R24.0", L"A", L"");
    AddProduct(m_registry, L"R24.0", L"B", L"");
    const std::wstring folders = FiveFolders(Suite, L"R24");
    EXPECT_NE(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"B"), L"");
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"B"), folders);
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"B"), folders + folders);
    EXPECT_EQ(Paths(L"R24.0", L"A"), folders);
}

TEST_F(TrustedPathsTest, RefusesTheSecondAlsoWhereItHoldsTheFolder)
{
    AddProduct(m_registry, L"R24.0", L"A", L"");
    AddProduct(m_registry, L"R24.0", L"B", FiveFolders(Suite, L"R24"));
    EXPECT_NE(Add(), L"done");
    EXPECT_EQ(Paths(L"R24.0", L"A"), FiveFolders(Suite, L"R24"));
    EXPECT_EQ(Paths(L"R24.0", L"B"), FiveFolders(Suite, L"R24"));
}

TEST_F(TrustedPathsTest, CarriesTheOffsetOverBehindAMatch)
{
    const std::wstring folder = std::wstring(Suite) + L"\\Designer\\common\\R24";
    const std::size_t stop = (L"C:\\A;" + folder + L";").size();
    AddProduct(m_registry, L"R24.0", L"A", L"C:\\A;" + folder + L";C:\\Z");
    // The folder begins exactly where the search stopped, one before it, or is wholly before it.
    const struct
    {
        std::wstring paths;
        bool isFound = false;
    } rows[] = {
        {std::wstring(stop, L';') + folder, true},
        {std::wstring(stop - 1, L'x') + L";" + folder, true},
        {std::wstring(stop - 1, L';') + folder, false},
        {folder + L";" + std::wstring(200, L'x'), false},
        {folder, false},
        {L"", false},
    };
    for (const auto& row : rows) {
        AddProduct(m_registry, L"R24.0", L"B", row.paths);
        EXPECT_EQ(Add(), L"done") << row.paths;
        const bool hasEnd = row.paths.empty() || row.paths.ends_with(L';');
        EXPECT_EQ(Paths(L"R24.0", L"B"),
                  row.isFound ? row.paths : row.paths + (hasEnd ? L"" : L";") + FiveFolders(Suite, L"R24"))
            << row.paths;
    }
}

TEST_F(TrustedPathsTest, StopsOneBehindAMatchAtTheEndOfTheText)
{
    const std::wstring folder = std::wstring(Suite) + L"\\Designer\\common\\R24";
    AddProduct(m_registry, L"R24.0", L"A", folder);
    AddProduct(m_registry, L"R24.0", L"B", std::wstring(folder.size() + 1, L'x') + folder);
    const auto before = m_registry.Listing();
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(m_registry.Listing(), before);
}

TEST_F(TrustedPathsTest, GoesThroughProductsThatAllMatch)
{
    const std::wstring folder = std::wstring(Suite) + L"\\Designer\\common\\R24;";
    std::wstring paths;
    for (const wchar_t* const product : {L"A", L"B", L"C", L"D"}) {
        AddProduct(m_registry, L"R24.0", product, paths += folder);
    }
    const auto before = m_registry.Listing();
    EXPECT_EQ(Add(), L"done");
    EXPECT_EQ(m_registry.Listing(), before);
}

TEST_F(TrustedPathsTest, CountsTheProductsThatAreDone)
{
    const std::wstring folder = std::wstring(Suite) + L"\\Designer\\common\\R24;";
    AddProduct(m_registry, L"R24.0", L"A", folder);
    AddProduct(m_registry, L"R24.0", L"B", L"");
    AddProduct(m_registry, L"R24.0", L"C", L"");
    AddProduct(m_registry, L"R24.0", L"D", L"");
    const std::wstring message = Add();
    EXPECT_TRUE(Has(message, L"The products before it, 2 in number")) << message;
    EXPECT_TRUE(Has(message, PathsKey(L"R24.0", L"C"))) << message;
    EXPECT_EQ(Paths(L"R24.0", L"B"), FiveFolders(Suite, L"R24"));
    EXPECT_EQ(Paths(L"R24.0", L"D"), L"");
}

TEST_F(TrustedPathsTest, RefusesAProductWhoseReleaseIsMissing)
{
    AddProduct(m_registry, L"R24.0", L"A", L"");
    const std::vector<std::wstring> keys{PathsKey(L"R24.0", L"A"), PathsKey(L"R24.0", L"B")};
    try {
        ExtendTrustedPaths(m_registry, L"D:\\S\\Designer", keys, {L"R24"});
        ADD_FAILURE() << "no error";
    } catch (const PlatformError& error) {
        EXPECT_EQ(error.Code(), ResultCode::InvalidArgument);
        EXPECT_TRUE(Has(error.Message(), PathsKey(L"R24.0", L"B"))) << error.Message();
    }
    EXPECT_EQ(Paths(L"R24.0", L"A"), FiveFolders(L"D:\\S", L"R24"));
    EXPECT_EQ(Paths(L"R24.0", L"B"), L"(none)");
}

TEST_F(TrustedPathsTest, TakesAValueThatHasGoneForAnEmptyOne)
{
    ExtendTrustedPaths(m_registry, L"D:\\S\\Designer", {PathsKey(L"R24.0", L"Gone")}, {L"R24"});
    EXPECT_EQ(Paths(L"R24.0", L"Gone"), FiveFolders(L"D:\\S", L"R24"));
}

// --- many products --------------------------------------------------------------------------------------------------

class ManyProductsTest : public TrustedPathsTest
{
protected:
    static constexpr int Products = 200;

    ManyProductsTest()
    {
        for (int number = 0; number < Products; ++number) {
            AddProduct(m_registry, Release(number), Product(number), L"");
            m_expected.push_back(PathsKey(Release(number), Product(number)));
        }
    }

    static std::wstring Release(int number) { return L"R2" + std::to_wstring(number * 5 / Products) + L".0"; }
    static std::wstring Product(int number) { return L"P" + std::to_wstring(1000 + number); }

    std::vector<std::wstring> m_expected;
};

TEST_F(ManyProductsTest, FindsTwoHundredAndWritesTheFirst)
{
    EXPECT_NE(Add(), L"done");
    EXPECT_EQ(m_keys, m_expected);
    EXPECT_EQ(Paths(Release(0), Product(0)), FiveFolders(Suite, L"R20"));
    for (int number = 1; number < Products; ++number) {
        ASSERT_EQ(Paths(Release(number), Product(number)), L"") << number;
    }
}

TEST_F(ManyProductsTest, FollowsTheOffsetAsLongAsTheFoldersStandBehindIt)
{
    constexpr int Matching = 30;
    m_registry.RemoveValue(Hive::LocalMachine, InstallationKey, L"Application Path");
    const std::wstring folder = L"\\Designer\\common\\R20";
    std::wstring paths;
    for (int number = 0; number < Matching; ++number) {
        paths += number == 0 ? L"" : std::wstring(folder.size() + 1, L';');
        AddProduct(m_registry, Release(number), Product(number), paths + folder);
    }
    const std::wstring message = Add();
    EXPECT_TRUE(Has(message, PathsKey(Release(Matching + 1), Product(Matching + 1)))) << message;
    EXPECT_TRUE(Has(message, L", " + std::to_wstring(Matching + 1) + L" in number")) << message;
    EXPECT_EQ(Paths(Release(0), Product(0)), folder);
    EXPECT_EQ(Paths(Release(Matching), Product(Matching)), FiveFolders(L"", L"R20")) << "nothing stands so far behind";
    EXPECT_EQ(Paths(Release(Matching + 1), Product(Matching + 1)), L"");
}

} // namespace
} // namespace sitekeeper
