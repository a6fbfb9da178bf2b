#include "player/written.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <utility>

namespace vellumo::player
{
std::string FileName(std::string title)
{
    std::replace_if(
        title.begin(), title.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '-');
    return title;
}

std::string BooleanText(bool value)
{
    return value ? "True" : "False";
}

std::vector<std::filesystem::path> EntriesOf(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> entries;
    std::error_code none;
    for (const auto& entry : std::filesystem::directory_iterator(folder, none))
    {
        entries.push_back(entry.path());
    }
    const auto rank = [](const auto& path) { return std::pair(std::atoi(path.filename().string().c_str()), path); };
    std::sort(entries.begin(), entries.end(),
              [&](const auto& left, const auto& right) { return rank(left) < rank(right); });
    return entries;
}

std::string FileText(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
    {
        throw Differs(file.string() + ": the file cannot be read");
    }
    return {std::istreambuf_iterator<char>(in), {}};
}

} // namespace vellumo::player
