#include "app/ErrorReport.h"

#include "support/MemoryPlatform.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace sitekeeper {
namespace {

template <typename Error>
std::wstring Described(const Error& error)
{
    return DescribeError(std::make_exception_ptr(error));
}

TEST(DescribeError, GivesAPlatformErrorsSentenceAndCode)
{
    EXPECT_EQ(Described(PlatformError(ResultCode::Fail, L"What was wrong.")), L"What was wrong.\n\n(Error 0x80004005)");
    EXPECT_EQ(Described(PlatformError(ResultCode::InvalidArgument, L"")), L"\n\n(Error 0x80070057)");
    EXPECT_EQ(Described(PlatformError(ResultCode::Ok, L"x")), L"x\n\n(Error 0x00000000)");
    EXPECT_EQ(Described(PlatformError(static_cast<ResultCode>(0x2A), L"x")), L"x\n\n(Error 0x0000002A)");
}

TEST(DescribeError, SaysThatAnythingElseWasUnexpected)
{
    const std::wstring outOfMemory = Described(std::bad_alloc());
    EXPECT_NE(outOfMemory.find(L"memory"), std::wstring::npos);
    const std::wstring unexpected = Described(std::runtime_error("inside"));
    EXPECT_NE(unexpected.find(L"unexpected"), std::wstring::npos);
    EXPECT_EQ(Described(5), unexpected);
    EXPECT_NE(outOfMemory, unexpected);
}

TEST(ReportError, ShowsOneMessageWithTheProductsTitle)
{
    MemoryPlatform memory;
    memory.messages.Expect();
    const auto error = std::make_exception_ptr(PlatformError(ResultCode::Fail, L"What was wrong."));
    ReportError(memory.messages, static_cast<WindowId>(7), error);
    EXPECT_EQ(memory.messages.Shown(), (std::vector<ScriptedMessageBoxes::Box>{
                                           {static_cast<WindowId>(7), L"What was wrong.\n\n(Error 0x80004005)",
                                            L"LX Plus 2023", MessageStyle::Error}}));
}

} // namespace
} // namespace sitekeeper
