#include "app/VersionText.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(NormalizeVersionText, GivesTheShortForm)
{
    const struct
    {
        const wchar_t* text;
        const wchar_t* normalized;
    } rows[] = {
        {L"1, 2, 0, 0", L"1.2"},
        {L"1.2.0.0", L"1.2"},
        {L"5.0.0.0", L"5.0"},
        {L"5.1.0.0", L"5.1"},
        {L"5, 0, 0, 0", L"5.0"},
        {L"0, 0, 0, 0", L"0.0"},
        {L"2023.1.0.3", L"2023.1.0.3"},
        {L"7", L"7"},
        {L"7.0", L"7.0"},
        {L"7.10", L"7.10"},
        {L"7.00", L"7.00"},
        {L"7.0.00", L"7.0.00"},
        {L"10, 20, 30, 40", L"10.20.30.40"},
        {L"1,2,0,0", L"1,2,0,0"},   // no blank behind a comma
        {L"1,2, 0,0", L"1.2"},      // one is enough
        {L"1, 2 beta", L"1.2beta"}, // every blank goes
        {L"1 2.0", L"1 2.0"},       // ".0" is cut, then put back since no "." is left
        {L"1.0 beta", L"1.0 beta"},
        {L", ", L"."},
        {L".0", L".0"},
        {L".0.0", L".0"},
        {L".", L"."},
        {L"", L""},
    };
    for (const auto& row : rows) {
        std::wstring text = row.text;
        NormalizeVersionText(text);
        EXPECT_EQ(text, row.normalized) << '"' << row.text << '"';
        NormalizeVersionText(text);
        EXPECT_EQ(text, row.normalized) << "once more: \"" << row.text << '"';
    }
}

} // namespace
} // namespace sitekeeper
