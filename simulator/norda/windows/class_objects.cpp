#include "simulator/norda/windows/class_objects.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/adapters/host_names.h"
#include "platform/windows/adapters/registry_key.h"
#include "platform/windows/system/counted.h"
#include "platform/windows/system/text.h"
#include "simulator/norda/windows/dispatch_face.h"
#include "simulator/norda/windows/faces.h"
#include "simulator/norda/windows/renamed_library.h"

#include <array>
#include <utility>

namespace vellumo::norda
{

using windows::ComPtr;
namespace names = windows::names;

const CLSID bridgeClass{0x8f99d24a, 0x4e56, 0x4d6c, {0xa1, 0x1d, 0x8a, 0x56, 0xea, 0x12, 0x46, 0xb6}};

namespace
{

constexpr CLSID patientClass{0xefc74dbd, 0xb718, 0x475d, {0x9d, 0x92, 0xbb, 0x69, 0xde, 0x96, 0x9b, 0xde}};
constexpr CLSID aslClass{0x8172c88b, 0xb2c1, 0x4743, {0x8d, 0x64, 0x64, 0x29, 0xea, 0x4c, 0xdf, 0x00}};
constexpr CLSID specialistClass{0x5aec6df5, 0x2390, 0x41aa, {0x88, 0x8a, 0x38, 0x5b, 0xb5, 0x2f, 0x31, 0x5d}};
constexpr CLSID sessionClass{0x2e4f7a61, 0x51c8, 0x4d6b, {0xa3, 0x0f, 0x8c, 0x3d, 0x92, 0x17, 0x5e, 0xb4}};
constexpr CLSID prescriptionDataClass{0xb16c0d94, 0x7a3e, 0x4f25, {0x8e, 0x61, 0x0b, 0xd7, 0x49, 0xa8, 0x23, 0xfc}};
constexpr CLSID settingsClass{0x69df90c1, 0x048e, 0x417d, {0xb9, 0xb7, 0x48, 0xaf, 0x83, 0x45, 0x41, 0x8a}};

const std::wstring classes = L"Software\\Classes\\";

class Factory final : public windows::Counted<IClassFactory>
{
public:
    Factory(const CLSID& clsid, ObjectMaker make)
        : m_clsid(clsid)
        , m_make(std::move(make))
    {
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override
    {
        if (!result)
        {
            return E_POINTER;
        }
        *result = nullptr;
        if (outer)
        {
            return CLASS_E_NOAGGREGATION;
        }
        return host::Trap(E_FAIL,
                          [&]
                          {
                              const auto object = m_make();
                              if (DispatchFace* const face = DispatchFace::From(object.Get()))
                              {
                                  face->SetClass(m_clsid);
                              }
                              return object->QueryInterface(iid, result);
                          });
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    ~Factory() override = default;

    [[nodiscard]] void* Find(REFIID iid) noexcept override
    {
        return iid == IID_IUnknown || iid == IID_IClassFactory ? static_cast<IClassFactory*>(this) : nullptr;
    }

    CLSID m_clsid;
    ObjectMaker m_make;
};

std::wstring Spell(const CLSID& clsid)
{
    std::array<wchar_t, 40> text{};
    StringFromGUID2(clsid, text.data(), static_cast<int>(text.size()));
    return text.data();
}

// Of the user, and of the machine where that is allowed: Wine looks for classes only there.
const std::array<HKEY, 2> roots{HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE};

void WriteDefault(const std::wstring& path, const std::wstring& text)
{
    for (const HKEY root : roots)
    {
        windows::RegistryKey key;
        LSTATUS status = key.Create(root, classes + path, KEY_SET_VALUE);
        if (status == ERROR_SUCCESS)
        {
            status = key.SetText(nullptr, text);
        }
        if (root == HKEY_CURRENT_USER)
        {
            windows::ThrowIfFailed(HRESULT_FROM_WIN32(static_cast<DWORD>(status)),
                                   "HKEY_CURRENT_USER\\" + windows::FromWide(classes + path));
        }
    }
}

} // namespace

ClassObject::ClassObject(const CLSID& clsid, DWORD context, ObjectMaker make)
    : m_cookie(0)
{
    const auto factory = ComPtr<Factory>::Attach(new Factory(clsid, std::move(make)));
    windows::ThrowIfFailed(CoRegisterClassObject(clsid, factory.Get(), context, REGCLS_MULTIPLEUSE, &m_cookie),
                           "CoRegisterClassObject");
}

ClassObject::~ClassObject()
{
    if (m_cookie != 0)
    {
        CoRevokeClassObject(m_cookie);
    }
}

ClassObject::ClassObject(ClassObject&& other) noexcept
    : m_cookie(std::exchange(other.m_cookie, 0))
{
}

void WriteProgId(const std::wstring& progId, const CLSID& clsid, const std::wstring& server)
{
    WriteDefault(progId + L"\\CLSID", Spell(clsid));
    if (!server.empty())
    {
        WriteDefault(L"CLSID\\" + Spell(clsid) + L"\\LocalServer32", server);
    }
}

void RemoveProgId(const std::wstring& progId, const CLSID& clsid) noexcept
{
    for (const HKEY root : roots)
    {
        RegDeleteTreeW(root, (classes + progId).c_str());
        RegDeleteTreeW(root, (classes + L"CLSID\\" + Spell(clsid)).c_str());
    }
}

HostClasses::HostClasses(const Outside& outside)
    : m_behindNames(outside.renamedIn.empty() ? L"" : renamed)
{
    DispatchFace::Rename(outside.renamedIn.empty() ? L"" : renamed);
    try
    {
        if (host::Bridge* bridge = outside.bridge)
        {
            Offer(names::bridgeProgId, bridgeClass, [bridge] { return MakeBridgeFace(*bridge); });
        }
        if (host::HostObjects* objects = outside.objects)
        {
            const auto record = [objects](host::RecordKind kind)
            { return [objects, kind] { return MakeRecordFace(*objects, kind); }; };
            Offer(names::patientProgId, patientClass, record(host::RecordKind::Patient));
            Offer(names::aslProgId, aslClass, record(host::RecordKind::Asl));
            Offer(names::specialistProgId, specialistClass, record(host::RecordKind::Specialist));
            Offer(names::settingsProgId, settingsClass, [objects] { return MakeSettingsFace(*objects); });
        }
        if (host::PrescriptionObjects* const prescriptions = outside.prescriptions)
        {
            Offer(names::sessionProgId, sessionClass,
                  [prescriptions] {
                      return MakeSessionFace(
                          std::dynamic_pointer_cast<PrescriptionSession>(prescriptions->CreateSession()));
                  });
            Offer(names::prescriptionDataProgId, prescriptionDataClass,
                  [prescriptions] { return MakePrescriptionDataFace(*prescriptions); });
        }
    }
    catch (...)
    {
        Withdraw();
        throw;
    }
}

HostClasses::~HostClasses()
{
    Withdraw();
}

void HostClasses::Offer(const wchar_t* progId, const CLSID& clsid, ObjectMaker make)
{
    m_objects.emplace_back(clsid, CLSCTX_INPROC_SERVER, std::move(make));
    m_entries.emplace_back(progId + m_behindNames, clsid);
    WriteProgId(m_entries.back().first, clsid);
}

void HostClasses::Withdraw() noexcept
{
    m_objects.clear();
    for (const auto& [progId, clsid] : m_entries)
    {
        RemoveProgId(progId, clsid);
    }
}

} // namespace vellumo::norda
