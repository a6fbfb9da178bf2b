// engines [--show NAME] FOLDER...: what the library makes of each text of a corpus, a line each: "refused NAME", or
// "read HASH NAME" with a hash of the whole tree as text. The corpus is our own texts and all files below the folders,
// as they are and, where they have one, without their document type declaration, which the library refuses. `--show`
// writes the text of that name instead.
#include "environment/declared_encoding.h"
#include "environment/files.h"
#include "tests/engines/own_texts.h"
#include "xml/document.h"

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::engines
{
namespace
{

namespace fs = std::filesystem;

std::uint64_t Hash(std::string_view text)
{
    std::uint64_t hash = 14695981039346656037U; // FNV-1a
    for (const char character : text)
    {
        hash = (hash ^ static_cast<unsigned char>(character)) * 1099511628211U;
    }
    return hash;
}

// The text without "<!DOCTYPE … >"; nothing when it has none.
std::optional<std::string> WithoutDocumentType(const std::string& text)
{
    const auto begin = text.find("<!DOCTYPE");
    if (begin == std::string::npos)
    {
        return std::nullopt;
    }
    auto end = text.find_first_of("[>", begin);
    if (end != std::string::npos && text[end] == '[')
    {
        do
        {
            end = text.find(']', end + 1);
            end = end == std::string::npos ? end : text.find_first_not_of(" \t\r\n", end + 1);
        } while (end != std::string::npos && text[end] != '>');
    }
    return end == std::string::npos ? std::nullopt : std::optional(text.substr(0, begin) + text.substr(end + 1));
}

// By names below the folder's own, the same on every target.
std::map<std::string, fs::path> FilesOf(const fs::path& folder)
{
    std::map<std::string, fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
    {
        if (entry.is_regular_file())
        {
            const auto below = fs::relative(entry.path(), folder.parent_path());
            files.emplace(below.generic_string(), entry.path());
        }
    }
    return files;
}

void PlayFiles(const fs::path& folder, const Play& play)
{
    for (const auto& [name, path] : FilesOf(folder))
    {
        const auto text = environment::DecodeXml(environment::ReadFile(path.string()).value());
        play(name, text.value_or("an encoding that the library does not know"));
        if (const auto bare = text ? WithoutDocumentType(*text) : std::nullopt)
        {
            play(name + " without its document type", *bare);
        }
    }
}

void Tell(const std::string& name, const std::string& text)
{
    if (const auto document = xml::Document::FromText(text))
    {
        std::printf("read %016" PRIx64 " %s\n", Hash(document->Xml()), name.c_str());
    }
    else
    {
        std::printf("refused %s\n", name.c_str());
    }
}

} // namespace
} // namespace vellumo::engines

int main(int count, char** arguments)
{
    using namespace vellumo::engines;
    std::vector<std::string> words(arguments + 1, arguments + count);
    std::string shown;
    if (words.size() > 1 && words.front() == "--show")
    {
        shown = words[1];
        words.erase(words.begin(), words.begin() + 2);
    }
    const Play play = [&](const std::string& name, const std::string& text)
    {
        if (shown.empty())
        {
            Tell(name, text);
        }
        else if (name == shown)
        {
            const auto document = vellumo::xml::Document::FromText(text);
            std::printf("%s\n=> %s\n", text.c_str(), document ? document->Xml().c_str() : "refused");
        }
    };
    try
    {
        PlayOwnTexts(play);
        for (const auto& folder : words)
        {
            PlayFiles(std::filesystem::path(folder), play);
        }
        return 0;
    }
    catch (const std::exception& fault)
    {
        std::fprintf(stderr, "engines: %s\n", fault.what());
        return 2;
    }
}
