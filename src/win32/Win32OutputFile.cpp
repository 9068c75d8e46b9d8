#include "win32/Win32OutputFile.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

namespace sitekeeper {
namespace {

constexpr SECURITY_INFORMATION Rights = DACL_SECURITY_INFORMATION;

/// What a new file can be made with; the rest follows from its folder or its content.
constexpr DWORD KeptAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                 FILE_ATTRIBUTE_NOT_CONTENT_INDEXED | FILE_ATTRIBUTE_ENCRYPTED;

/// The access rights of a file; nothing when they cannot be read.
std::optional<std::vector<std::byte>> RightsOf(const std::wstring& path)
{
    DWORD size = 0;
    ::GetFileSecurityW(path.c_str(), Rights, nullptr, 0, &size);
    std::vector<std::byte> descriptor(size);
    if (size == 0 || ::GetFileSecurityW(path.c_str(), Rights, descriptor.data(), size, &size) == FALSE) {
        return std::nullopt;
    }
    return descriptor;
}

/// Gives the rights to a file that was just made, inherited ones still marked as such. Mostly the folder has given them
/// already, and who may write on a share may not always change rights there.
bool GiveRights(const std::wstring& path, std::vector<std::byte>& descriptor)
{
    if (RightsOf(path) == descriptor) {
        return true;
    }
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (::GetSecurityDescriptorControl(descriptor.data(), &control, &revision) == FALSE) {
        return false;
    }
    if ((control & SE_DACL_AUTO_INHERITED) != 0) {
        ::SetSecurityDescriptorControl(descriptor.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
    }
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                                                : UNPROTECTED_DACL_SECURITY_INFORMATION;
    return ::SetFileSecurityW(path.c_str(), Rights | inheritance, descriptor.data()) != FALSE;
}

/// Gives attributes to a file that was just made: a left-over may still have its own.
bool GiveAttributes(HANDLE file, DWORD attributes)
{
    const DWORD settable = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_ENCRYPTED); // that one comes with the making
    FILE_BASIC_INFO info{};                                                            // times of 0 stay as they are
    info.FileAttributes = settable == 0 ? FILE_ATTRIBUTE_NORMAL : settable;
    return ::SetFileInformationByHandle(file, FileBasicInfo, &info, sizeof info) != FALSE;
}

/// A new, empty file; a left-over of that name is emptied, whatever its attributes.
UniqueFile Make(const std::wstring& path, DWORD attributes)
{
    UniqueFile file;
    const auto attempt = [&] {
        file.reset(::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, attributes, nullptr));
        return static_cast<bool>(file);
    };
    if (!Retried(attempt) && ::GetLastError() == ERROR_ACCESS_DENIED &&
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL) != FALSE) {
        attempt();
    }
    return file;
}

} // namespace

bool Win32OutputFile::Write(std::string_view bytes)
{
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min<std::size_t>(bytes.size(), std::numeric_limits<int>::max()));
        DWORD written = 0;
        if (::WriteFile(m_file.get(), bytes.data(), size, &written, nullptr) == FALSE || written == 0) {
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

bool Win32OutputFile::EndHere()
{
    return ::SetEndOfFile(m_file.get()) != FALSE;
}

bool Win32OutputFile::Flush()
{
    return ::FlushFileBuffers(m_file.get()) != FALSE;
}

UniqueFile MakeLike(const std::wstring& path, const std::wstring& model)
{
    const DWORD attributes = ::GetFileAttributesW(model.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        UniqueFile file = Make(path, FILE_ATTRIBUTE_NORMAL);
        if (file) {
            GiveAttributes(file.get(), FILE_ATTRIBUTE_NORMAL);
        }
        return file;
    }
    std::optional<std::vector<std::byte>> rights = RightsOf(model);
    if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || !rights) {
        return {};
    }
    const DWORD kept = attributes & KeptAttributes;
    const DWORD given = kept == 0 ? FILE_ATTRIBUTE_NORMAL : kept;
    UniqueFile file = Make(path, given);
    const auto drop = [&file, &path] {
        file.reset();
        ::DeleteFileW(path.c_str());
    };
    try {
        if (file && !(GiveAttributes(file.get(), given) && GiveRights(path, *rights))) {
            drop();
        }
    } catch (...) {
        drop();
        throw;
    }
    return file;
}

} // namespace sitekeeper
