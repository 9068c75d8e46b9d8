// A folder chooser for tests: its answers are a script, what it was asked is remembered. A question that the script
// does not expect fails the test, and so does an answer that nobody asked for.
#pragma once

#include "platform/FolderChooser.h"

#include <deque>
#include <optional>
#include <vector>

namespace sitekeeper {

class ScriptedFolderChooser final : public FolderChooser
{
public:
    struct Question
    {
        std::wstring title;
        /// The folder that is selected when the chooser appears.
        std::wstring selected;

        bool operator==(const Question&) const = default;
    };

    ScriptedFolderChooser() = default;
    ScriptedFolderChooser(const ScriptedFolderChooser&) = delete;
    ScriptedFolderChooser& operator=(const ScriptedFolderChooser&) = delete;
    ~ScriptedFolderChooser() override;

    void Choose(const std::wstring& title, std::wstring& path) override;

    /// The next question is answered by choosing `folder`, or by choosing nothing.
    void ExpectChoice(const std::wstring& folder) { m_answers.emplace_back(folder); }
    void ExpectCancel() { m_answers.emplace_back(std::nullopt); }

    [[nodiscard]] const std::vector<Question>& Asked() const { return m_asked; }
    /// How many expected questions have not come yet.
    [[nodiscard]] std::size_t Pending() const { return m_answers.size(); }
    /// Forgets them, for an operation that a fault ended early.
    void ForgetPending() { m_answers.clear(); }

private:
    std::deque<std::optional<std::wstring>> m_answers;
    std::vector<Question> m_asked;
};

} // namespace sitekeeper
