// The files of the folder seed, built into the program.
#pragma once

#include <string_view>

namespace vellumo::norda::seed
{

// SQL scripts for Database::ExecuteScript.
extern const std::string_view schema;       // tables of both databases
extern const std::string_view views;        // run at every opening
extern const std::string_view shared;       // rows of the shared database
extern const std::string_view practice;     // rows of the practice
extern const std::string_view certificates; // its sickness certificates

// Files of the SISS client.
extern const std::string_view bridgeConf;
extern const std::string_view masterTable;
extern const std::string_view exemptionTable;
extern const std::string_view branchTable;
extern const std::string_view mappingTable;

} // namespace vellumo::norda::seed
