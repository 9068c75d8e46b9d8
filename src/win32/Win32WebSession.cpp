#include "win32/Win32WebSession.h"

#include <wininet.h>

#include <algorithm>
#include <vector>

namespace sitekeeper {
namespace {

/// Reading the session itself in small pieces costs a call into the system for each.
constexpr DWORD ReadAhead = 65'536;
constexpr DWORD_PTR Context = 1;

/// The functions of the system's library that a page takes. All there or none.
struct Functions
{
    explicit Functions(HMODULE library)
        : open(Entry<decltype(open)>(library, "InternetOpenW")),
          openUrl(Entry<decltype(openUrl)>(library, "InternetOpenUrlW")),
          read(Entry<decltype(read)>(library, "InternetReadFile")),
          close(Entry<decltype(close)>(library, "InternetCloseHandle"))
    {}

    [[nodiscard]] bool AreThere() const noexcept
    {
        return open != nullptr && openUrl != nullptr && read != nullptr && close != nullptr;
    }

    template <typename Function>
    static Function Entry(HMODULE library, const char* name)
    {
        return library == nullptr
                   ? nullptr
                   : reinterpret_cast<Function>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
    }

    decltype(&::InternetOpenW) open;
    decltype(&::InternetOpenUrlW) openUrl;
    decltype(&::InternetReadFile) read;
    decltype(&::InternetCloseHandle) close;
};

/// A handle of the internet session, closed by the library that made it.
class InternetHandle
{
public:
    InternetHandle(HINTERNET handle, decltype(&::InternetCloseHandle) close) : m_handle(handle), m_close(close) {}
    InternetHandle(const InternetHandle&) = delete;
    InternetHandle& operator=(const InternetHandle&) = delete;
    ~InternetHandle()
    {
        if (m_handle != nullptr) {
            m_close(m_handle);
        }
    }
    [[nodiscard]] HINTERNET get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != nullptr; }

private:
    HINTERNET m_handle;
    decltype(&::InternetCloseHandle) m_close;
};

/// Cuts what comes in blocks of any size into pieces of one size.
class Pieces
{
public:
    Pieces(std::size_t size, const WebSession::TakePiece& take) : m_size(size), m_take(take) {}

    /// False when no more is wanted.
    bool Add(std::string_view bytes)
    {
        while (!bytes.empty()) {
            const std::size_t missing = std::min(m_size - m_begun.size(), bytes.size());
            m_begun.append(bytes.substr(0, missing));
            bytes.remove_prefix(missing);
            if (m_begun.size() == m_size && !Finish()) {
                return false;
            }
        }
        return true;
    }

    /// Hands on what is left over. False when no more is wanted.
    bool Finish()
    {
        const bool isMoreWanted = m_begun.empty() || m_take(m_begun);
        m_begun.clear();
        return isMoreWanted;
    }

private:
    std::size_t m_size;
    const WebSession::TakePiece& m_take;
    std::string m_begun;
};

} // namespace

void Win32WebSession::ReadPage(const std::wstring& address, std::size_t pieceSize, const TakePiece& take)
{
    if (!m_library) {
        m_library.reset(::LoadLibraryExW(L"wininet.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32));
    }
    const Functions system(m_library.get());
    if (!system.AreThere()) {
        return;
    }
    const InternetHandle session(system.open(m_agent.c_str(), INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0),
                                 system.close);
    if (!session) {
        return;
    }
    const InternetHandle page(
        system.openUrl(session.get(), address.c_str(), nullptr, 0, INTERNET_FLAG_TRANSFER_ASCII, Context),
        system.close);
    std::vector<char> block(page ? ReadAhead : 0);
    Pieces pieces(pieceSize, take);
    DWORD count = 0;
    while (page && system.read(page.get(), block.data(), ReadAhead, &count) != FALSE && count > 0) {
        if (!pieces.Add({block.data(), count})) {
            return;
        }
    }
    pieces.Finish();
}

} // namespace sitekeeper
