#include "support/BuiltLibrary.h"

#include <filesystem>

namespace sitekeeper {

std::wstring BuiltLibrary::File()
{
    return std::filesystem::path(SITEKEEPER_DIALOGS_LIBRARY).wstring();
}

ModuleId BuiltLibrary::Load(const std::wstring& path)
{
    m_asked.push_back(path);
    const ModuleId library = m_modules.Load(File());
    m_held += library != ModuleId::None ? 1 : 0;
    return library;
}

void BuiltLibrary::Release(ModuleId library) noexcept
{
    m_held -= library != ModuleId::None ? 1 : 0;
    m_modules.Release(library);
}

} // namespace sitekeeper
