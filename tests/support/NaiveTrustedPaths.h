// The search in the trusted paths a second time, character by character, for holding the program's own against it.
#pragma once

#include <cstddef>
#include <string>

namespace sitekeeper {

/// One command's search, from product to product.
class NaiveTrustedPaths
{
public:
    /// Whether the search has come to its end: then it cannot begin again.
    [[nodiscard]] bool HasEnded() const { return m_hasEnded; }

    /// Whether `folder`, in small letters, is one of `paths` from the place on at which the last search stopped.
    bool Holds(const std::wstring& paths, const std::wstring& folder)
    {
        std::wstring path;
        for (; m_place < paths.size() || !path.empty(); ++m_place) {
            if (m_place < paths.size() && paths[m_place] != L';') {
                const wchar_t c = paths[m_place];
                path += c >= L'A' && c <= L'Z' ? static_cast<wchar_t>(c + 32) : c;
            } else if (path == folder) {
                ++m_place;
                return true;
            } else {
                path.clear();
            }
        }
        m_hasEnded = true;
        return false;
    }

private:
    std::size_t m_place = 0;
    bool m_hasEnded = false;
};

} // namespace sitekeeper
