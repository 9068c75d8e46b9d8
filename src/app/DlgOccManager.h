// Gives every dialog of the program the same face.
#pragma once

#include "frame/OccManager.h"

namespace sitekeeper {

class CDlgOccManager final : public COccManager
{
public:
    /// A copy of the template with "Segoe UI" as its font, whatever its resource says. Nothing for a template that ends
    /// inside its head; the system then refuses it.
    [[nodiscard]] std::optional<std::vector<std::byte>>
    PreCreateDialog(std::span<const std::byte> dialogTemplate) override;
};

} // namespace sitekeeper
