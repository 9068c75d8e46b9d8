#include "app/DlgOccManager.h"

#include "frame/DialogTemplate.h"

#include <cstdint>

namespace sitekeeper {
namespace {

/// -14 as a signed 16-bit number: a rule of the suite, the same in all its programs.
constexpr std::uint16_t DialogFontSize = 0xFFF2;

} // namespace

std::optional<std::vector<std::byte>> CDlgOccManager::PreCreateDialog(std::span<const std::byte> dialogTemplate)
{
    return WithDialogFont(dialogTemplate, L"Segoe UI", DialogFontSize);
}

} // namespace sitekeeper
