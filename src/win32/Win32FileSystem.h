// The real file system.
#pragma once

#include "platform/FileSystem.h"

namespace sitekeeper {

class Win32FileSystem final : public FileSystem
{
public:
    [[nodiscard]] bool Exists(const std::wstring& path) const override;
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override;
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override;
    bool MakeFolder(const std::wstring& path) override;
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override;
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override;
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path,
                                                           const std::wstring& model) override;
    bool MoveOver(const std::wstring& from, const std::wstring& to) override;
    bool MakeEmptyFile(const std::wstring& path) override;
    bool RemoveFile(const std::wstring& path) override;
};

} // namespace sitekeeper
