#include "support/ScriptedMessageBoxes.h"

#include <gtest/gtest.h>

namespace sitekeeper {

ScriptedMessageBoxes::~ScriptedMessageBoxes()
{
    if (!m_answers.empty()) {
        ADD_FAILURE() << m_answers.size() << " expected message boxes did not come";
    }
}

Answer ScriptedMessageBoxes::Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                                  MessageStyle style)
{
    m_shown.push_back({owner, text, caption, style});
    if (!m_answers.empty()) {
        const Answer answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }
    if (!m_answerToAll) {
        ADD_FAILURE() << "unexpected message box: " << ::testing::PrintToString(text);
    }
    return m_answerToAll.value_or(Answer::None);
}

} // namespace sitekeeper
