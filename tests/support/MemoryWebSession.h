// A web in memory, for tests: pages by their addresses, whole or cut off.
#pragma once

#include "platform/WebSession.h"

#include <map>
#include <utility>
#include <vector>

namespace sitekeeper {

class MemoryWebSession final : public WebSession
{
public:
    void ReadPage(const std::wstring& address, std::size_t pieceSize, const TakePiece& take) override
    {
        m_read.push_back(address);
        if (address == m_endless) {
            for (const std::string piece(pieceSize, 'x'); take(piece);) {
            }
            return;
        }
        const auto page = m_pages.find(address);
        if (page == m_pages.end()) {
            return;
        }
        std::string_view rest = page->second;
        while (!rest.empty() && take(rest.substr(0, pieceSize))) {
            rest.remove_prefix(rest.size() < pieceSize ? rest.size() : pieceSize);
        }
    }

    /// The page at `address`, as far as it comes before an error.
    void Publish(const std::wstring& address, std::string page) { m_pages[address] = std::move(page); }

    void Withdraw(const std::wstring& address) { m_pages.erase(address); }

    /// A page at `address` that has no end.
    void PublishEndless(const std::wstring& address) { m_endless = address; }

    /// The addresses that were asked for, in their order.
    [[nodiscard]] const std::vector<std::wstring>& AllRead() const { return m_read; }

private:
    std::map<std::wstring, std::string> m_pages;
    std::wstring m_endless;
    std::vector<std::wstring> m_read;
};

} // namespace sitekeeper
