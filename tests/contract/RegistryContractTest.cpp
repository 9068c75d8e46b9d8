#include "contract/World.h"

#include <gtest/gtest.h>
#include <vector>

namespace sitekeeper {
namespace {

using Bytes = std::vector<std::byte>;

const std::wstring Scratch = ScratchKey;

Bytes Counted(std::size_t size)
{
    Bytes bytes(size);
    for (std::size_t index = 0; index < size; ++index) {
        bytes[index] = static_cast<std::byte>(index % 251 + 1);
    }
    return bytes;
}

class RegistryContract : public ::testing::TestWithParam<Hive>
{
protected:
    [[nodiscard]] std::optional<Bytes> Read(const std::wstring& key, const std::wstring& name,
                                            std::size_t limit = 4096) const
    {
        return registry.ReadValue(GetParam(), key, name, KeyAccess::QueryValue, limit);
    }
    bool Write(const std::wstring& key, const std::wstring& name, const Bytes& bytes, std::uint32_t type = 3)
    {
        return registry.WriteValue(GetParam(), key, name, static_cast<ValueType>(type), bytes);
    }

    std::unique_ptr<World> world = MakeWorld();
    Registry& registry = world->TheRegistry();
};

std::string NameOf(const ::testing::TestParamInfo<Hive>& hive)
{
    return hive.param == Hive::LocalMachine ? "LocalMachine" : "CurrentUser";
}

INSTANTIATE_TEST_SUITE_P(Both, RegistryContract, ::testing::Values(Hive::LocalMachine, Hive::CurrentUser), NameOf);

TEST_P(RegistryContract, ReadsNothingWhereKeyOrValueIsMissing)
{
    EXPECT_EQ(Read(Scratch, L"Value"), std::nullopt);
    EXPECT_EQ(Read(Scratch + L"\\A\\B", L"Value"), std::nullopt);
    ASSERT_TRUE(Write(Scratch, L"Other", Counted(4)));
    EXPECT_EQ(Read(Scratch, L"Value"), std::nullopt);
    EXPECT_EQ(Read(Scratch, L""), std::nullopt);
}

TEST_P(RegistryContract, ReadsBackTheBytesOfAnyType)
{
    for (const std::uint32_t type : {0U, 3U, 4U, 5U, 8U, 11U}) {
        for (const std::size_t size : {0U, 1U, 2U, 3U, 4U, 5U, 8U, 2047U, 2048U}) {
            ASSERT_TRUE(Write(Scratch, L"Value", Counted(size), type)) << type << ", " << size;
            EXPECT_EQ(Read(Scratch, L"Value"), Counted(size)) << type << ", " << size;
        }
    }
}

// Texts are written with their terminator here, as the program does. Where it is missing the system looks behind the
// bytes it was given for one.
TEST_P(RegistryContract, ReadsBackTextsAsTheyWereWritten)
{
    for (const std::uint32_t type : {1U, 2U, 7U}) {
        for (const std::size_t size : {2U, 4U, 6U, 2046U, 2048U}) {
            Bytes text = Counted(size);
            text[size - 2] = text[size - 1] = std::byte{0};
            ASSERT_TRUE(Write(Scratch, L"Value", text, type)) << type << ", " << size;
            EXPECT_EQ(Read(Scratch, L"Value"), text) << type << ", " << size;
        }
    }
    const Bytes terminatedTwice{std::byte{0x41}, std::byte{0}, std::byte{0}, std::byte{0}, std::byte{0}, std::byte{0}};
    ASSERT_TRUE(Write(Scratch, L"Value", terminatedTwice, 1));
    EXPECT_EQ(Read(Scratch, L"Value"), terminatedTwice);
}

TEST_P(RegistryContract, ReadsNothingLongerThanTheLimit)
{
    ASSERT_TRUE(Write(Scratch, L"Value", Counted(8)));
    EXPECT_EQ(Read(Scratch, L"Value", 9), Counted(8));
    EXPECT_EQ(Read(Scratch, L"Value", 8), Counted(8));
    EXPECT_EQ(Read(Scratch, L"Value", 7), std::nullopt);
    EXPECT_EQ(Read(Scratch, L"Value", 1), std::nullopt);
    EXPECT_EQ(Read(Scratch, L"Value", 0), std::nullopt);
    ASSERT_TRUE(Write(Scratch, L"Value", {}));
    EXPECT_EQ(Read(Scratch, L"Value", 0), Bytes{});
    Bytes text(2050, std::byte{0x20});
    text[2048] = text[2049] = std::byte{0};
    ASSERT_TRUE(Write(Scratch, L"Value", text, 1));
    EXPECT_EQ(Read(Scratch, L"Value", 2048), std::nullopt);
    EXPECT_EQ(Read(Scratch, L"Value", 2050), text);
}

TEST_P(RegistryContract, ReplacesAnOlderValueOfAnyType)
{
    ASSERT_TRUE(Write(Scratch, L"Value", Counted(100), 1));
    ASSERT_TRUE(Write(Scratch, L"Value", Counted(4), 4));
    EXPECT_EQ(Read(Scratch, L"Value"), Counted(4));
}

TEST_P(RegistryContract, ComparesNamesWithoutRegardToCase)
{
    ASSERT_TRUE(Write(Scratch + L"\\Sub", L"Value", Counted(4)));
    EXPECT_EQ(Read(L"SOFTWARE\\orivel\\CONTRACTTEST\\sub", L"vALUE"), Counted(4));
    ASSERT_TRUE(Write(Scratch + L"\\SUB", L"VALUE", Counted(5)));
    EXPECT_EQ(Read(Scratch + L"\\Sub", L"Value"), Counted(5));
}

TEST_P(RegistryContract, MakesAllKeysThatAreMissing)
{
    ASSERT_TRUE(Write(Scratch + L"\\A\\B\\C", L"Value", Counted(4)));
    EXPECT_EQ(Read(Scratch + L"\\A\\B\\C", L"Value"), Counted(4));
    EXPECT_EQ(Read(Scratch + L"\\A\\B", L"Value"), std::nullopt);
}

TEST_P(RegistryContract, KeepsTheUnnamedValueToo)
{
    ASSERT_TRUE(Write(Scratch, L"", Counted(4)));
    EXPECT_EQ(Read(Scratch, L""), Counted(4));
}

TEST_P(RegistryContract, ReadsWithEitherAccess)
{
    ASSERT_TRUE(Write(Scratch, L"Value", Counted(4)));
    EXPECT_EQ(registry.ReadValue(GetParam(), Scratch, L"Value", KeyAccess::Read, 4), Counted(4));
}

TEST_P(RegistryContract, KeepsTheHivesApart)
{
    ASSERT_TRUE(Write(Scratch, L"Value", Counted(4)));
    const Hive other = GetParam() == Hive::LocalMachine ? Hive::CurrentUser : Hive::LocalMachine;
    EXPECT_EQ(registry.ReadValue(other, Scratch, L"Value", KeyAccess::Read, 4), std::nullopt);
}

} // namespace
} // namespace sitekeeper
