#include "simulator/norda/ansi_file.h"

#include "host/fault.h"
#include "host/text.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace vellumo::norda
{

namespace
{

// What Windows-1252 has at 0x80 … 0x9F; 0: nothing.
constexpr std::array<char32_t, 32> upper = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                            0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

char ToAnsi(char32_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
    {
        return static_cast<char>(c);
    }
    const auto* const found = std::find(upper.begin(), upper.end(), c);
    return found == upper.end() ? '?' : static_cast<char>(0x80 + (found - upper.begin()));
}

void AppendFromAnsi(std::string& out, unsigned char byte)
{
    const char32_t special = byte >= 0x80 && byte < 0xA0 ? upper[byte - 0x80U] : 0;
    host::AppendCharacter(special != 0 ? special : byte, out);
}

} // namespace

void WriteAnsiFile(const std::filesystem::path& file, std::string_view text)
{
    std::string bytes;
    for (std::size_t at = 0; at < text.size();)
    {
        const char32_t c = host::TakeCharacter(text, at);
        if (c == '\n')
        {
            bytes += '\r';
        }
        bytes += ToAnsi(c);
    }
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary) << bytes;
}

std::string ReadAnsiFile(const std::filesystem::path& file)
{
    std::ifstream in(file, std::ios::binary);
    if (!in)
    {
        throw host::Fault("Impossibile leggere il file.");
    }
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    std::string text;
    for (const char byte : bytes)
    {
        AppendFromAnsi(text, static_cast<unsigned char>(byte));
    }
    return text;
}

} // namespace vellumo::norda
