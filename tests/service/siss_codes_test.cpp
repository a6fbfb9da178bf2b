// What people read about a code is what the table says, in the document as in the programs.
#include "service/siss_codes.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

using namespace vellumo::service;

TEST_CASE("the document has every code that the library knows, and no other")
{
    std::string rows;
    for (const auto& row : SissCodes())
    {
        rows += "| `" + std::string(row.code) + "` | ";
        for (const auto cell : {row.meaning, row.who, row.remedy, row.reaction})
        {
            rows += std::string(cell) + " |" + (cell.data() == row.reaction.data() ? "\n" : " ");
        }
    }
    std::ifstream in(std::filesystem::path(VELLUMO_DOCUMENTS) / "assistenza.md", std::ios::binary);
    const std::string document{std::istreambuf_iterator<char>(in), {}};
    const auto begin = document.find("\n| `SEBCONT0001` |") + 1;
    CHECK(document.substr(begin, document.find("\n\n", begin) + 1 - begin) == rows);
}

TEST_CASE("no document names a code that nobody has explained")
{
    const std::regex code("`([A-Z]{2,8}[0-9]{3,9})`");
    int found = 0;
    for (const auto& file : std::filesystem::directory_iterator(VELLUMO_DOCUMENTS))
    {
        if (!file.is_regular_file())
        {
            continue;
        }
        std::ifstream in(file.path(), std::ios::binary);
        const std::string document{std::istreambuf_iterator<char>(in), {}};
        for (auto at = std::sregex_iterator(document.begin(), document.end(), code); at != std::sregex_iterator(); ++at)
        {
            INFO(file.path().filename().string(), ": ", (*at)[1].str());
            CHECK_FALSE(ExplainSissCode((*at)[1].str()).code.empty());
            ++found;
        }
    }
    CHECK(found > 10);
}

TEST_CASE("a code that nobody has explained is not explained by chance")
{
    for (const auto& row : SissCodes())
    {
        CHECK(ExplainSissCode(row.code).meaning == row.meaning);
    }
    for (const auto* const other : {"", "SEBC0000", "sebc00001", "SOAP-ENV:Server"})
    {
        CHECK(ExplainSissCode(other).code.empty());
        CHECK(ExplainSissCode(other).meaning == "non documentato: chiedere all'assistenza SISS");
    }
}
