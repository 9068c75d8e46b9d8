#include "contract/WebWorld.h"
#include "support/MemoryWebSession.h"

#include <string>

namespace sitekeeper {
namespace {

class MemoryWebWorld final : public WebWorld
{
public:
    MemoryWebWorld()
    {
        for (const Served served :
             {Served::Page, Served::TinyPieces, Served::Chunked, Served::Moved, Served::Cut, Served::Reset}) {
            m_session.Publish(AddressOf(served), PageContent);
        }
        m_session.Publish(AddressOf(Served::Missing), MissingContent);
        m_session.Publish(AddressOf(Served::WrongLength), std::string(PageContent).substr(0, AnnouncedLength));
        m_session.Publish(AddressOf(Served::Empty), "");
        m_session.Publish(AddressOf(Served::Large), std::string(LargeLength, 'x'));
        m_session.PublishEndless(AddressOf(Served::Endless));
    }

    [[nodiscard]] WebSession& Session() override { return m_session; }
    [[nodiscard]] std::wstring AddressOf(Served served) const override
    {
        return L"https://memory.example/" + std::to_wstring(static_cast<int>(served));
    }
    [[nodiscard]] std::shared_ptr<void> TrustCertificate() override
    {
        m_session.Publish(AddressOf(Served::Secured), PageContent);
        return {};
    }

private:
    MemoryWebSession m_session;
};

} // namespace

std::unique_ptr<WebWorld> MakeWebWorld()
{
    return std::make_unique<MemoryWebWorld>();
}

} // namespace sitekeeper
