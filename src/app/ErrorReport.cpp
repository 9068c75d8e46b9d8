#include "app/ErrorReport.h"

#include "platform/PlatformError.h"
#include "settings/Product.h"

#include <cstdint>
#include <new>

namespace sitekeeper {
namespace {

std::wstring Hexadecimal(std::uint32_t value)
{
    std::wstring digits = L"0x00000000";
    for (std::size_t index = digits.size(); value != 0; value >>= 4U) {
        digits[--index] = L"0123456789ABCDEF"[value & 0xFU];
    }
    return digits;
}

} // namespace

std::wstring DescribeError(const std::exception_ptr& error)
{
    try {
        std::rethrow_exception(error);
    } catch (const PlatformError& platformError) {
        return platformError.Message() + L"\n\n(Error " +
               Hexadecimal(static_cast<std::uint32_t>(platformError.Code())) + L")";
    } catch (const std::bad_alloc&) {
        return L"There is not enough memory for this operation.";
    } catch (...) {
        return L"An unexpected error occurred. The operation was not completed.";
    }
}

void ReportError(MessageBoxes& messages, WindowId owner, const std::exception_ptr& error)
{
    try {
        messages.Show(owner, DescribeError(error), ProductTitle, MessageStyle::Error);
        // Whoever reports an error stands where nobody else would catch one, and the program is to go on.
    } catch (const std::bad_alloc&) { // NOLINT(bugprone-empty-catch)
    }
}

} // namespace sitekeeper
