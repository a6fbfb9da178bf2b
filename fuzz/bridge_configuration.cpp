// The configuration file of the SISS client's bridge, held against lines taken apart one by one.
#include "environment/siss_configuration.h"
#include "fuzz/oracle.h"
#include "tests/support/installation.h"

#include <strings.h>

#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

std::vector<std::string> Split(const std::string& text, const std::string& between)
{
    std::vector<std::string> parts(1);
    for (std::size_t at = 0; at < text.size();)
    {
        if (text.compare(at, between.size(), between) == 0)
        {
            parts.emplace_back();
            at += between.size();
        }
        else
        {
            parts.back() += text[at++];
        }
    }
    return parts;
}

bool IsDumper(const std::string& text)
{
    bool is = false;
    for (const auto& line : Split(text, "\r\n"))
    {
        const auto parts = Split(line, "=");
        if (parts.size() > 1 && parts[0] == "modalita")
        {
            is = parts[1].size() == 6 && strncasecmp(parts[1].c_str(), "DUMPER", 6) == 0;
        }
    }
    return is;
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    static tests::Installation installation;
    const std::string text(fuzz::View(data, size));
    installation.Write("client\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf", text);
    const environment::SISSConfiguration configuration(installation.settings);
    fuzz::Require(configuration.IsPersonaleStudio() == fuzz::IsDumper(text), "whether the bridge is a dumper");
    return 0;
}
