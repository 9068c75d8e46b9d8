#include "e2e/support/UpdatesPage.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Wide.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

constexpr const wchar_t* Files[] = {L"page", L"endless", L"hold", L"visits"};

} // namespace

UpdatesPage::UpdatesPage() : m_folder(EnvironmentText(L"SITEKEEPER_WEB_FOLDER") + L"\\")
{
    if (m_folder.size() == 1) {
        throw std::runtime_error("start these tests through web_server.py");
    }
}

UpdatesPage::~UpdatesPage()
{
    for (const wchar_t* const file : Files) {
        try {
            RemoveFile(m_folder + file);
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
    }
}

std::wstring UpdatesPage::Address()
{
    return EnvironmentText(L"SITEKEEPER_WEB") + L"/software-updates/";
}

void UpdatesPage::Publish(const std::string& content) const
{
    WriteWholeFile(m_folder + L"page", content);
}

void UpdatesPage::PublishEndless() const
{
    WriteWholeFile(m_folder + L"endless", "");
}

void UpdatesPage::Withdraw() const
{
    RemoveFile(m_folder + L"page");
}

void UpdatesPage::Hold() const
{
    WriteWholeFile(m_folder + L"hold", "");
}

void UpdatesPage::LetGo() const
{
    RemoveFile(m_folder + L"hold");
}

std::size_t UpdatesPage::Visits() const
{
    const std::string lines = ReadWholeFile(m_folder + L"visits").value_or("");
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), '\n'));
}

} // namespace sitekeeper::e2e
