#include "app/RefusalText.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(RefusalText, NamesTheRefusedUser)
{
    EXPECT_EQ(RefusalText(L"keeper"), L"keeper,\nYou do not have permission to run this application.\n\n"
                                      L"Please contact your system administrator.");
    EXPECT_EQ(RefusalText(L"").substr(0, 9), L",\nYou do ");
    EXPECT_EQ(RefusalText(L"%s").substr(0, 3), L"%s,");
}

} // namespace
} // namespace sitekeeper
