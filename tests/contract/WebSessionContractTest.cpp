#include "contract/WebWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace sitekeeper {
namespace {

using testing::IsEmpty;

constexpr std::size_t PieceSize = 50;

class WebSessionContract : public testing::Test
{
protected:
    /// The pieces of a page, read to its end.
    [[nodiscard]] std::vector<std::string> Pieces(Served served, std::size_t size = PieceSize) const
    {
        std::vector<std::string> pieces;
        world->Session().ReadPage(world->AddressOf(served), size, [&pieces](std::string_view piece) {
            pieces.emplace_back(piece);
            return true;
        });
        return pieces;
    }

    [[nodiscard]] std::string Content(Served served) const
    {
        std::string content;
        for (const std::string& piece : Pieces(served)) {
            content += piece;
        }
        return content;
    }

    std::unique_ptr<WebWorld> world = MakeWebWorld();
};

TEST_F(WebSessionContract, HandsOnAPageInPiecesOfTheSizeAskedFor)
{
    const std::string page = PageContent;
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}, PieceSize, page.size(), page.size() + 1}) {
        std::vector<std::string> expected;
        for (std::size_t place = 0; place < page.size(); place += size) {
            expected.push_back(page.substr(place, size));
        }
        EXPECT_EQ(Pieces(Served::Page, size), expected) << size;
    }
}

TEST_F(WebSessionContract, CutsPiecesTheSameHoweverThePageComes)
{
    const std::vector<std::string> pieces = Pieces(Served::Page);
    EXPECT_EQ(Pieces(Served::TinyPieces), pieces);
    EXPECT_EQ(Pieces(Served::Chunked), pieces);
}

TEST_F(WebSessionContract, HandsOnWhatAServerSaysThatHasNoSuchPage)
{
    EXPECT_EQ(Content(Served::Missing), MissingContent);
}

TEST_F(WebSessionContract, FollowsAServerThatSendsItOn)
{
    EXPECT_EQ(Content(Served::Moved), PageContent);
}

TEST_F(WebSessionContract, HandsOnWhatCameBeforeTheConnectionBroke)
{
    EXPECT_EQ(Content(Served::Cut), PageContent);
    EXPECT_EQ(Content(Served::Reset), PageContent);
}

TEST_F(WebSessionContract, HandsOnAtLeastTheAnnouncedLength)
{
    const std::string content = Content(Served::WrongLength);
    EXPECT_GE(content.size(), AnnouncedLength);
    EXPECT_EQ(content, std::string(PageContent).substr(0, content.size()));
}

TEST_F(WebSessionContract, HandsOnNothingWhereThereIsNothing)
{
    EXPECT_THAT(Pieces(Served::Empty), IsEmpty());
    EXPECT_THAT(Pieces(Served::Silent), IsEmpty());
    EXPECT_THAT(Pieces(Served::Refused), IsEmpty());
}

TEST_F(WebSessionContract, HandsOnEachByteOfALargePage)
{
    const std::string content = Content(Served::Large);
    EXPECT_EQ(content.size(), LargeLength);
    EXPECT_EQ(content.find_first_not_of('x'), std::string::npos);
}

TEST_F(WebSessionContract, EndsWhenNoMoreIsWanted)
{
    constexpr std::size_t Wanted = 10'000;
    for (const Served served : {Served::Endless, Served::Large}) {
        std::size_t count = 0;
        world->Session().ReadPage(world->AddressOf(served), PieceSize,
                                  [&count](std::string_view piece) { return (count += piece.size()) < Wanted; });
        EXPECT_EQ(count, Wanted);
    }
}

TEST_F(WebSessionContract, CanReadAgain)
{
    EXPECT_EQ(Content(Served::Page), PageContent);
    EXPECT_THAT(Pieces(Served::Refused), IsEmpty());
    EXPECT_EQ(Content(Served::Page), PageContent);
}

// The system reads once in a process whom it trusts, so these two need a process each, as ctest gives them.
TEST_F(WebSessionContract, TrustsNoStranger)
{
    EXPECT_THAT(Pieces(Served::Secured), IsEmpty());
}

TEST_F(WebSessionContract, TrustsWhomTheSystemTrusts)
{
    const std::shared_ptr<void> trust = world->TrustCertificate();
    EXPECT_EQ(Content(Served::Secured), PageContent);
}

TEST_F(WebSessionContract, PassesErrorsOfTheTakerOn)
{
    EXPECT_THROW(world->Session().ReadPage(world->AddressOf(Served::Page), PieceSize,
                                           [](std::string_view) -> bool { throw std::runtime_error("full"); }),
                 std::runtime_error);
    EXPECT_EQ(Content(Served::Page), PageContent);
}

TEST_F(WebSessionContract, OpensNoAddressThatIsNone)
{
    std::size_t count = 0;
    for (const wchar_t* const address : {L"", L"no address", L"http://", L"C:\\Windows\\win.ini", L"nobody://here/"}) {
        world->Session().ReadPage(address, PieceSize, [&count](std::string_view piece) {
            count += piece.size();
            return true;
        });
    }
    EXPECT_EQ(count, 0U);
}

} // namespace
} // namespace sitekeeper
