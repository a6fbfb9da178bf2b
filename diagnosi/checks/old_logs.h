// Folders of the exchange log that are older than a practice wants to keep them. They hold personal data, and nothing
// else removes them.
#pragma once

#include "diagnosi/checks/machine.h"

#include <string>
#include <vector>

namespace vellumo::diagnosi
{

// Names of the folders of SISS\Log that are, by their name "yyyy-MM-dd hh.mm.ss", more than so many days old; oldest
// first. Whatever has another name is none of them.
[[nodiscard]] std::vector<std::string> OldLogFolders(const Machine& machine, int days);

// Removes these folders with the files in them. Returns the names of those that are still there: because a file is in
// use or may not be deleted, or because there is something else than files in it, which is left.
[[nodiscard]] std::vector<std::string> RemoveLogFolders(const Machine& machine, const std::vector<std::string>& names);

} // namespace vellumo::diagnosi
