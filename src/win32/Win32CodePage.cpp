#include "win32/Win32CodePage.h"

#include <windows.h>

#include <cstddef>

namespace sitekeeper {

void Win32CodePage::Decode(std::string_view bytes, std::wstring& text) const
{
    const auto size = static_cast<int>(bytes.size());
    const int length = size == 0 ? 0 : ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, nullptr, 0);
    const std::size_t before = text.size();
    text.resize(before + static_cast<std::size_t>(length));
    if (length > 0) {
        ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data() + before, length);
    }
}

bool Win32CodePage::Encode(std::wstring_view text, std::string& bytes) const
{
    if (text.empty()) {
        return true;
    }
    // UTF-8 knows no replacement character and wants to be asked in its own way.
    const bool isUtf8 = ::GetACP() == CP_UTF8;
    const DWORD flags = isUtf8 ? WC_ERR_INVALID_CHARS : WC_NO_BEST_FIT_CHARS;
    BOOL isReplaced = FALSE;
    BOOL* const replaced = isUtf8 ? nullptr : &isReplaced;
    const auto length = static_cast<int>(text.size());
    const int size = ::WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, replaced);
    if (size <= 0 || isReplaced != FALSE) {
        return false;
    }
    const std::size_t before = bytes.size();
    bytes.resize(before + static_cast<std::size_t>(size));
    ::WideCharToMultiByte(CP_ACP, flags, text.data(), length, bytes.data() + before, size, nullptr, replaced);
    if (isReplaced != FALSE) {
        bytes.resize(before);
        return false;
    }
    return true;
}

} // namespace sitekeeper
