// The real program that notes how it was started.
#pragma once

#include "contract/World.h"

#include <optional>
#include <string>

namespace sitekeeper {

void CopyRecorder(const std::wstring& path);
[[nodiscard]] std::optional<StartedAs> RecordOf(const std::wstring& path);
[[nodiscard]] bool IsRecording(const std::wstring& path);
void EndRecording(const std::wstring& path);

} // namespace sitekeeper
