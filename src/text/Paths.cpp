#include "text/Paths.h"

namespace sitekeeper {
namespace {

/// Where the name begins: behind the last "\", or at the start where there is none.
std::size_t NameStart(std::wstring_view path) noexcept
{
    const std::size_t last = path.rfind(L'\\');
    return last == std::wstring_view::npos ? 0 : last + 1;
}

} // namespace

std::wstring WithBackslash(std::wstring_view path)
{
    std::wstring folder(path);
    if (!folder.ends_with(L'\\')) {
        folder += L'\\';
    }
    return folder;
}

std::wstring GetFolderOfPath(std::wstring_view path)
{
    return std::wstring(path.substr(0, NameStart(path)));
}

std::wstring GetNameOfPath(std::wstring_view path)
{
    return std::wstring(path.substr(NameStart(path)));
}

std::size_t ExtensionStart(std::wstring_view path)
{
    const std::size_t dot = path.rfind(L'.');
    return dot == std::wstring_view::npos || dot < NameStart(path) ? path.size() : dot;
}

std::wstring WithoutTrailingBackslashes(std::wstring_view path)
{
    const std::size_t last = path.find_last_not_of(L'\\');
    return std::wstring(path.substr(0, last == std::wstring_view::npos ? 0 : last + 1));
}

} // namespace sitekeeper
