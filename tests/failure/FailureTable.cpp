#include "FailureTable.h"

#include <cctype>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>

namespace sitekeeper {
namespace {

std::string HeadingOf(const std::string& counted)
{
    return "| operation | " + counted + " |";
}

std::vector<std::string> WithoutNumbers(std::vector<std::string> table)
{
    for (std::string& line : table) {
        line.erase(line.find('|', 1));
    }
    return table;
}

} // namespace

std::string TestNameOf(const SweptOperation& operation)
{
    std::string name;
    bool isFirst = true; // of a word
    for (const char character : std::string(operation.name)) {
        const auto letter = static_cast<unsigned char>(character);
        if (std::isalnum(letter) != 0) {
            name += static_cast<char>(isFirst ? std::toupper(letter) : letter);
        }
        isFirst = std::isalnum(letter) == 0;
    }
    return name;
}

void PrintTo(const SweptOperation& operation, std::ostream* out)
{
    *out << TestNameOf(operation);
}

std::vector<std::string> SweepIntoTable(const SweptOperations& operations, const std::string& counted)
{
    std::vector<std::string> lines{HeadingOf(counted), "|---|---:|"};
    int sum = 0;
    for (const SweptOperation& operation : operations) {
        SCOPED_TRACE(operation.name);
        const int points = operation.sweep();
        lines.push_back("| " + std::string(operation.name) + " | " + std::to_string(points) + " |");
        sum += points;
    }
    lines.push_back("| all " + std::to_string(operations.size()) + " | " + std::to_string(sum) + " |");
    return lines;
}

std::vector<std::string> KeptTable(const std::string& counted)
{
    std::ifstream file(SITEKEEPER_FAILURE_POINTS);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('|') ? !lines.empty() || line == HeadingOf(counted) : false) {
            lines.push_back(line);
        } else if (!lines.empty()) {
            break;
        }
    }
    return lines;
}

void ExpectTableIsKept(const SweptOperations& operations, const std::string& counted, Numbers numbers)
{
    const std::vector<std::string> table = SweepIntoTable(operations, counted);
    for (const std::string& line : table) {
        std::cout << line << '\n';
    }
    const std::vector<std::string> kept = KeptTable(counted);
    const bool areComparable = numbers == Numbers::OfEachBuild || SITEKEEPER_KEEPS_ALLOCATIONS;
    EXPECT_EQ(areComparable ? table : WithoutNumbers(table), areComparable ? kept : WithoutNumbers(kept))
        << "docs/testing.md is to keep the table that stands above.";
}

} // namespace sitekeeper
