#include "contract/World.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

const std::wstring Name = L"SITEKEEPER_CONTRACT_TEST";

class EnvironmentContract : public ::testing::Test
{
protected:
    void TearDown() override { world->RemoveVariable(Name); }

    std::unique_ptr<World> world = MakeWorld();
    Environment& environment = world->TheEnvironment();
};

TEST_F(EnvironmentContract, HasNothingForAVariableThatIsNotSet)
{
    EXPECT_EQ(environment.Variable(Name), std::nullopt);
    EXPECT_EQ(environment.Variable(L""), std::nullopt);
}

TEST_F(EnvironmentContract, HasTheTextOfAVariable)
{
    for (const std::wstring& text : {std::wstring(L"x"), std::wstring(L" a=b;c "), std::wstring(L"M\u00FCller \u0416"),
                                     std::wstring(259, L'y'), std::wstring(5000, L'z')}) {
        world->SetVariable(Name, text);
        EXPECT_EQ(environment.Variable(Name), text);
    }
}

TEST_F(EnvironmentContract, SeesEachChange)
{
    world->SetVariable(Name, L"first");
    EXPECT_EQ(environment.Variable(Name), L"first");
    world->SetVariable(Name, L"second");
    EXPECT_EQ(environment.Variable(Name), L"second");
    world->RemoveVariable(Name);
    EXPECT_EQ(environment.Variable(Name), std::nullopt);
}

TEST_F(EnvironmentContract, ComparesNamesWithoutRegardToCase)
{
    world->SetVariable(Name, L"text");
    EXPECT_EQ(environment.Variable(L"SiteKeeper_Contract_Test"), L"text");
}

} // namespace
} // namespace sitekeeper
