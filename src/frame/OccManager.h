// The manager of the control containers: sees every dialog template before a dialog is made of it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace sitekeeper {

class COccManager
{
public:
    COccManager() = default;
    COccManager(const COccManager&) = delete;
    COccManager& operator=(const COccManager&) = delete;
    virtual ~COccManager() = default;

    /// Called with the template of each dialog before its creation. A copy to use instead, or nothing to use the
    /// template as it is, which is the inherited answer.
    [[nodiscard]] virtual std::optional<std::vector<std::byte>>
    PreCreateDialog(std::span<const std::byte> dialogTemplate);
};

} // namespace sitekeeper
