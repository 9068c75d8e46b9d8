// Trees of AutoCAD products made at random: what the rules find and write, against a second walk that goes character by
// character over the plan from which the tree was made.
#include "autocad/TrustedPaths.h"
#include "platform/PlatformError.h"
#include "settings/RegistryText.h"
#include "support/AutoCADTree.h"
#include "support/NaiveTrustedPaths.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <random>

namespace sitekeeper {
namespace {

using Texts = std::vector<std::wstring>;

struct PlannedProduct
{
    std::wstring release;
    std::wstring name;
    std::optional<std::wstring> paths;
};

/// The products in the order in which the registry is to enumerate them.
using Plan = std::vector<PlannedProduct>;

constexpr const wchar_t* Application = L"S";

class PlanMaker
{
public:
    explicit PlanMaker(unsigned seed) : m_random(seed) {}

    Plan Make()
    {
        Plan plan;
        Texts releases{L"R19.1", L"R20.0", L"R21", L"R22.5", L"R23.0", L"R23.1", L"R24.3", L"R25.0", L"R2", L"r24.0"};
        std::shuffle(releases.begin(), releases.end(), m_random);
        releases.resize(Below(4));
        for (const std::wstring& release : releases) {
            Texts names{L"a", L"B", L"c d", L"ACAD-1001:409"};
            std::shuffle(names.begin(), names.end(), m_random);
            names.resize(Below(4));
            for (const std::wstring& name : names) {
                plan.push_back({release, name, Paths(release.substr(0, 3))});
            }
        }
        return plan;
    }

private:
    std::size_t Below(std::size_t count) { return m_random() % count; }

    std::optional<std::wstring> Paths(const std::wstring& prefix)
    {
        switch (Below(9)) {
        case 0: return std::nullopt;
        case 1: return L"DEFAULT";
        case 2: return std::wstring(1022 + Below(4), L';');
        default: break;
        }
        std::wstring paths;
        for (std::size_t left = Below(6); left > 0; --left) {
            const std::wstring pieces[] = {L"",
                                           L"C:\\A",
                                           L"S\\Designer\\common\\" + prefix,
                                           L"s\\DESIGNER\\common\\" + prefix,
                                           L";",
                                           L"S\\Designer\\common\\R2",
                                           L"S\\Designer\\pid\\" + prefix,
                                           L";;;;;;;;;;;;;;;;;;;;;;;;"};
            paths += pieces[Below(std::size(pieces))];
            paths += Below(4) == 0 ? L"" : L";";
        }
        return paths;
    }

    std::minstd_rand m_random;
};

void Plant(MemoryRegistry& registry, const Plan& plan)
{
    registry.SetText(Hive::LocalMachine, InstallationKey, L"Application Path", Application);
    Texts releases;
    for (const PlannedProduct& product : plan) {
        if (releases.empty() || releases.back() != product.release) {
            releases.push_back(product.release);
        }
        registry.AddKey(Hive::LocalMachine, ProductKey(product.release, product.name));
        if (product.paths) {
            AddProduct(registry, product.release, product.name, *product.paths);
        }
    }
    registry.SetOrder(Hive::LocalMachine, AutoCADTree, releases);
    for (const std::wstring& release : releases) {
        Texts names;
        for (const PlannedProduct& product : plan) {
            if (product.release == release) {
                names.push_back(product.name);
            }
        }
        registry.SetOrder(Hive::LocalMachine, std::wstring(AutoCADTree) + L"\\" + release, names);
    }
}

/// The second walk: leaves in `counted` the products that count, with what they hold afterwards. False when it ended
/// with the error.
bool NaiveRun(const Plan& plan, Plan& counted)
{
    for (const PlannedProduct& product : plan) {
        const std::wstring& r = product.release;
        const bool isKnown = r.size() >= 3 && r[0] == L'R' && r[1] == L'2' && r[2] >= L'0' && r[2] <= L'4';
        if (isKnown && product.paths && product.paths->size() < 1024 && *product.paths != L"DEFAULT") {
            counted.push_back(product);
        }
    }
    NaiveTrustedPaths search;
    for (PlannedProduct& product : counted) {
        if (search.HasEnded()) {
            return false;
        }
        std::wstring& paths = *product.paths;
        if (!search.Holds(paths, L"s\\designer\\common\\r" + product.release.substr(1, 2))) {
            paths += paths.empty() || paths[paths.size() - 1] == L';' ? L"" : L";";
            paths += FiveFolders(Application, product.release.substr(0, 3));
        }
    }
    return true;
}

struct Tally
{
    int refused = 0;
    int untouched = 0;
    int several = 0;
};

void CheckOne(unsigned seed, Tally& tally)
{
    const Plan plan = PlanMaker(seed).Make();
    MemoryRegistry registry;
    Plant(registry, plan);
    Plan counted;
    const bool isDone = NaiveRun(plan, counted);
    MemoryRegistry expected;
    Plant(expected, plan);
    Texts keys;
    Texts releases;
    for (const PlannedProduct& product : counted) {
        AddProduct(expected, product.release, product.name, *product.paths);
        keys.push_back(PathsKey(product.release, product.name));
        releases.push_back(product.release.substr(0, 3));
    }
    const auto before = registry.Listing();
    Texts foundKeys;
    Texts foundReleases;
    bool hasRaised = false;
    try {
        AddTrustedPaths(registry, foundKeys, foundReleases);
    } catch (const PlatformError&) {
        hasRaised = true;
    }
    ASSERT_EQ(hasRaised, !isDone);
    ASSERT_EQ(foundKeys, keys);
    ASSERT_EQ(foundReleases, releases);
    ASSERT_EQ(registry.Listing(), expected.Listing());
    tally.refused += hasRaised ? 1 : 0;
    tally.untouched += !keys.empty() && registry.Listing() == before ? 1 : 0;
    tally.several += keys.size() > 1 && !hasRaised ? 1 : 0;
}

TEST(RandomTrustedPathsTest, FindsAndWritesWhatTheNaiveWalkDoes)
{
    constexpr unsigned Trees = 1'500;
    Tally tally;
    for (unsigned seed = 1; seed <= Trees; ++seed) {
        ASSERT_NO_FATAL_FAILURE(CheckOne(seed, tally)) << "tree " << seed;
    }
    // The trees reach all that can happen.
    EXPECT_GT(tally.refused, 50);
    EXPECT_GT(tally.untouched, 50);
    EXPECT_GT(tally.several, 50);
}

} // namespace
} // namespace sitekeeper
