// A platform in memory whose lasting changes take no memory of the program's: what they are made of is the system's.
#pragma once

#include "FailingAllocations.h"
#include "support/MemoryPlatform.h"

#include <memory>
#include <utility>

namespace sitekeeper {

class PausingOutputFile final : public OutputFile
{
public:
    explicit PausingOutputFile(std::unique_ptr<OutputFile> inner) : m_inner(std::move(inner)) {}

    bool Write(std::string_view bytes) override
    {
        const AllocationPause pause;
        return m_inner->Write(bytes);
    }
    bool EndHere() override
    {
        const AllocationPause pause;
        return m_inner->EndHere();
    }
    bool Flush() override
    {
        const AllocationPause pause;
        return m_inner->Flush();
    }

private:
    std::unique_ptr<OutputFile> m_inner;
};

/// What changes the files is done without the program's memory; what reads them, and the opening, may fail for want of
/// it before it has begun.
class PausingFiles final : public FileSystem
{
public:
    explicit PausingFiles(FileSystem& inner) : m_inner(inner) {}

    [[nodiscard]] bool Exists(const std::wstring& path) const override { return m_inner.Exists(path); }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override
    {
        return m_inner.FullPath(path);
    }
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override
    {
        m_inner.Search(pattern, take);
    }
    bool MakeFolder(const std::wstring& path) override
    {
        const AllocationPause pause;
        return m_inner.MakeFolder(path);
    }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override
    {
        return m_inner.ReadContent(path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override
    {
        return Opened([&] { return m_inner.OpenForWriting(path); });
    }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path, const std::wstring& model) override
    {
        return Opened([&] { return m_inner.MakeFileLike(path, model); });
    }
    bool MoveOver(const std::wstring& from, const std::wstring& to) override
    {
        TakeMemory();
        const AllocationPause pause;
        return m_inner.MoveOver(from, to);
    }
    bool MakeEmptyFile(const std::wstring& path) override
    {
        const AllocationPause pause;
        return m_inner.MakeEmptyFile(path);
    }
    bool RemoveFile(const std::wstring& path) override
    {
        const AllocationPause pause;
        return m_inner.RemoveFile(path);
    }

private:
    /// One failure point: adapters take memory before they begin.
    static void TakeMemory() { ::operator delete(::operator new(1)); }

    template <typename Open>
    [[nodiscard]] static std::unique_ptr<OutputFile> Opened(const Open& open)
    {
        TakeMemory();
        const AllocationPause pause;
        auto file = open();
        return file == nullptr ? nullptr : std::make_unique<PausingOutputFile>(std::move(file));
    }

    FileSystem& m_inner;
};

class PausingRegistry final : public Registry
{
public:
    explicit PausingRegistry(Registry& inner) : m_inner(inner) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                  const std::wstring& name, KeyAccess access,
                                                                  std::size_t limit) const override
    {
        return m_inner.ReadValue(hive, key, name, access, limit);
    }
    bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                    std::span<const std::byte> bytes) override
    {
        const AllocationPause pause;
        return m_inner.WriteValue(hive, key, name, type, bytes);
    }
    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const override
    {
        return m_inner.OpenSubKeys(hive, key);
    }

private:
    Registry& m_inner;
};

/// A MemoryPlatform behind such files and such a registry.
struct PausingPlatform
{
    MemoryPlatform memory;
    PausingFiles files{memory.files};
    PausingRegistry registry{memory.registry};

    [[nodiscard]] Platform Ports()
    {
        return {registry,           files,
                memory.shell,       memory.folders,
                memory.messages,    memory.modules,
                memory.environment, memory.accounts,
                memory.clock,       memory.help,
                memory.codePage,    memory.clipboard,
                memory.web,         memory.processes,
                memory.versions,    memory.printer};
    }
    [[nodiscard]] InstallationSettings Settings() { return {registry, memory.environment, memory.clock}; }
};

} // namespace sitekeeper
