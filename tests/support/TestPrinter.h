// A printer of the system for tests, whose documents come out as PostScript in a file.
#pragma once

#include <string>

namespace sitekeeper {

/// The system's default printer as long as this lives; afterwards the printer and its driver are gone and the former
/// default is back. Works under Wine, where a queue may lead into a file.
class TestPrinter
{
public:
    /// Each document is written over the one before in `file`, a full path whose folder exists. What an earlier test
    /// left is removed first. Throws std::runtime_error when the system refuses.
    explicit TestPrinter(const std::wstring& file);
    TestPrinter(const TestPrinter&) = delete;
    TestPrinter& operator=(const TestPrinter&) = delete;
    ~TestPrinter();

    /// The name that the print dialog shows.
    static constexpr const wchar_t* Name = L"SiteKeeper test printer";

private:
    std::wstring m_formerDefault;
};

/// How many pages the PostScript in `content` has.
[[nodiscard]] int CountPages(const std::string& content);

} // namespace sitekeeper
