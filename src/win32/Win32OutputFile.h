// A file open for writing, and how a new one is made like another.
#pragma once

#include "platform/FileSystem.h"
#include "win32/Handles.h"

#include <windows.h>

#include <utility>

namespace sitekeeper {

class Win32OutputFile final : public OutputFile
{
public:
    explicit Win32OutputFile(UniqueFile file) : m_file(std::move(file)) {}

    bool Write(std::string_view bytes) override;
    bool EndHere() override;
    bool Flush() override;

private:
    UniqueFile m_file;
};

/// Makes `path` for writing, open to nobody else, with the attributes and access rights of `model` where that exists.
/// Empty when the file cannot be made or cannot be made like that.
[[nodiscard]] UniqueFile MakeLike(const std::wstring& path, const std::wstring& model);

/// Runs `attempt` until it succeeds, for about a tenth of a second where it fails because others hold the file. Where
/// the system says that in another way too, `alsoHeld` is that error. The last error is that of the last attempt.
template <typename Attempt>
bool Retried(Attempt attempt, DWORD alsoHeld = ERROR_SHARING_VIOLATION)
{
    constexpr int Attempts = 6;
    constexpr DWORD Pause = 20; // milliseconds
    for (int left = Attempts; left > 0; --left) {
        if (attempt()) {
            return true;
        }
        const DWORD error = ::GetLastError();
        const bool isHeld = error == alsoHeld || error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION ||
                            error == ERROR_USER_MAPPED_FILE;
        if (!isHeld || left == 1) {
            return false;
        }
        ::Sleep(Pause);
    }
    return false;
}

} // namespace sitekeeper
