// What lasts behind forwarders that let calls fail: the registry and the file system.
#pragma once

#include "support/FaultPlan.h"
#include "support/FaultyPlatform.h"

#include <memory>
#include <utility>

namespace sitekeeper {

class FaultySubKeys final : public SubKeys
{
public:
    FaultySubKeys(std::unique_ptr<SubKeys> inner, std::wstring path, FaultPlan& plan)
        : m_inner(std::move(inner)), m_path(std::move(path)), m_plan(plan)
    {}

    [[nodiscard]] std::uint32_t Count() const override { return m_inner->Count(); }
    [[nodiscard]] RegistryStatus ReadName(std::uint32_t index, std::wstring& name) const override
    {
        if (m_plan.Fails(L"sub-key " + std::to_wstring(index) + L" of " + m_path)) {
            name.clear();
            return InjectedStatus;
        }
        return m_inner->ReadName(index, name);
    }

private:
    std::unique_ptr<SubKeys> m_inner;
    std::wstring m_path;
    FaultPlan& m_plan;
};

class FaultyRegistry final : public Registry
{
public:
    FaultyRegistry(Registry& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] std::optional<std::vector<std::byte>> ReadValue(Hive hive, const std::wstring& key,
                                                                  const std::wstring& name, KeyAccess access,
                                                                  std::size_t limit) const override
    {
        return m_plan.Fails(L"read " + MemoryRegistry::PathText(hive, key) + L" : " + name)
                   ? std::nullopt
                   : m_inner.ReadValue(hive, key, name, access, limit);
    }

    bool WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, ValueType type,
                    std::span<const std::byte> bytes) override
    {
        return !m_plan.Fails(L"write " + MemoryRegistry::PathText(hive, key) + L" : " + name) &&
               m_inner.WriteValue(hive, key, name, type, bytes);
    }

    [[nodiscard]] OpenedSubKeys OpenSubKeys(Hive hive, const std::wstring& key) const override
    {
        const std::wstring path = MemoryRegistry::PathText(hive, key);
        if (m_plan.Fails(L"sub-keys of " + path)) {
            return {InjectedStatus, nullptr};
        }
        OpenedSubKeys opened = m_inner.OpenSubKeys(hive, key);
        if (opened.keys) {
            opened.keys = std::make_unique<FaultySubKeys>(std::move(opened.keys), path, m_plan);
        }
        return opened;
    }

private:
    Registry& m_inner;
    FaultPlan& m_plan;
};

/// A write that fails leaves half of its bytes, as a full disk does.
class FaultyOutputFile final : public OutputFile
{
public:
    FaultyOutputFile(std::unique_ptr<OutputFile> inner, std::wstring path, FaultPlan& plan)
        : m_inner(std::move(inner)), m_path(std::move(path)), m_plan(plan)
    {}

    bool Write(std::string_view bytes) override
    {
        if (m_plan.Fails(L"write to " + m_path)) {
            m_inner->Write(bytes.substr(0, bytes.size() / 2));
            return false;
        }
        return m_inner->Write(bytes);
    }
    bool EndHere() override { return !m_plan.Fails(L"end " + m_path) && m_inner->EndHere(); }
    bool Flush() override { return !m_plan.Fails(L"flush " + m_path) && m_inner->Flush(); }

private:
    std::unique_ptr<OutputFile> m_inner;
    std::wstring m_path;
    FaultPlan& m_plan;
};

class FaultyFileSystem final : public FileSystem
{
public:
    FaultyFileSystem(FileSystem& inner, FaultPlan& plan) : m_inner(inner), m_plan(plan) {}

    [[nodiscard]] bool Exists(const std::wstring& path) const override
    {
        return !m_plan.Fails(L"exists " + path) && m_inner.Exists(path);
    }
    [[nodiscard]] std::optional<std::wstring> FullPath(const std::wstring& path) const override
    {
        return m_plan.Fails(L"full path " + path) ? std::nullopt : m_inner.FullPath(path);
    }
    void Search(const std::wstring& pattern, const std::function<void(const FoundFile&)>& take) const override
    {
        if (!m_plan.Fails(L"search " + pattern)) {
            m_inner.Search(pattern, take);
        }
    }
    bool MakeFolder(const std::wstring& path) override
    {
        return !m_plan.Fails(L"make folder " + path) && m_inner.MakeFolder(path);
    }
    [[nodiscard]] std::optional<std::string> ReadContent(const std::wstring& path) const override
    {
        return m_plan.Fails(L"read file " + path) ? std::nullopt : m_inner.ReadContent(path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> OpenForWriting(const std::wstring& path) override
    {
        return m_plan.Fails(L"open " + path) ? nullptr : Watched(m_inner.OpenForWriting(path), path);
    }
    [[nodiscard]] std::unique_ptr<OutputFile> MakeFileLike(const std::wstring& path, const std::wstring& model) override
    {
        return m_plan.Fails(L"make file " + path) ? nullptr : Watched(m_inner.MakeFileLike(path, model), path);
    }
    bool MoveOver(const std::wstring& from, const std::wstring& to) override
    {
        return !m_plan.Fails(L"move over " + to) && m_inner.MoveOver(from, to);
    }
    bool MakeEmptyFile(const std::wstring& path) override
    {
        return !m_plan.Fails(L"make empty file " + path) && m_inner.MakeEmptyFile(path);
    }
    bool RemoveFile(const std::wstring& path) override
    {
        return !m_plan.Fails(L"remove " + path) && m_inner.RemoveFile(path);
    }

private:
    std::unique_ptr<OutputFile> Watched(std::unique_ptr<OutputFile> file, const std::wstring& path)
    {
        return file == nullptr ? nullptr : std::make_unique<FaultyOutputFile>(std::move(file), path, m_plan);
    }

    FileSystem& m_inner;
    FaultPlan& m_plan;
};

} // namespace sitekeeper
