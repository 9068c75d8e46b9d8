// Version resources: found in their bytes, read into the record, and told in the About box.
#include "maindlg/VersionBlock.h"

#include "maindlg/AboutText.h"
#include "maindlg/VersionStrings.h"
#include "support/MemoryRegistry.h"
#include "support/MemoryVersionResources.h"
#include "support/VersionBlockBuilder.h"

#include <gtest/gtest.h>
#include <random>

namespace sitekeeper {
namespace {

using Bytes = std::vector<std::byte>;

/// The resource of a program: fixed information, texts of one language, and the languages it names.
Bytes Program(const std::wstring& language, const Bytes& translation, const std::vector<Bytes>& texts)
{
    return VersionNode(
        L"VS_VERSION_INFO", ValueKind::Binary, Bytes(52, std::byte{7}),
        {VersionNode(L"StringFileInfo", ValueKind::Text, {},
                     {VersionNode(L"00000409", ValueKind::Text, {}, {TextNode(L"FileVersion", L"other")}),
                      VersionNode(language, ValueKind::Text, {}, texts)}),
         VersionNode(L"VarFileInfo", ValueKind::Text, {},
                     {VersionNode(L"Translation", ValueKind::Binary, translation)})});
}

Bytes Usual()
{
    return Program(L"040904b0", Translations({0x0409, 0x04B0, 0x0407, 0x04B0}),
                   {TextNode(L"FileDescription", L"Site Keeper"), TextNode(L"FileVersion", L"5.1.0.0"),
                    TextNode(L"ProductVersion", L"2023.1"), TextNode(L"LegalCopyright", L"\u00A9 ORIVEL"),
                    TextNode(L"Comments", L"")});
}

std::wstring About(const Bytes& block, const std::wstring& update,
                   const std::wstring& path = L"C:\\Suite.d\\Keeper.exe")
{
    MemoryVersionResources resources;
    resources.Set(path, block);
    MemoryRegistry registry;
    registry.SetText(Hive::LocalMachine, L"Software\\ORIVEL\\LX Plus\\2023", L"ProductUpdate", update);
    return BuildAboutText(resources, registry, path);
}

VersionStrings Strings(const Bytes& block)
{
    MemoryVersionResources resources;
    resources.Set(L"C:\\a.exe", block);
    VersionStrings strings;
    strings[VersionString::SpecialBuild] = L"from before";
    ReadVersionStrings(resources, strings, L"C:\\a", L".exe");
    return strings;
}

TEST(VersionBlock, FindsNodesByTheirNames)
{
    const Bytes bytes = Usual();
    const VersionBlock block(bytes);
    EXPECT_EQ(block.Query(L"\\").value().size(), 52U);
    EXPECT_EQ(block.Query(L"\\VarFileInfo\\Translation").value().size(), 8U);
    EXPECT_EQ(DecodeUtf16(block.Query(L"\\StringFileInfo\\040904b0\\FileVersion").value()), L"5.1.0.0");
    EXPECT_EQ(DecodeUtf16(block.Query(L"\\STRINGFILEINFO\\040904B0\\fileversion").value()), L"5.1.0.0");
    EXPECT_EQ(DecodeUtf16(block.Query(L"\\StringFileInfo\\00000409\\FileVersion").value()), L"other");
    EXPECT_TRUE(block.Query(L"\\StringFileInfo").value().empty());
    for (const wchar_t* const missing : {L"\\FileVersion", L"\\StringFileInfo\\040904b0\\FileVersio",
                                         L"\\StringFileInfo\\040904b0\\FileVersion\\x", L"\\VS_VERSION_INFO"}) {
        EXPECT_FALSE(block.Query(missing)) << testing::PrintToString(missing);
    }
    EXPECT_FALSE(VersionBlock({}).Query(L"\\"));
}

TEST(VersionStrings, AreThoseOfTheFirstLanguage)
{
    const VersionStrings strings = Strings(Usual());
    EXPECT_EQ(strings[VersionString::FileDescription], L"Site Keeper");
    EXPECT_EQ(strings[VersionString::FileVersion], L"5.1.0.0");
    EXPECT_EQ(strings[VersionString::LegalCopyright], L"\u00A9 ORIVEL");
    EXPECT_EQ(strings[VersionString::Comments], L"");
    EXPECT_EQ(strings[VersionString::SpecialBuild], L"");
}

TEST(VersionStrings, FallBackWhereNoLanguageIsNamed)
{
    const std::vector<Bytes> texts = {TextNode(L"FileVersion", L"found")};
    EXPECT_EQ(Strings(Program(L"000004e4", {}, texts))[VersionString::FileVersion], L"found");
    EXPECT_EQ(Strings(Program(L"000204e4", Translations({0x0409}), texts))[VersionString::FileVersion], L"found");
    EXPECT_EQ(Strings(Program(L"040904e4", {}, texts))[VersionString::FileVersion], L"");
    const Bytes withoutNames = VersionNode(
        L"VS_VERSION_INFO", ValueKind::Binary, Bytes(52),
        {VersionNode(L"StringFileInfo", ValueKind::Text, {}, {VersionNode(L"000004e4", ValueKind::Text, {}, texts)})});
    EXPECT_EQ(Strings(withoutNames)[VersionString::FileVersion], L"found");
}

TEST(VersionStrings, AreEmptyWithoutAResource)
{
    EXPECT_EQ(Strings({}), VersionStrings());
    EXPECT_EQ(Strings(Bytes(5, std::byte{0xFF})), VersionStrings());
}

TEST(VersionStrings, StayWithinTheBytesWhateverTheirLengthsSay)
{
    std::mt19937 random(20240506);
    const Bytes usual = Usual();
    for (int round = 0; round < 20'000; ++round) {
        Bytes damaged(usual.begin(), usual.begin() + static_cast<std::ptrdiff_t>(random() % (usual.size() + 1)));
        for (int change = 0; change < 3 && !damaged.empty(); ++change) {
            damaged[random() % damaged.size()] = static_cast<std::byte>(random());
        }
        damaged.shrink_to_fit(); // so that the sanitizer sees a step outside
        static_cast<void>(Strings(damaged));
    }
}

TEST(AboutText, TellsProgramSuiteAndCopyright)
{
    EXPECT_EQ(About(Usual(), L"3"),
              L"Site Keeper Version 5.1.0.0\n\nORIVEL LX Version 2023.1    Update 3\n\n\u00A9 ORIVEL");
    EXPECT_EQ(About(Usual(), L""), L"Site Keeper Version 5.1.0.0\n\nORIVEL LX Version 2023.1\n\n\u00A9 ORIVEL");
    EXPECT_EQ(About({}, L"3"), L" Version \n\nORIVEL LX Version 2023    Update 3\n\n");
    for (const wchar_t* const path :
         {L"Keeper.exe", L"Keeper", L"C:\\Suite.d\\Keeper", L"C:\\a.b.exe", L".exe", L"C:\\"}) {
        EXPECT_TRUE(About(Usual(), L"", path).starts_with(L"Site Keeper")) << testing::PrintToString(path);
    }
}

} // namespace
} // namespace sitekeeper
