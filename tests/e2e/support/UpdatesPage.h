// The vendor's page as the loopback program sees it: what the web server beside this suite
// (tests/support/web_server.py) serves, and who came for it.
#pragma once

#include <string>

namespace sitekeeper::e2e {

class UpdatesPage
{
public:
    /// No page yet, and no visits. Throws when this suite was not started beside the server.
    UpdatesPage();
    UpdatesPage(const UpdatesPage&) = delete;
    UpdatesPage& operator=(const UpdatesPage&) = delete;
    ~UpdatesPage();

    /// The address that the program was built with.
    [[nodiscard]] static std::wstring Address();

    void Publish(const std::string& content) const;
    void PublishEndless() const;
    void Withdraw() const;

    /// Visitors wait from now on, or no longer.
    void Hold() const;
    void LetGo() const;

    /// How many visitors have come.
    [[nodiscard]] std::size_t Visits() const;

private:
    std::wstring m_folder;
};

} // namespace sitekeeper::e2e
