#include "frame/OccManager.h"

namespace sitekeeper {

std::optional<std::vector<std::byte>> COccManager::PreCreateDialog(std::span<const std::byte> /*dialogTemplate*/)
{
    return std::nullopt;
}

} // namespace sitekeeper
