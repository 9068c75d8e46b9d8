// The web, by the system's internet session.
#pragma once

#include "platform/WebSession.h"
#include "win32/SystemLibrary.h"

#include <string>
#include <utility>

namespace sitekeeper {

class Win32WebSession final : public WebSession
{
public:
    /// `agent` is what servers are told of the program.
    explicit Win32WebSession(std::wstring agent) : m_agent(std::move(agent)) {}

    void ReadPage(const std::wstring& address, std::size_t pieceSize, const TakePiece& take) override;

private:
    std::wstring m_agent;
    SystemLibrary m_library{L"wininet.dll"};
};

} // namespace sitekeeper
