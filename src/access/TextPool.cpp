#include "access/TextPool.h"

#include <algorithm>

namespace sitekeeper {
namespace {

// Blocks grow with the pool, so that a small list stays small and a large one needs few of them.
constexpr std::size_t SmallestBlock = 2048;
constexpr std::size_t LargestBlock = 262'144;

} // namespace

void TextPool::Clear() noexcept
{
    m_blocks.clear();
    m_free = nullptr;
    m_freeSize = 0;
    m_blockSize = 0;
}

void TextPool::AddBlock(std::size_t atLeast)
{
    const std::size_t next = std::clamp(m_blockSize * 2, SmallestBlock, LargestBlock);
    const std::size_t size = std::max(next, atLeast);
    m_blocks.push_back(std::unique_ptr<wchar_t[]>(new wchar_t[size])); // left as it comes: it is written over
    m_free = m_blocks.back().get();
    m_freeSize = size;
    m_blockSize = next;
}

} // namespace sitekeeper
