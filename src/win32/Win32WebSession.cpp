#include "win32/Win32WebSession.h"

#include <wininet.h>

#include <algorithm>
#include <vector>

namespace sitekeeper {
namespace {

/// Reading the session itself in small pieces costs a call into the system for each.
constexpr std::size_t ReadAhead = 65'536;
constexpr DWORD_PTR Context = 1;

/// The functions of the system's library that a page takes. All there or none.
struct Functions
{
    explicit Functions(const SystemLibrary& library)
        : open(library.Entry<decltype(open)>("InternetOpenW")),
          openUrl(library.Entry<decltype(openUrl)>("InternetOpenUrlW")),
          available(library.Entry<decltype(available)>("InternetQueryDataAvailable")),
          read(library.Entry<decltype(read)>("InternetReadFile")),
          close(library.Entry<decltype(close)>("InternetCloseHandle"))
    {}

    [[nodiscard]] bool AreThere() const noexcept
    {
        return open != nullptr && openUrl != nullptr && available != nullptr && read != nullptr && close != nullptr;
    }

    decltype(&::InternetOpenW) open;
    decltype(&::InternetOpenUrlW) openUrl;
    decltype(&::InternetQueryDataAvailable) available;
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

/// The next bytes of a page; none at its end and after an error. What is there is asked for first: reading more would
/// wait for it, and lose what is there should the connection break.
std::string_view NextBytes(const Functions& system, HINTERNET page, std::vector<char>& block)
{
    DWORD available = 0;
    DWORD count = 0;
    if (system.available(page, &available, 0, 0) == FALSE ||
        system.read(page, block.data(), std::min(available, static_cast<DWORD>(block.size())), &count) == FALSE) {
        return {};
    }
    return {block.data(), count};
}

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
    const Functions system(m_library);
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
    if (!page) {
        return;
    }
    std::vector<char> block(ReadAhead);
    Pieces pieces(pieceSize, take);
    for (std::string_view bytes = NextBytes(system, page.get(), block); !bytes.empty();
         bytes = NextBytes(system, page.get(), block)) {
        if (!pieces.Add(bytes)) {
            return;
        }
    }
    pieces.Finish();
}

} // namespace sitekeeper
