// How long the adapters ask again for files that others hold.
#include "win32/Win32OutputFile.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

/// Fails so many times with an error, then succeeds.
struct Attempts
{
    int failures = 0;
    DWORD error = 0;
    int made = 0;

    bool operator()()
    {
        ++made;
        ::SetLastError(error);
        return made > failures;
    }
};

TEST(Retried, AsksAgainForWhatOthersHold)
{
    for (const DWORD error :
         {DWORD{ERROR_SHARING_VIOLATION}, DWORD{ERROR_LOCK_VIOLATION}, DWORD{ERROR_USER_MAPPED_FILE}}) {
        Attempts attempts{2, error};
        EXPECT_TRUE(Retried([&] { return attempts(); }));
        EXPECT_EQ(attempts.made, 3);
    }
}

TEST(Retried, GivesUpAfterATenthOfASecondWithTheErrorKept)
{
    Attempts attempts{1000, ERROR_SHARING_VIOLATION};
    const ULONGLONG begin = ::GetTickCount64();
    EXPECT_FALSE(Retried([&] { return attempts(); }));
    EXPECT_EQ(::GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_GE(::GetTickCount64() - begin, 80U);
    EXPECT_EQ(attempts.made, 6);
}

TEST(Retried, AsksAgainForWhatTheCallerCallsHeld)
{
    Attempts attempts{1, ERROR_ACCESS_DENIED};
    EXPECT_TRUE(Retried([&] { return attempts(); }, ERROR_ACCESS_DENIED));
    EXPECT_EQ(attempts.made, 2);
}

TEST(Retried, FailsAtOnceForOtherReasons)
{
    for (const DWORD error : {DWORD{ERROR_FILE_NOT_FOUND}, DWORD{ERROR_ACCESS_DENIED}, DWORD{ERROR_DISK_FULL}}) {
        Attempts attempts{1, error};
        EXPECT_FALSE(Retried([&] { return attempts(); }));
        EXPECT_EQ(::GetLastError(), error);
        EXPECT_EQ(attempts.made, 1);
    }
}

} // namespace
} // namespace sitekeeper
