#include "contract/World.h"

#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {
namespace {

class CodePageContract : public ::testing::Test
{
protected:
    [[nodiscard]] std::wstring Decoded(const std::string& bytes) const
    {
        std::wstring text = L"before ";
        codePage.Decode(bytes, text);
        EXPECT_EQ(text.substr(0, 7), L"before ");
        return text.substr(7);
    }
    /// Nothing where it is refused.
    [[nodiscard]] std::optional<std::string> Encoded(const std::wstring& text) const
    {
        std::string bytes = "before ";
        const bool isDone = codePage.Encode(text, bytes);
        EXPECT_EQ(bytes.substr(0, 7), "before ");
        if (!isDone) {
            EXPECT_EQ(bytes, "before ");
            return std::nullopt;
        }
        return bytes.substr(7);
    }

    std::unique_ptr<World> world = MakeWorld();
    const CodePage& codePage = world->TheCodePage();
};

TEST_F(CodePageContract, KeepsPlainCharactersAtTheirNumbers)
{
    for (int number = 0; number < 128; ++number) {
        const std::string byte(1, static_cast<char>(number));
        const std::wstring text(1, static_cast<wchar_t>(number));
        EXPECT_EQ(Decoded(byte), text) << number;
        EXPECT_EQ(Encoded(text), byte) << number;
    }
}

// Bytes that are no character by themselves all decode alike.
TEST_F(CodePageContract, TakesEachCharacterBackToItsByte)
{
    std::map<std::wstring, std::vector<std::string>> bytesOf;
    for (int number = 0; number < 256; ++number) {
        const std::string byte(1, static_cast<char>(number));
        bytesOf[Decoded(byte)].push_back(byte);
    }
    int characters = 0;
    for (const auto& [text, bytes] : bytesOf) {
        if (bytes.size() == 1) {
            ++characters;
            EXPECT_EQ(Encoded(text), bytes.front());
        }
    }
    EXPECT_GE(characters, 127);
}

TEST_F(CodePageContract, DecodesWhateverBytesThereAre)
{
    std::string bytes;
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            bytes = {'a', static_cast<char>(first), static_cast<char>(second)};
            const std::wstring text = Decoded(bytes);
            EXPECT_GE(text.size(), 2U) << first << ' ' << second;
            EXPECT_LE(text.size(), 3U) << first << ' ' << second;
            EXPECT_EQ(text.front(), L'a');
        }
    }
}

TEST_F(CodePageContract, TakesTextsOfSeveralCharacters)
{
    EXPECT_EQ(Decoded(""), L"");
    EXPECT_EQ(Encoded(L""), "");
    const std::wstring withZero(L"a\0b\r\nc\0", 7);
    EXPECT_EQ(Encoded(withZero), std::string("a\0b\r\nc\0", 7));
    EXPECT_EQ(Decoded(std::string("a\0b\r\nc\0", 7)), withZero);
    const std::optional<std::string> name = Encoded(L"M\u00FCller");
    if (name) { // which not every code page has
        EXPECT_EQ(Decoded(*name), L"M\u00FCller");
    }
    const std::wstring longText(200'000, L'x');
    EXPECT_EQ(Encoded(longText), std::string(200'000, 'x'));
    EXPECT_EQ(Decoded(std::string(200'000, 'x')), longText);
}

TEST_F(CodePageContract, RefusesWhatHasNoBytes)
{
    for (const std::wstring& character : world->WithoutBytes()) {
        EXPECT_EQ(Encoded(character), std::nullopt) << ::testing::PrintToString(character);
        EXPECT_EQ(Encoded(L"plain " + character), std::nullopt);
        EXPECT_EQ(Encoded(character + L" plain"), std::nullopt);
    }
}

TEST_F(CodePageContract, TellsQuestionMarksFromRefusals)
{
    EXPECT_EQ(Encoded(L"?"), "?");
    EXPECT_EQ(Encoded(L"who?"), "who?");
}

} // namespace
} // namespace sitekeeper
