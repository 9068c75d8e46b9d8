// The real processes.
#pragma once

#include "platform/Processes.h"

namespace sitekeeper {

class Win32Processes final : public Processes
{
public:
    bool Start(const std::wstring& program, const std::wstring& commandLine) override;
};

} // namespace sitekeeper
