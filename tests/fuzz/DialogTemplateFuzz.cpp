// Any bytes as a dialog template: refused, or changed so that changing it again finds the same font and what follows
// the font is still there.
#include "frame/DialogTemplate.h"
#include "fuzz/FuzzInput.h"

#include <algorithm>
#include <vector>

namespace {

using namespace sitekeeper;

constexpr std::uint16_t SizeWord = 0xFFF2;
constexpr std::size_t Alignment = 4;

void CheckFont(std::span<const std::byte> bytes)
{
    const auto changed = WithDialogFont(bytes, L"Segoe UI", SizeWord);
    if (!changed) {
        return;
    }
    Require(WithDialogFont(*changed, L"Segoe UI", SizeWord) == changed);
    const auto longer = WithDialogFont(*changed, L"A face with quite a long name", 8);
    Require(longer.has_value());
    Require(WithDialogFont(*longer, L"Segoe UI", SizeWord) == changed);
}

/// Controls without a zero among their bytes: no text of the head can end in them, so none of them belongs to it.
void CheckItems(std::span<const std::byte> bytes)
{
    std::vector<std::byte> whole(bytes.begin(), bytes.end());
    whole.resize((whole.size() + Alignment - 1) / Alignment * Alignment);
    const std::vector<std::byte> items(16, std::byte{0x5A});
    whole.insert(whole.end(), items.begin(), items.end());
    const auto changed = WithDialogFont(whole, L"Segoe UI", SizeWord);
    if (changed) {
        Require(changed->size() % Alignment == 0);
        Require(std::equal(items.rbegin(), items.rend(), changed->rbegin()));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    CheckFont(AsBytes(data, size));
    CheckItems(AsBytes(data, size));
    return 0;
}
