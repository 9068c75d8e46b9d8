#include "win32/Win32Accounts.h"

#include <lm.h>

#include <array>

namespace sitekeeper {
namespace {

static_assert(static_cast<DWORD>(NetworkStatus::Success) == NERR_Success);
static_assert(static_cast<DWORD>(NetworkStatus::AccessDenied) == ERROR_ACCESS_DENIED);
static_assert(static_cast<DWORD>(NetworkStatus::NotSupported) == ERROR_NOT_SUPPORTED);
static_assert(static_cast<DWORD>(NetworkStatus::MoreData) == ERROR_MORE_DATA);

constexpr DWORD ServerLevel = 101;
constexpr DWORD UserAccountLevel = 1;

/// What a function of the network management returned in its buffer, given back to it at the end.
class NetworkBuffer
{
public:
    explicit NetworkBuffer(const SystemLibrary& library)
        : m_release(library.Entry<decltype(m_release)>("NetApiBufferFree"))
    {}
    NetworkBuffer(const NetworkBuffer&) = delete;
    NetworkBuffer& operator=(const NetworkBuffer&) = delete;
    ~NetworkBuffer()
    {
        if (m_buffer != nullptr && m_release != nullptr) {
            m_release(m_buffer);
        }
    }

    template <typename Entry>
    [[nodiscard]] const Entry* As() const noexcept
    {
        return static_cast<const Entry*>(m_buffer);
    }
    void** put() noexcept { return &m_buffer; }

private:
    decltype(&::NetApiBufferFree) m_release;
    void* m_buffer = nullptr;
};

std::wstring NameOf(const wchar_t* name)
{
    return name == nullptr ? L"" : name;
}

} // namespace

std::wstring Win32Accounts::UserName() const
{
    std::array<wchar_t, 256> name{};
    auto size = static_cast<DWORD>(name.size());
    // Not asked whether it succeeded: a name that cannot be had stays empty.
    ::GetUserNameW(name.data(), &size);
    name.back() = L'\0';
    return name.data();
}

std::vector<std::wstring> Win32Accounts::Servers() const
{
    const auto enumerate = m_library.Entry<decltype(&::NetServerEnum)>("NetServerEnum");
    if (enumerate == nullptr) {
        return {};
    }
    NetworkBuffer buffer(m_library);
    DWORD count = 0;
    DWORD total = 0;
    const NET_API_STATUS status = enumerate(nullptr, ServerLevel, reinterpret_cast<BYTE**>(buffer.put()),
                                            MAX_PREFERRED_LENGTH, &count, &total, SV_TYPE_SERVER, nullptr, nullptr);
    std::vector<std::wstring> servers;
    const auto* const entries = buffer.As<SERVER_INFO_101>();
    if ((status == NERR_Success || status == ERROR_MORE_DATA) && entries != nullptr) {
        for (DWORD place = 0; place < count; ++place) {
            servers.push_back(NameOf(entries[place].sv101_name));
        }
    }
    return servers;
}

AccountPage Win32Accounts::UsersOf(const std::wstring& server, std::uint32_t index, std::uint32_t count) const
{
    const auto query = m_library.Entry<decltype(&::NetQueryDisplayInformation)>("NetQueryDisplayInformation");
    if (query == nullptr) {
        return {};
    }
    NetworkBuffer buffer(m_library);
    DWORD returned = 0;
    AccountPage page;
    page.status = static_cast<NetworkStatus>(query(server.empty() ? nullptr : server.c_str(), UserAccountLevel, index,
                                                   count, MAX_PREFERRED_LENGTH, &returned, buffer.put()));
    const auto* const entries = buffer.As<NET_DISPLAY_USER>();
    if (entries == nullptr || (page.status != NetworkStatus::Success && page.status != NetworkStatus::MoreData)) {
        return page;
    }
    for (DWORD place = 0; place < returned; ++place) {
        page.names.push_back(NameOf(entries[place].usri1_name));
        page.nextIndex = entries[place].usri1_next_index;
    }
    return page;
}

} // namespace sitekeeper
