// A clipboard in memory, for tests.
#pragma once

#include "platform/Clipboard.h"

#include <utility>

namespace sitekeeper {

class MemoryClipboard final : public Clipboard
{
public:
    bool PutText(WindowId /*owner*/, const std::wstring& text) override
    {
        if (!m_isRefused) {
            m_text = text.substr(0, text.find(L'\0'));
        }
        return !m_isRefused;
    }
    [[nodiscard]] std::optional<std::wstring> Text(WindowId /*owner*/) const override
    {
        return m_isRefused ? std::nullopt : m_text;
    }

    /// What another program put there; nothing for something that is no text.
    void Set(std::optional<std::wstring> text) { m_text = std::move(text); }
    /// Another program holds the clipboard, or lets go of it.
    void Refuse(bool isRefused) { m_isRefused = isRefused; }
    [[nodiscard]] const std::optional<std::wstring>& Content() const { return m_text; }

private:
    std::optional<std::wstring> m_text;
    bool m_isRefused = false;
};

} // namespace sitekeeper
