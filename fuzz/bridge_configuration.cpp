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
