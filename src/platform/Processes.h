// Port: other programs, started beside this one and left to themselves.
#pragma once

#include "platform/Port.h"

#include <string>

namespace sitekeeper {

class Processes : public Port
{
public:
    /// Starts the program file `program`, a path with its ending, and does not wait for it. `commandLine` is all that
    /// the program gets as its command line: its own name is not put before it. It runs at normal priority with this
    /// process's environment and working folder and none of its handles, and is asked to show its window.
    /// False when it could not be started: the file is missing, no program, or not to be run by this user.
    virtual bool Start(const std::wstring& program, const std::wstring& commandLine) = 0;
};

} // namespace sitekeeper
