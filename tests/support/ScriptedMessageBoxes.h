// Message boxes for tests: answered by a script, remembered in full. A box that the script does not expect fails the
// test, and so does an answer that nobody asked for.
#pragma once

#include "platform/MessageBoxes.h"

#include <deque>
#include <vector>

namespace sitekeeper {

class ScriptedMessageBoxes final : public MessageBoxes
{
public:
    struct Box
    {
        WindowId owner = WindowId::None;
        std::wstring text;
        std::optional<std::wstring> caption;
        MessageStyle style = MessageStyle::Ok;

        bool operator==(const Box&) const = default;
    };

    ScriptedMessageBoxes() = default;
    ScriptedMessageBoxes(const ScriptedMessageBoxes&) = delete;
    ScriptedMessageBoxes& operator=(const ScriptedMessageBoxes&) = delete;
    ~ScriptedMessageBoxes() override;

    Answer Show(WindowId owner, const std::wstring& text, const std::optional<std::wstring>& caption,
                MessageStyle style) override;

    /// One more box will come, and is answered thus.
    void Expect(Answer answer = Answer::Ok) { m_answers.push_back(answer); }
    /// Any number of boxes may come, each answered thus once the expected ones are used up.
    void AnswerAll(Answer answer) { m_answerToAll = answer; }

    [[nodiscard]] const std::vector<Box>& Shown() const { return m_shown; }

private:
    std::deque<Answer> m_answers;
    std::optional<Answer> m_answerToAll;
    std::vector<Box> m_shown;
};

} // namespace sitekeeper
