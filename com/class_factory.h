// Creates the objects of one class for COM. Aggregation is refused.
#pragma once

#include "platform/windows/system/counted.h"
#include "platform/windows/system/module_lock.h"

#include <unknwn.h>

namespace vellumo::com
{

class ClassFactory final : public windows::Counted<IClassFactory>
{
public:
    // Creates an object and hands out its interface `iid`; on failure sets error information. Never throws.
    using Creator = HRESULT (*)(REFIID iid, void** result) noexcept;

    explicit ClassFactory(Creator creator) noexcept
        : m_creator(creator)
    {
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    ~ClassFactory() override = default;
    [[nodiscard]] void* Find(REFIID iid) noexcept override;

    windows::ModuleLock m_moduleLock;
    Creator m_creator;
};

} // namespace vellumo::com
