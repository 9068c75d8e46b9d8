// A help viewer for tests: it remembers what it was asked to show.
#pragma once

#include "platform/HelpViewer.h"

#include <vector>

namespace sitekeeper {

class MemoryHelpViewer final : public HelpViewer
{
public:
    struct Opened
    {
        WindowId owner = WindowId::None;
        std::wstring path; // of the file, or the address of the page
        bool isPage = false;

        bool operator==(const Opened&) const = default;
    };

    void ShowContents(WindowId owner, const std::wstring& path) override { m_opened.push_back({owner, path, false}); }
    void ShowTopic(WindowId owner, const std::wstring& address) override { m_opened.push_back({owner, address, true}); }

    [[nodiscard]] const std::vector<Opened>& AllOpened() const { return m_opened; }

private:
    std::vector<Opened> m_opened;
};

} // namespace sitekeeper
