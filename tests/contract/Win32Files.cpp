#include "contract/Win32Files.h"

#include "win32/Handles.h"

#include <windows.h>

#include <cstddef>
#include <sddl.h>
#include <stdexcept>
#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

struct LocalMemoryPolicy : NullHandlePolicy<HLOCAL>
{
    static void Close(HLOCAL memory) noexcept { ::LocalFree(memory); }
};
using UniqueLocalMemory = UniqueHandle<LocalMemoryPolicy>;

void Require(bool isDone)
{
    if (!isDone) {
        throw std::runtime_error("the test cannot prepare its file: " + std::to_string(::GetLastError()));
    }
}

std::vector<std::byte> SecurityOf(const std::wstring& path, SECURITY_INFORMATION parts)
{
    DWORD size = 0;
    ::GetFileSecurityW(path.c_str(), parts, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    Require(::GetFileSecurityW(path.c_str(), parts, descriptor.data(), size, &size) != FALSE);
    return descriptor;
}

std::wstring OwnerOf(const std::wstring& path)
{
    std::vector<std::byte> descriptor = SecurityOf(path, OWNER_SECURITY_INFORMATION);
    PSID owner = nullptr;
    BOOL isDefault = FALSE;
    Require(::GetSecurityDescriptorOwner(descriptor.data(), &owner, &isDefault) != FALSE);
    wchar_t* text = nullptr;
    Require(::ConvertSidToStringSidW(owner, &text) != FALSE);
    const UniqueLocalMemory memory(text);
    return text;
}

} // namespace

void SetFileAttributesOf(const std::wstring& path, FileAttributes attributes)
{
    const auto value = static_cast<DWORD>(attributes);
    Require(::SetFileAttributesW(path.c_str(), value == 0 ? FILE_ATTRIBUTE_NORMAL : value) != FALSE);
}

void SetModifiedOf(const std::wstring& path, Seconds moment)
{
    constexpr Seconds EpochSeconds = 11'644'473'600; // from 1601 to 1970
    constexpr Seconds TicksInASecond = 10'000'000;
    const auto ticks = static_cast<std::uint64_t>((moment + EpochSeconds) * TicksInASecond);
    const FILETIME time{static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32U)};
    // With the last flag folders can be opened too.
    const UniqueFile file(::CreateFileW(path.c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                        nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
    Require(file && ::SetFileTime(file.get(), nullptr, nullptr, &time) != FALSE);
}

FileAttributes FileAttributesOf(const std::wstring& path)
{
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    Require(attributes != INVALID_FILE_ATTRIBUTES);
    return static_cast<FileAttributes>(attributes) &
           (FileAttributes::ReadOnly | FileAttributes::Hidden | FileAttributes::System | FileAttributes::Archive);
}

void LeaveRightsToOwner(const std::wstring& path)
{
    const std::wstring rights = L"D:P(A;;FA;;;" + OwnerOf(path) + L")";
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    Require(::ConvertStringSecurityDescriptorToSecurityDescriptorW(rights.c_str(), SDDL_REVISION_1, &descriptor,
                                                                   nullptr) != FALSE);
    const UniqueLocalMemory memory(descriptor);
    Require(::SetFileSecurityW(path.c_str(), DACL_SECURITY_INFORMATION, descriptor) != FALSE);
}

std::string TextOfRights(const std::wstring& path)
{
    std::vector<std::byte> descriptor = SecurityOf(path, DACL_SECURITY_INFORMATION);
    char* text = nullptr;
    Require(::ConvertSecurityDescriptorToStringSecurityDescriptorA(descriptor.data(), SDDL_REVISION_1,
                                                                   DACL_SECURITY_INFORMATION, &text, nullptr) != FALSE);
    const UniqueLocalMemory memory(text);
    return text;
}

std::wstring SpelledName(const std::wstring& path)
{
    WIN32_FIND_DATAW found{};
    const UniqueFileSearch search(::FindFirstFileW(path.c_str(), &found));
    return search ? found.cFileName : L"";
}

std::shared_ptr<void> HoldFile(const std::wstring& path, FileHolder holder)
{
    DWORD sharing = FILE_SHARE_READ;
    if (holder != FileHolder::StrictReader) {
        sharing |= FILE_SHARE_WRITE;
    }
    if (holder == FileHolder::TolerantReader || holder == FileHolder::TolerantWriter) {
        sharing |= FILE_SHARE_DELETE;
    }
    const DWORD use = holder == FileHolder::TolerantWriter ? GENERIC_WRITE : GENERIC_READ;
    UniqueFile file(::CreateFileW(path.c_str(), use, sharing, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file ? std::make_shared<UniqueFile>(std::move(file)) : nullptr;
}

} // namespace sitekeeper
