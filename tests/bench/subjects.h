// What is measured, each against a bare program doing the same work. The answer is whether the bounds are kept.
#pragma once

#include <filesystem>

namespace vellumo::bench
{

// `folder` is empty and belongs to the measurement.
[[nodiscard]] bool MeasureTables(const std::filesystem::path& folder);
[[nodiscard]] bool MeasurePatients(const std::filesystem::path& folder);
[[nodiscard]] bool MeasureProgress(const std::filesystem::path& folder);
// Tells only: no bound is set.
void MeasureMessages();

} // namespace vellumo::bench
