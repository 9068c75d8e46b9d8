#include "support/HandleCount.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>
#include <winternl.h>

namespace sitekeeper {
namespace {

/// One entry of the system's table of all handles.
struct TableEntry
{
    void* object;
    std::uintptr_t process;
    std::uintptr_t handle;
    std::uint32_t access;
    std::uint16_t creator;
    std::uint16_t type;
    std::uint32_t attributes;
    std::uint32_t reserved;
};

/// What stands before the entries.
struct TableHead
{
    std::uintptr_t entries;
    std::uintptr_t reserved;
};

constexpr int ExtendedHandleTable = 64;
constexpr auto TooSmall = static_cast<NTSTATUS>(0xC0000004);

std::vector<std::byte> ReadTable()
{
    using Query = NTSTATUS(WINAPI*)(int, void*, ULONG, ULONG*);
    const FARPROC found = ::GetProcAddress(::GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation");
    const auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(found));
    std::vector<std::byte> table(std::size_t{256} * 1024);
    ULONG needed = 0;
    NTSTATUS status = query(ExtendedHandleTable, table.data(), static_cast<ULONG>(table.size()), &needed);
    while (status == TooSmall) {
        table.resize(table.size() * 2);
        status = query(ExtendedHandleTable, table.data(), static_cast<ULONG>(table.size()), &needed);
    }
    return status == 0 ? table : std::vector<std::byte>(sizeof(TableHead));
}

/// Wine counts nothing when asked for one process, but tells all handles of all.
unsigned CountInTable(DWORD process)
{
    const std::vector<std::byte> table = ReadTable();
    TableHead head{};
    std::memcpy(&head, table.data(), sizeof head);
    const auto* const first = reinterpret_cast<const TableEntry*>(table.data() + sizeof head);
    return static_cast<unsigned>(std::ranges::count_if(
        std::span(first, head.entries), [process](const TableEntry& entry) { return entry.process == process; }));
}

} // namespace

unsigned CountHandles(HANDLE process)
{
    DWORD counted = 0;
    ::GetProcessHandleCount(process, &counted);
    return counted != 0 ? counted : CountInTable(::GetProcessId(process));
}

} // namespace sitekeeper
