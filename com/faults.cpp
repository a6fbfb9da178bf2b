#include "com/faults.h"

#include "host/fault.h"
#include "platform/windows/adapters/bstr.h"

#include <new>
#include <string>

namespace vellumo::com
{
namespace
{

constexpr std::wstring_view sourceName = L"Vellumo.SISSProvider";

} // namespace

HRESULT Fail(HRESULT result, const IID& source, std::string_view description) noexcept
{
    // Without memory for the description the number alone has to do.
    host::PassOver(
        [&]
        {
            windows::ComPtr<ICreateErrorInfo> creator;
            if (SUCCEEDED(CreateErrorInfo(creator.Put())))
            {
                creator->SetGUID(source);
                creator->SetSource(windows::Bstr(sourceName).Get());
                creator->SetDescription(windows::Bstr(description).Get());
                SetErrorInfo(0, creator.As<IErrorInfo>(IID_IErrorInfo).Get());
            }
        });
    return result;
}

HRESULT FailWithCurrentException(const IID& source) noexcept
{
    try
    {
        throw;
    }
    catch (const host::Fault& fault)
    {
        return Fail(FAILED(fault.Number()) ? fault.Number() : faultOfTheLibrary, source, fault.what());
    }
    catch (const std::bad_alloc&)
    {
        return Fail(E_OUTOFMEMORY, source, "Memoria insufficiente.");
    }
    catch (const std::exception& failure)
    {
        std::string description; // stays empty when there is no memory for it
        host::PassOver([&] { description = std::string("Errore imprevisto in Vellumo: ") + failure.what(); });
        return Fail(E_UNEXPECTED, source, description);
    }
    catch (...)
    {
        return Fail(E_UNEXPECTED, source, "Errore imprevisto in Vellumo.");
    }
}

} // namespace vellumo::com
