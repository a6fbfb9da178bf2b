// What leaves the practice when support asks for it: the report of the checks, the anonymised part of the exchange log
// with its page, and the files of SISS\Tracce, as one zip file. Made in memory, so that it can be looked at before
// anything is written.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"
#include "diagnosi/support/persons.h"
#include "host/date.h"

#include <string>
#include <vector>

namespace vellumo::diagnosi
{

struct PackageSource
{
    std::string logFolder; // Windows path texts; a folder that is not there is empty
    std::string traceFolder;
    Period period;
    std::string report; // of the checks, as text
    host::Date now;
    std::vector<std::string> names = {}; // of machine and user, which the report may show
};

struct PackageFile
{
    std::string name; // "/" between folders
    std::string bytes;
    host::Date time;
};

struct Package
{
    std::vector<PackageFile> files;  // the page is one of them
    std::string page;                // HTML: all that leaves, for the operator to look at
    std::vector<std::string> masked; // "codici fiscali: 12", a line each, for the operator to read before
};

// Nothing is written. `random`: by lot of the system when none is given.
[[nodiscard]] Package MakePackage(const PackageSource& source, Random random = {});

// The zip file. Faults when it would have more than 2 GB.
[[nodiscard]] std::string ZipOf(const Package& package);

} // namespace vellumo::diagnosi
