// How a target says that the library and what it is held against do not agree: the program ends, and libFuzzer keeps
// the input.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

// Defined by each target; libFuzzer calls it with one input after the other.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace vellumo::fuzz
{

inline std::string_view View(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

inline void Require(bool holds, std::string_view what)
{
    if (!holds)
    {
        std::fprintf(stderr, "fuzz: %.*s\n", static_cast<int>(what.size()), what.data());
        std::abort();
    }
}

inline void RequireSame(std::string_view ours, std::string_view theirs, std::string_view what)
{
    if (ours != theirs)
    {
        std::fprintf(stderr, "fuzz: ours   \"%.*s\"\nfuzz: theirs \"%.*s\"\n", static_cast<int>(ours.size()),
                     ours.data(), static_cast<int>(theirs.size()), theirs.data());
        Require(false, what);
    }
}

// As plain as can be: what the library splits is held against it.
inline std::vector<std::string> Split(const std::string& text, const std::string& between)
{
    std::vector<std::string> parts;
    std::size_t at = 0;
    for (auto end = text.find(between); end != std::string::npos; end = text.find(between, at))
    {
        parts.push_back(text.substr(at, end - at));
        at = end + between.size();
    }
    parts.push_back(text.substr(at));
    return parts;
}

} // namespace vellumo::fuzz
