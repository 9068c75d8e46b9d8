// What the contract tests of the web stand on: a session, and a server that behaves as badly as a test asks for.
#pragma once

#include "platform/WebSession.h"

#include <memory>
#include <string>

namespace sitekeeper {

/// What a server does with the visitor of an address.
enum class Served
{
    /// Sends the page.
    Page,
    /// Sends the page, byte by byte.
    TinyPieces,
    /// Sends the page without saying how long it is.
    Chunked,
    /// Says in its own words that there is no such page.
    Missing,
    /// Sends the visitor on to the page.
    Moved,
    /// Announces more than the page and closes the connection behind it.
    Cut,
    /// The same, but breaks the connection.
    Reset,
    /// Announces sixty bytes and sends the page.
    WrongLength,
    /// Sends a page without content.
    Empty,
    /// Sends x for as long as anybody listens.
    Endless,
    /// Sends a mebibyte of x.
    Large,
    /// Closes the connection without a word.
    Silent,
    /// Is not there.
    Refused,
    /// Sends the page over a secured connection.
    Secured,
};

class WebWorld
{
public:
    WebWorld() = default;
    WebWorld(const WebWorld&) = delete;
    WebWorld& operator=(const WebWorld&) = delete;
    virtual ~WebWorld() = default;

    [[nodiscard]] virtual WebSession& Session() = 0;
    [[nodiscard]] virtual std::wstring AddressOf(Served served) const = 0;

    /// The system trusts the certificate of the secured address until the result goes.
    [[nodiscard]] virtual std::shared_ptr<void> TrustCertificate() = 0;
};

/// The page, and what a server says that has none.
inline constexpr const char* PageContent =
    "<html>A page of more than fifty bytes, so that it comes in several pieces: LX_2023_Plus_Update</html>\r\n";
inline constexpr const char* MissingContent =
    "<html>There is no such page, says the server in its own words.</html>\r\n";
inline constexpr std::size_t AnnouncedLength = 60;
inline constexpr std::size_t LargeLength = std::size_t{1024} * 1024;

[[nodiscard]] std::unique_ptr<WebWorld> MakeWebWorld();

} // namespace sitekeeper
