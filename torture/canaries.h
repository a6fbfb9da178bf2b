// What of the practice and on SISS says who somebody is or what he suffers from. It may stand in the host's own tables
// and in the exchange log, and nowhere else that an operation leaves a trace, whatever fails in it.
#pragma once

#include "player/run.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellumo::torture
{

class Canaries
{
public:
    // Those of the rows and of all citizens whom SISS knows.
    void Take(const norda::Snapshot& rows, const siss::Network& network);

    // Where one of them stands that must not: in lines of the journal, below SISS\Tracce, in an error that reached the
    // host, or in the package that support would get now.
    [[nodiscard]] std::vector<std::string> FindAstray(player::Run& run, const norda::Snapshot& now) const;
    // The same for what the support program says of the installation.
    [[nodiscard]] std::vector<std::string> FindInReport(const norda::Practice& practice) const;

private:
    void Add(std::string_view text);
    void LookInto(const std::string& place, std::string_view text, std::vector<std::string>& findings) const;

    std::map<std::string, std::set<std::string>, std::less<>> m_phrases; // in small letters, by their first word
};

} // namespace vellumo::torture
