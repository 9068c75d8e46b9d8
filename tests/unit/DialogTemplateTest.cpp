#include "frame/DialogTemplate.h"

#include "support/TemplateBuilder.h"

#include <gtest/gtest.h>
#include <random>

namespace sitekeeper {
namespace {

using Bytes = std::vector<std::byte>;

constexpr std::uint32_t Popup = 0x80C800C4 & ~0x40U; // a usual dialog's style, without the bit for a font
constexpr std::uint32_t WithFont = Popup | 0x40U;
constexpr std::uint32_t WithShellFont = Popup | 0x48U;
constexpr std::uint16_t SizeWord = 0xFFF2;
constexpr const wchar_t* Face = L"Segoe UI";

std::optional<Bytes> Changed(const Bytes& dialogTemplate)
{
    return WithDialogFont(dialogTemplate, Face, SizeWord);
}

/// Menu, window class and title in all their forms, to be put behind a head.
struct NameParts
{
    const char* what;
    void (*append)(TemplateBuilder&);
};
const NameParts AllNames[] = {
    {"nothing", [](TemplateBuilder& to) { to.Text(L"").Text(L"").Text(L""); }},
    {"a blank title", [](TemplateBuilder& to) { to.Text(L"").Text(L"").Text(L" "); }},
    {"a menu number", [](TemplateBuilder& to) { to.Number(133).Text(L"").Text(L"T"); }},
    {"a class number", [](TemplateBuilder& to) { to.Text(L"").Number(0x8002).Text(L"Ti"); }},
    {"two numbers", [](TemplateBuilder& to) { to.Number(0xFFFF).Number(0).Text(L"Tit"); }},
    {"texts", [](TemplateBuilder& to) { to.Text(L"MENU").Text(L"CLASS").Text(L"Title"); }},
    {"a title that begins like a number", [](TemplateBuilder& to) { to.Text(L"").Text(L"").Text(L"\uFFFFx"); }},
};

/// Controls as the system keeps them; only their bytes matter here.
Bytes Items()
{
    Bytes items;
    for (int value = 1; value <= 45; ++value) {
        items.push_back(static_cast<std::byte>(value));
    }
    return items;
}

TemplateBuilder Head(bool isExtended, std::uint32_t style, std::uint16_t itemCount)
{
    TemplateBuilder builder;
    return isExtended ? builder.ExtendedHead(style, itemCount) : builder.PlainHead(style, itemCount);
}

TEST(DialogFont, IsExchangedInAPlainTemplate)
{
    for (const NameParts& names : AllNames) {
        for (const wchar_t* const oldFace : {L"", L"A", L"MS Shell Dlg", L"MS Shell Dlg 2"}) {
            TemplateBuilder before = Head(false, WithFont, 2);
            TemplateBuilder after = before;
            names.append(before);
            names.append(after);
            before.PlainFont(8, oldFace).Align().Bytes(Items());
            after.PlainFont(SizeWord, Face).Align().Bytes(Items());
            EXPECT_EQ(Changed(before.Result()), after.Result()) << names.what << ", " << oldFace;
        }
    }
}

TEST(DialogFont, KeepsWeightSlantAndSetInAnExtendedTemplate)
{
    for (const NameParts& names : AllNames) {
        for (const std::uint32_t style : {WithFont, WithShellFont}) {
            TemplateBuilder before = Head(true, style, 2);
            TemplateBuilder after = before;
            names.append(before);
            names.append(after);
            before.ExtendedFont(8, 700, 1, 204, L"MS Shell Dlg").Align().Bytes(Items());
            after.ExtendedFont(SizeWord, 700, 1, 204, Face).Align().Bytes(Items());
            EXPECT_EQ(Changed(before.Result()), after.Result()) << names.what;
        }
    }
}

TEST(DialogFont, IsPutIntoATemplateWithoutOne)
{
    for (const NameParts& names : AllNames) {
        TemplateBuilder plain = Head(false, Popup, 1);
        TemplateBuilder plainAfter = Head(false, WithFont, 1);
        names.append(plain);
        names.append(plainAfter);
        EXPECT_EQ(Changed(plain.Align().Bytes(Items()).Result()),
                  plainAfter.PlainFont(SizeWord, Face).Align().Bytes(Items()).Result())
            << names.what;

        TemplateBuilder extended = Head(true, Popup, 1);
        TemplateBuilder extendedAfter = Head(true, WithFont, 1);
        names.append(extended);
        names.append(extendedAfter);
        EXPECT_EQ(Changed(extended.Align().Bytes(Items()).Result()),
                  extendedAfter.ExtendedFont(SizeWord, 400, 0, 1, Face).Align().Bytes(Items()).Result())
            << names.what;
    }
}

TEST(DialogFont, NeedsNoItems)
{
    TemplateBuilder before = Head(false, WithFont, 0);
    before.Text(L"").Text(L"").Text(L"T").PlainFont(8, L"A");
    TemplateBuilder after = Head(false, WithFont, 0);
    after.Text(L"").Text(L"").Text(L"T").PlainFont(SizeWord, Face);
    EXPECT_EQ(Changed(before.Result()), after.Result());
    EXPECT_EQ(Changed(before.Align().Result()), after.Result()); // zeros up to items that do not come
}

TEST(DialogFont, OfAnyLengthLeavesTheItemsAligned)
{
    TemplateBuilder before = Head(true, WithFont, 1);
    before.Text(L"").Text(L"").Text(L"Title").ExtendedFont(8, 400, 0, 1, L"MS Shell Dlg").Align().Bytes(Items());
    for (std::size_t length = 0; length < 40; ++length) {
        const std::wstring face(length, L'f');
        const std::optional<Bytes> changed = WithDialogFont(before.Result(), face, 9);
        ASSERT_TRUE(changed);
        ASSERT_GE(changed->size(), Items().size());
        const std::size_t itemsAt = changed->size() - Items().size();
        EXPECT_EQ(itemsAt % 4, 0U) << length;
        EXPECT_EQ(Bytes(changed->begin() + static_cast<std::ptrdiff_t>(itemsAt), changed->end()), Items()) << length;
    }
}

TEST(DialogFont, CanBeExchangedAgain)
{
    for (const bool isExtended : {false, true}) {
        TemplateBuilder before = Head(isExtended, Popup, 1);
        before.Number(133).Text(L"CLASS").Text(L"Title").Align().Bytes(Items());
        const std::optional<Bytes> once = Changed(before.Result());
        ASSERT_TRUE(once);
        EXPECT_EQ(Changed(*once), once);
        const std::optional<Bytes> other = WithDialogFont(*once, L"Another face", 8);
        ASSERT_TRUE(other);
        EXPECT_NE(other, once);
        EXPECT_EQ(Changed(*other), once);
    }
}

/// Each template cut off behind each of its bytes: refused inside the head, otherwise changed with what is left.
void CutEverywhere(const Bytes& head, const Bytes& newHead)
{
    Bytes whole = head;
    whole.resize((whole.size() + 3) / 4 * 4);
    const std::size_t itemsAt = whole.size();
    const Bytes items = Items();
    whole.insert(whole.end(), items.begin(), items.end());
    for (std::size_t size = 0; size <= whole.size(); ++size) {
        const Bytes cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
        if (size < head.size()) {
            EXPECT_EQ(Changed(cut), std::nullopt) << size;
            continue;
        }
        Bytes expected = newHead;
        if (size > itemsAt) {
            expected.resize((expected.size() + 3) / 4 * 4);
            expected.insert(expected.end(), cut.begin() + static_cast<std::ptrdiff_t>(itemsAt), cut.end());
        }
        EXPECT_EQ(Changed(cut), expected) << size;
    }
}

TEST(DialogFont, IsRefusedForATemplateThatEndsInsideItsHead)
{
    for (const NameParts& names : AllNames) {
        SCOPED_TRACE(names.what);
        TemplateBuilder plain = Head(false, WithFont, 3);
        TemplateBuilder extended = Head(true, WithFont, 3);
        names.append(plain);
        names.append(extended);
        TemplateBuilder newPlain = plain;
        TemplateBuilder newExtended = extended;
        CutEverywhere(plain.PlainFont(8, L"MS Shell Dlg").Result(), newPlain.PlainFont(SizeWord, Face).Result());
        CutEverywhere(extended.ExtendedFont(8, 700, 0, 1, L"MS Shell Dlg").Result(),
                      newExtended.ExtendedFont(SizeWord, 700, 0, 1, Face).Result());
    }
}

TEST(DialogFont, IsRefusedForATextThatNeverEnds)
{
    for (const bool isExtended : {false, true}) {
        TemplateBuilder builder = Head(isExtended, WithFont, 1);
        builder.Bytes(Bytes(1001, std::byte{0x41}));
        EXPECT_EQ(Changed(builder.Result()), std::nullopt);
    }
}

TEST(DialogFont, IsFoundInAnyBytesWithoutReadingBeyondThem)
{
    std::mt19937 generator(20240506); // the same bytes in every run
    std::uniform_int_distribution<int> value(0, 255);
    std::uniform_int_distribution<std::size_t> size(0, 200);
    int templates = 0;
    for (int round = 0; round < 5000; ++round) {
        Bytes bytes(size(generator));
        for (std::byte& byte : bytes) {
            byte = static_cast<std::byte>(value(generator) < 64 ? 0 : value(generator));
        }
        const std::optional<Bytes> changed = Changed(bytes);
        if (changed) {
            ++templates;
            EXPECT_EQ(Changed(*changed), changed);
        }
    }
    EXPECT_GT(templates, 100); // some bytes are a template
}

} // namespace
} // namespace sitekeeper
