#include "support/ScriptedFolderChooser.h"

#include "text/Paths.h"

#include <gtest/gtest.h>

namespace sitekeeper {

ScriptedFolderChooser::~ScriptedFolderChooser()
{
    if (!m_answers.empty()) {
        ADD_FAILURE() << m_answers.size() << " expected folder choices did not come";
    }
}

void ScriptedFolderChooser::Choose(const std::wstring& title, std::wstring& path)
{
    m_asked.push_back({title, path.empty() ? L"C:\\" : path});
    if (m_answers.empty()) {
        ADD_FAILURE() << "unexpected folder chooser: " << ::testing::PrintToString(title);
        path.clear();
        return;
    }
    const std::optional<std::wstring> answer = m_answers.front();
    m_answers.pop_front();
    path = answer ? WithBackslash(*answer) : std::wstring();
}

} // namespace sitekeeper
