// What the simulated host shows of itself to the library: each of its C++ objects as a late-bound COM object with the
// member names that the library knows (platform/windows/adapters/host_names.h).
#pragma once

#include "host/bridge.h"
#include "host/connection.h"
#include "host/lock_srv.h"
#include "host/records.h"
#include "host/utils.h"
#include "platform/windows/system/com_ptr.h"
#include "simulator/norda/prescriptions.h"

#include <memory>

#include <oaidl.h>

namespace vellumo::norda
{

// Each returns a new object that the caller owns.
[[nodiscard]] windows::ComPtr<IDispatch> MakeConnectionFace(std::shared_ptr<host::Connection> connection);
[[nodiscard]] windows::ComPtr<IDispatch> MakeLockSrvFace(std::shared_ptr<host::LockSrv> lockSrv);
// What is behind such a face; null for an object that is none.
[[nodiscard]] std::shared_ptr<host::Connection> ConnectionOf(IDispatch* face);
[[nodiscard]] std::shared_ptr<host::LockSrv> LockSrvOf(IDispatch* face);
[[nodiscard]] windows::ComPtr<IDispatch> MakeRecordFace(std::shared_ptr<host::Record> record);
[[nodiscard]] windows::ComPtr<IDispatch> MakeUtilsFace(std::shared_ptr<host::Utils> utils);

// These only refer to what they wrap.
[[nodiscard]] windows::ComPtr<IDispatch> MakeBridgeFace(host::Bridge& bridge);
// A record of the host's: it takes the connection, the lock service and the practice as properties, and only then
// makes the record.
[[nodiscard]] windows::ComPtr<IDispatch> MakeRecordFace(host::HostObjects& objects, host::RecordKind kind);
[[nodiscard]] windows::ComPtr<IDispatch> MakeSettingsFace(host::HostObjects& objects);

[[nodiscard]] windows::ComPtr<IDispatch> MakePrescriptionDataFace(host::PrescriptionObjects& objects);

// The session as the library creates it. What it is given to keep are the library's COM objects; it holds each one
// and gives the same back.
[[nodiscard]] windows::ComPtr<IDispatch> MakeSessionFace(std::shared_ptr<PrescriptionSession> session);
// Null for an object that is no such face.
[[nodiscard]] std::shared_ptr<PrescriptionSession> SessionOf(IDispatch* face);
// The COM object in a slot of the session; null when there is none.
[[nodiscard]] windows::ComPtr<IDispatch> ObjectOf(const std::shared_ptr<host::KeptObject>& kept);

} // namespace vellumo::norda
