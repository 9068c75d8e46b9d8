// A library of the system that most runs of the program never need.
#pragma once

#include "win32/Handles.h"

#include <windows.h>

namespace sitekeeper {

/// Loads the library when the first function of it is asked for, and from the system's folder alone: a file of that
/// name beside an elevated program would run with its rights. A library that is missing is looked for again each time.
class SystemLibrary
{
public:
    /// `name` is a bare file name and must outlive the object.
    explicit SystemLibrary(const wchar_t* name) noexcept : m_name(name) {}

    /// An exported function; null when the library or the function is missing. Stands as long as this object.
    template <typename Function>
    [[nodiscard]] Function Entry(const char* function) const noexcept
    {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(Find(function)));
    }

private:
    [[nodiscard]] FARPROC Find(const char* function) const noexcept
    {
        if (!m_module) {
            m_module.reset(::LoadLibraryExW(m_name, nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
        }
        return m_module ? ::GetProcAddress(m_module.get(), function) : nullptr;
    }

    const wchar_t* m_name;
    mutable UniqueModule m_module;
};

} // namespace sitekeeper
