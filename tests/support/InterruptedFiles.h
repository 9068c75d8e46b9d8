// A file system on which the process is killed at the n-th call: what was done before stands, nothing comes after.
#pragma once

#include "platform/FileSystem.h"

namespace sitekeeper {

/// What takes the place of the end of the process.
struct Interrupted
{};

class InterruptedFiles final : public FileSystem
{
public:
    /// Call number `lastCall`, from 1, and every later one raises Interrupted and does not reach `inner`; a write that
    /// is interrupted has brought half of its bytes there. 0 lets all pass.
    InterruptedFiles(FileSystem& inner, int lastCall) : m_inner(inner), m_lastCall(lastCall) {}

    [[nodiscard]] bool WasInterrupted() const { return m_lastCall > 0 && m_calls >= m_lastCall; }

    [[nodiscard]] bool Exists(const std::wstring& path) const override
    {
        Count();
        return m_inner.Exists(path);
    }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override
    {
        Count();
        return m_inner.FullPath(path);
    }
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override
    {
        Count();
        m_inner.Search(pattern, take);
    }
    bool MakeFolder(const std::wstring& path) override
    {
        Count();
        return m_inner.MakeFolder(path);
    }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override
    {
        Count();
        return m_inner.ReadContent(path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override
    {
        Count();
        return Watched(m_inner.OpenForWriting(path));
    }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path, const std::wstring& model) override
    {
        Count();
        return Watched(m_inner.MakeFileLike(path, model));
    }
    bool MoveOver(const std::wstring& from, const std::wstring& to) override
    {
        Count();
        return m_inner.MoveOver(from, to);
    }
    bool MakeEmptyFile(const std::wstring& path) override
    {
        Count();
        return m_inner.MakeEmptyFile(path);
    }
    bool RemoveFile(const std::wstring& path) override
    {
        Count();
        return m_inner.RemoveFile(path);
    }

private:
    class Output final : public OutputFile
    {
    public:
        Output(std::unique_ptr<OutputFile> inner, const InterruptedFiles& files)
            : m_innerFile(std::move(inner)), m_files(files)
        {}

        bool Write(std::string_view bytes) override
        {
            if (m_files.m_calls + 1 == m_files.m_lastCall) {
                m_innerFile->Write(bytes.substr(0, bytes.size() / 2));
            }
            m_files.Count();
            return m_innerFile->Write(bytes);
        }
        bool EndHere() override
        {
            m_files.Count();
            return m_innerFile->EndHere();
        }
        bool Flush() override
        {
            m_files.Count();
            return m_innerFile->Flush();
        }

    private:
        std::unique_ptr<OutputFile> m_innerFile;
        const InterruptedFiles& m_files;
    };

    void Count() const
    {
        ++m_calls;
        if (WasInterrupted()) {
            throw Interrupted();
        }
    }
    [[nodiscard]] std::unique_ptr<OutputFile> Watched(std::unique_ptr<OutputFile> file) const
    {
        return file == nullptr ? nullptr : std::make_unique<Output>(std::move(file), *this);
    }

    FileSystem& m_inner;
    int m_lastCall;
    mutable int m_calls = 0;
};

} // namespace sitekeeper
