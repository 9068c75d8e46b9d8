// A stand-in for a program that the one under test starts: it notes how it was started and stays.
#pragma once

#include <string>

namespace sitekeeper::e2e {

class Recorder
{
public:
    /// Puts it there, under any name.
    explicit Recorder(std::wstring path);
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;

    /// No test leaves it running.
    ~Recorder();

    /// What it noted, once it has run (the program that started it may be gone by then): a line each for its command
    /// line, the state of the window it is asked for, its priority and its working folder.
    [[nodiscard]] std::wstring AwaitRecord() const;

    [[nodiscard]] bool HasRun() const;
    [[nodiscard]] bool IsRunning() const;

    /// Lets it end, waits until it has, and takes its notes away.
    void End() const;

private:
    std::wstring m_path;
};

} // namespace sitekeeper::e2e
