// The operations that are swept through their failure points, as a table that the run prints and the documentation
// keeps.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace sitekeeper {

/// An operation and what runs it with each of its failure points in turn. `sweep` checks what is promised, as tests do,
/// and gives the number of failure points.
struct SweptOperation
{
    const char* name;
    int (*sweep)();
};

using SweptOperations = std::vector<SweptOperation>;

/// The operation's name as part of a test's name: "save a folder" becomes "SaveAFolder".
[[nodiscard]] std::string TestNameOf(const SweptOperation& operation);
void PrintTo(const SweptOperation& operation, std::ostream* out);

/// Sweeps all operations and lays their table out as lines, the last one the sum; `counted` heads the numbers.
[[nodiscard]] std::vector<std::string> SweepIntoTable(const SweptOperations& operations, const std::string& counted);

/// The lines of the table in docs/testing.md whose numbers are headed `counted`; none where there is no such
/// table.
[[nodiscard]] std::vector<std::string> KeptTable(const std::string& counted);

/// Whose numbers a table has: optimisers and compilers take memory at different places, and call the platform at the
/// same ones.
enum class Numbers
{
    OfEachBuild,
    OfTheKeptBuild
};

/// Sweeps all operations, prints their table, and expects that it is the kept one.
/// Another build's numbers are left out where they are its own.
void ExpectTableIsKept(const SweptOperations& operations, const std::string& counted, Numbers numbers);

} // namespace sitekeeper
