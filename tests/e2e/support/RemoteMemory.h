// A block of memory in another process, for messages that carry pointers.
#pragma once

#include <windows.h>

#include <cstddef>

namespace sitekeeper::e2e {

class RemoteMemory
{
public:
    RemoteMemory(HANDLE process, std::size_t size) noexcept
        : m_process(process), m_address(::VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE))
    {}
    RemoteMemory(const RemoteMemory&) = delete;
    RemoteMemory& operator=(const RemoteMemory&) = delete;
    ~RemoteMemory() { ::VirtualFreeEx(m_process, m_address, 0, MEM_RELEASE); }

    /// The address in the other process.
    [[nodiscard]] void* Address() const noexcept { return m_address; }

    void Write(const void* from, std::size_t size) const noexcept
    {
        ::WriteProcessMemory(m_process, m_address, from, size, nullptr);
    }
    void Read(void* into, std::size_t size) const noexcept
    {
        ::ReadProcessMemory(m_process, m_address, into, size, nullptr);
    }

private:
    HANDLE m_process;
    void* m_address;
};

} // namespace sitekeeper::e2e
