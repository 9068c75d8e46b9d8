#include "controls/ButtonSound.h"

#include <windows.h>

#include <mmsystem.h>

namespace sitekeeper {

ButtonSound::~ButtonSound()
{
    if (m_play != nullptr) {
        m_play(nullptr, nullptr, 0);
    }
}

bool ButtonSound::Play(const std::wstring& name)
{
    if (m_play == nullptr) {
        // Never released: its player thread runs on for a moment after the last sound, and would lose its code.
        const HMODULE library = ::LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
        const FARPROC found = library != nullptr ? ::GetProcAddress(library, "PlaySoundW") : nullptr;
        m_play = reinterpret_cast<PlayFunction>(reinterpret_cast<void*>(found));
    }
    return m_play != nullptr && m_play(name.c_str(), nullptr, SND_ASYNC | SND_NODEFAULT) != FALSE;
}

} // namespace sitekeeper
