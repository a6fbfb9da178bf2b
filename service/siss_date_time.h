// Dates in SISS messages are read as those of the regional tables are.
#pragma once

#include "environment/siss_date_time.h"

namespace vellumo::service
{

using environment::ConvertSissDateTime;
using environment::ReadableDate;
using environment::StoredDate;

} // namespace vellumo::service
