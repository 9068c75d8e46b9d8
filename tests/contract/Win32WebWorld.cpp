// The real session, and the server that this test was started beside (tests/support/web_server.py).
#include "contract/WebWorld.h"
#include "win32/Win32WebSession.h"

#include <windows.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>
#include <wincrypt.h>

namespace sitekeeper {
namespace {

std::string Given(const char* variable)
{
    const char* const text = std::getenv(variable);
    if (text == nullptr) {
        throw std::runtime_error(std::string(variable) + " is not set: start this test through web_server.py");
    }
    return text;
}

std::wstring Widened(const std::string& text)
{
    return {text.begin(), text.end()}; // addresses are ASCII
}

const wchar_t* PathOf(Served served)
{
    switch (served) {
    case Served::TinyPieces: return L"/tiny";
    case Served::Chunked: return L"/chunked";
    case Served::Missing: return L"/missing";
    case Served::Moved: return L"/moved";
    case Served::Cut: return L"/cut";
    case Served::Reset: return L"/reset";
    case Served::WrongLength: return L"/wrong-length";
    case Served::Empty: return L"/empty";
    case Served::Endless: return L"/endless";
    case Served::Large: return L"/large";
    case Served::Silent: return L"/silent";
    default: return L"/page";
    }
}

/// The server's certificate among the user's trusted ones. Each server makes a certificate of its own, so tests that
/// run side by side do not disturb each other.
class Trust
{
public:
    explicit Trust(const std::string& file)
        : m_store(::CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_CURRENT_USER, L"Root"))
    {
        std::ifstream stream(file, std::ios::binary);
        const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
        if (::CertAddEncodedCertificateToStore(m_store, X509_ASN_ENCODING, reinterpret_cast<const BYTE*>(bytes.data()),
                                               static_cast<DWORD>(bytes.size()), CERT_STORE_ADD_REPLACE_EXISTING,
                                               &m_certificate) == FALSE) {
            throw std::runtime_error("the test cannot have its certificate trusted");
        }
        ::CertControlStore(m_store, 0, CERT_STORE_CTRL_COMMIT, nullptr); // for others to see at once
    }
    Trust(const Trust&) = delete;
    Trust& operator=(const Trust&) = delete;
    ~Trust()
    {
        ::CertDeleteCertificateFromStore(m_certificate); // gives the certificate up as well
        ::CertCloseStore(m_store, 0);
    }

private:
    HCERTSTORE m_store;
    PCCERT_CONTEXT m_certificate = nullptr;
};

class Win32WebWorld final : public WebWorld
{
public:
    [[nodiscard]] WebSession& Session() override { return m_session; }
    [[nodiscard]] std::wstring AddressOf(Served served) const override
    {
        const char* const server = served == Served::Refused   ? "SITEKEEPER_WEB_REFUSED"
                                   : served == Served::Secured ? "SITEKEEPER_WEB_TLS"
                                                               : "SITEKEEPER_WEB";
        return Widened(Given(server)) + PathOf(served);
    }
    [[nodiscard]] std::shared_ptr<void> TrustCertificate() override
    {
        return std::make_shared<Trust>(Given("SITEKEEPER_WEB_CERTIFICATE"));
    }

private:
    Win32WebSession m_session{L"SiteKeeper"};
};

} // namespace

std::unique_ptr<WebWorld> MakeWebWorld()
{
    return std::make_unique<Win32WebWorld>();
}

} // namespace sitekeeper
