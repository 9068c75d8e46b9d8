// Room for many small texts that come and go together.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace sitekeeper {

/// Keeps copies of texts side by side in large blocks. A kept text stays where it is until the pool is emptied; there
/// is no way to give a single one back.
class TextPool
{
public:
    /// A copy of `text` that lives as long as the pool's content. An empty text takes no room.
    [[nodiscard]] std::wstring_view Keep(std::wstring_view text)
    {
        if (text.empty()) {
            return {};
        }
        if (text.size() > m_freeSize) {
            AddBlock(text.size());
        }
        wchar_t* const place = m_free;
        std::copy(text.begin(), text.end(), place);
        m_free += text.size();
        m_freeSize -= text.size();
        return {place, text.size()};
    }

    /// Gives all room back; every text that was kept is gone.
    void Clear() noexcept;

private:
    void AddBlock(std::size_t atLeast);

    std::vector<std::unique_ptr<wchar_t[]>> m_blocks;
    wchar_t* m_free = nullptr;
    std::size_t m_freeSize = 0;
    std::size_t m_blockSize = 0;
};

} // namespace sitekeeper
