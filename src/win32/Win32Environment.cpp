#include "win32/Win32Environment.h"

#include <cstddef>
#include <cstdlib>

namespace sitekeeper {

std::optional<std::wstring> Win32Environment::Variable(const std::wstring& name) const
{
    std::size_t size = 0;
    // Only the size counts: some runtimes call a query without a buffer an error.
    ::_wgetenv_s(&size, nullptr, 0, name.c_str());
    if (size == 0) {
        return std::nullopt;
    }
    std::wstring text(size, L'\0');
    if (::_wgetenv_s(&size, text.data(), text.size(), name.c_str()) != 0 || size == 0) {
        return std::nullopt;
    }
    text.resize(size - 1); // the size counts the terminator
    return text;
}

} // namespace sitekeeper
