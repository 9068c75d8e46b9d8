// The sounds of a bitmap button.
#pragma once

#include <windows.h>

#include <string>

namespace sitekeeper {

/// Plays sounds through the system's multimedia library, which the first sound loads for the rest of the process: a
/// program whose buttons are silent never has it.
class ButtonSound
{
public:
    ButtonSound() noexcept = default;
    ButtonSound(const ButtonSound&) = delete;
    ButtonSound& operator=(const ButtonSound&) = delete;

    /// A sound that still plays ends.
    ~ButtonSound();

    /// Starts the sound of this file, or of this event of the system's sound scheme, and returns at once. False when it
    /// cannot be played; nothing is heard then.
    bool Play(const std::wstring& name);

private:
    using PlayFunction = BOOL(WINAPI*)(const wchar_t*, HMODULE, DWORD);

    PlayFunction m_play = nullptr;
};

} // namespace sitekeeper
