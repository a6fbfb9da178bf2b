// The simulated host's classes as COM finds them: class objects of this process, and the registry entries that lead
// from their ProgIDs to them. The entries are the current user's and go away with the object. Only one process at a
// time may offer the classes, since the ProgIDs are the same for all.
#pragma once

#include "platform/windows/system/com_ptr.h"
#include "simulator/norda/provider_client.h"

#include <oaidl.h>

#include <functional>
#include <vector>

namespace vellumo::norda
{

using ObjectMaker = std::function<windows::ComPtr<IDispatch>()>;

// One class: the object that makes its instances stands for as long as this lives.
class ClassObject
{
public:
    // `context` is CLSCTX_INPROC_SERVER or CLSCTX_LOCAL_SERVER. Faults when COM refuses.
    ClassObject(const CLSID& clsid, DWORD context, ObjectMaker make);
    ~ClassObject();
    ClassObject(ClassObject&& other) noexcept;
    ClassObject& operator=(ClassObject&&) = delete;

private:
    DWORD m_cookie;
};

// Leads from `progId` to `clsid` for the current user. With a `server`, COM starts that program when it needs the
// class.
void WriteProgId(const std::wstring& progId, const CLSID& clsid, const std::wstring& server = {});
void RemoveProgId(const std::wstring& progId, const CLSID& clsid) noexcept;

// The class of the bridge, in this process or served by another.
extern const CLSID bridgeClass;

// Everything that the library creates by itself.
class HostClasses
{
public:
    explicit HostClasses(const Outside& outside);
    ~HostClasses();
    HostClasses(const HostClasses&) = delete;
    HostClasses& operator=(const HostClasses&) = delete;

private:
    void Offer(const wchar_t* progId, const CLSID& clsid, ObjectMaker make);
    void Withdraw() noexcept;

    std::wstring m_behindNames; // of the ProgIDs
    std::vector<ClassObject> m_objects;
    std::vector<std::pair<std::wstring, CLSID>> m_entries;
};

} // namespace vellumo::norda
