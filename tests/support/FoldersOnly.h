// The base of file systems that tests make for a question about folders: they hold no files.
#pragma once

#include "platform/FileSystem.h"

namespace sitekeeper {

class FoldersOnly : public FileSystem
{
public:
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& /*path*/) const override { return {}; }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& /*path*/) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& /*path*/,
                                                           const std::wstring& /*model*/) override
    {
        return nullptr;
    }
    void Search(const std::wstring& /*pattern*/, const std::function<void(const FoundFile&)>& /*take*/) const override
    {}
    bool MoveOver(const std::wstring& /*from*/, const std::wstring& /*to*/) override { return false; }
    bool MakeEmptyFile(const std::wstring& /*path*/) override { return false; }
    bool RemoveFile(const std::wstring& /*path*/) override { return false; }
};

} // namespace sitekeeper
