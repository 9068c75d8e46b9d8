// A file system of a few files by their exact paths and nothing else, for tests that save a hundred thousand times.
#pragma once

#include "platform/FileSystem.h"

#include <map>

namespace sitekeeper {

class PlainFiles final : public FileSystem
{
public:
    [[nodiscard]] bool Exists(const std::wstring& path) const override { return m_files.contains(path); }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override { return path; }
    void Search(const std::wstring& /*pattern*/, const std::function<void(const FoundFile&)>& /*take*/) const override
    {}
    bool MakeFolder(const std::wstring& /*path*/) override { return false; }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override
    {
        const auto found = m_files.find(path);
        return found == m_files.end() ? std::nullopt : std::optional(found->second);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override
    {
        return m_isReadOnly || !m_files.contains(path) ? nullptr : std::make_unique<Output>(m_files[path]);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path,
                                                           const std::wstring& /*model*/) override
    {
        if (m_isReadOnly) {
            return nullptr;
        }
        m_files[path].clear();
        return std::make_unique<Output>(m_files[path]);
    }
    bool MoveOver(const std::wstring& from, const std::wstring& to) override
    {
        m_files[to] = std::move(m_files[from]);
        m_files.erase(from);
        ++m_moves;
        return true;
    }
    bool MakeEmptyFile(const std::wstring& path) override { return MakeFileLike(path, path) != nullptr; }
    bool RemoveFile(const std::wstring& path) override { return m_files.erase(path) > 0; }

    /// From now on nothing can be written, or everything can.
    void SetReadOnly(bool isReadOnly) { m_isReadOnly = isReadOnly; }
    void Put(const std::wstring& path, std::string content) { m_files[path] = std::move(content); }
    [[nodiscard]] std::size_t Count() const { return m_files.size(); }
    /// How often a file was put in another's place: once for each save that wrote.
    [[nodiscard]] std::size_t Moves() const { return m_moves; }

private:
    class Output final : public OutputFile
    {
    public:
        explicit Output(std::string& content) : m_content(content) {}

        bool Write(std::string_view bytes) override
        {
            m_content.replace(m_position, bytes.size(), bytes);
            m_position += bytes.size();
            return true;
        }
        bool EndHere() override
        {
            m_content.resize(m_position);
            return true;
        }
        bool Flush() override { return true; }

    private:
        std::string& m_content;
        std::size_t m_position = 0;
    };

    std::map<std::wstring, std::string> m_files;
    bool m_isReadOnly = false;
    std::size_t m_moves = 0;
};

} // namespace sitekeeper
