// One folder of the exchange log: its files, paired into calls.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::diagnosi
{

// In the order of their numbers. What lies there and is no file of the log, or cannot be read, goes into `skipped`.
[[nodiscard]] std::vector<Call> ReadFolder(std::string_view logFolder, const std::string& name,
                                           std::vector<std::string>& skipped);

} // namespace vellumo::diagnosi
