#include "app/AccessGate.h"

#include <gtest/gtest.h>

namespace sitekeeper {
namespace {

TEST(AccessGate, RefusesAnEmptyName)
{
    EXPECT_EQ(AdmitUser(L""), Admission::Refused);
}

TEST(AccessGate, LetsTheAdministratorInInAnyCase)
{
    for (const wchar_t* const name : {L"Administrator", L"ADMINISTRATOR", L"administrator", L"aDMINISTRATOR"}) {
        EXPECT_EQ(AdmitUser(name), Admission::Granted) << name;
    }
}

TEST(AccessGate, LetsAnyOtherNameIn)
{
    for (const wchar_t* const name : {L"keeper", L" ", L"\u0416\u0443\u043A"}) {
        EXPECT_EQ(AdmitUser(name), Admission::Granted) << name;
    }
}

TEST(AccessGate, NamesTheRefusedUser)
{
    EXPECT_EQ(RefusalText(L"keeper"), L"keeper,\nYou do not have permission to run this application.\n\n"
                                      L"Please contact your system administrator.");
    EXPECT_EQ(RefusalText(L"").substr(0, 9), L",\nYou do ");
    EXPECT_EQ(RefusalText(L"%s").substr(0, 3), L"%s,");
}

} // namespace
} // namespace sitekeeper
