#include "e2e/support/Days.h"

#include <array>
#include <ctime>
#include <cwchar>

namespace sitekeeper::e2e {
namespace {

constexpr int FirstYear = 1900; // the C library counts from it

long long Today()
{
    const std::time_t now = std::time(nullptr);
    const std::tm& local = *std::localtime(&now);
    return StartOf(local.tm_year + FirstYear, local.tm_mon + 1, local.tm_mday);
}

} // namespace

long long StartOf(int year, int month, int day)
{
    std::tm time{};
    time.tm_year = year - FirstYear;
    time.tm_mon = month - 1;
    time.tm_mday = day;
    time.tm_isdst = -1;
    return std::mktime(&time);
}

std::wstring DateAfter(int days)
{
    constexpr long long Day = 86400;
    const std::time_t moment = Today() + days * Day;
    std::array<wchar_t, 32> text{};
    std::wcsftime(text.data(), text.size(), L"%Y-%m-%d %H:%M:%S", std::localtime(&moment));
    return text.data();
}

} // namespace sitekeeper::e2e
