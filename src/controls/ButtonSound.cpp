#include "controls/ButtonSound.h"

#include <windows.h>

#include <mmsystem.h>

namespace sitekeeper {

ButtonSound::~ButtonSound()
{
    // The library must not go while its thread plays.
    if (m_play != nullptr) {
        m_play(nullptr, nullptr, 0);
    }
}

bool ButtonSound::Play(const std::wstring& name)
{
    if (m_play == nullptr) {
        m_library.reset(::LoadLibraryExW(L"winmm.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
        const FARPROC found = m_library ? ::GetProcAddress(m_library.get(), "PlaySoundW") : nullptr;
        m_play = reinterpret_cast<PlayFunction>(reinterpret_cast<void*>(found));
    }
    return m_play != nullptr && m_play(name.c_str(), nullptr, SND_ASYNC | SND_NODEFAULT) != FALSE;
}

} // namespace sitekeeper
