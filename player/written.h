// What scenarios and the messages about them are written with.
#pragma once

#include "host/text.h"
#include "simulator/screen/differs.h"

#include <filesystem>
#include <string>
#include <vector>

namespace vellumo::player
{

using host::Joined;
using host::Replaced;
using screen::Differs; // Whoever plays the line that it is about names its place.
using screen::Expect;
using screen::Numbered;
using screen::Quoted;

// A file's name for a title.
[[nodiscard]] std::string FileName(std::string title);

// "True", "False"
[[nodiscard]] std::string BooleanText(bool value);

// What is in a folder, by the numbers that the names begin with; nothing when there is no such folder.
[[nodiscard]] std::vector<std::filesystem::path> EntriesOf(const std::filesystem::path& folder);
// All that stands in it, byte for byte. Throws Differs when it cannot be read.
[[nodiscard]] std::string FileText(const std::filesystem::path& file);

} // namespace vellumo::player
