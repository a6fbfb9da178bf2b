// A result of the simulated host's database in the object model of ADO: Recordset, Fields, Field.
#pragma once

#include "host/connection.h"
#include "platform/windows/system/com_ptr.h"

#include <memory>

#include <oaidl.h>

namespace vellumo::norda
{

// On the result's first row. A result without columns is a closed recordset, as ADO returns it for statements that
// return nothing.
[[nodiscard]] windows::ComPtr<IDispatch> MakeRecordsetFace(std::unique_ptr<host::Recordset> rows);

} // namespace vellumo::norda
