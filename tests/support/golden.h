// Requests made from the delivered templates, and the whole documents that they are compared with.
#pragma once

#include "tests/support/installation.h"
#include "xml/document.h"

#include <doctest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace vellumo::tests
{

[[nodiscard]] inline std::string WholeFile(const std::filesystem::path& file)
{
    std::ifstream in(file);
    REQUIRE(in);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

inline void InstallTemplates(const Installation& installation)
{
    for (const auto& file : std::filesystem::directory_iterator(VELLUMO_TEMPLATES))
    {
        installation.Write("host\\SISS\\Templates\\" + file.path().filename().string(), WholeFile(file.path()));
    }
}

// The document tests/<room>/golden/<name>.xml as the library would write it.
[[nodiscard]] inline std::string Golden(const std::string& room, const std::string& name)
{
    const auto document =
        xml::Document::FromText(WholeFile(std::string(VELLUMO_TESTS) + "/" + room + "/golden/" + name + ".xml"));
    REQUIRE(document);
    return document->Xml();
}

} // namespace vellumo::tests
