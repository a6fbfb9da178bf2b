// What is measured of the library under Wine. The answer is whether the bounds are kept.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

namespace vellumo::bench
{

class LibraryRun;

// What ours may take at most, in times of the bare one.
inline constexpr double mostTimes = 1.3;

// Whether somebody wants to know that.
using Wanted = std::function<bool(std::string_view what)>;

// `folder` is empty and belongs to the measurement.
[[nodiscard]] bool MeasureLibrary(const std::filesystem::path& folder, const Wanted& isWanted);

// Parts of it.
[[nodiscard]] bool MeasureList(LibraryRun& run, const std::filesystem::path& folder);
[[nodiscard]] bool MeasureTable(LibraryRun& run);
[[nodiscard]] bool MeasureMemory(LibraryRun& run);

} // namespace vellumo::bench
