// Creates the objects of one class for COM. Aggregation is refused.
#pragma once

#include "com/module.h"

#include <unknwn.h>

#include <atomic>

namespace vellumo::com
{

class ClassFactory final : public IClassFactory
{
public:
    // Creates an object and answers its interface `iid`; on failure sets error information. Never throws.
    using Creator = HRESULT (*)(REFIID iid, void** result) noexcept;

    explicit ClassFactory(Creator creator) noexcept
        : m_creator(creator)
    {
    }
    ClassFactory(const ClassFactory&) = delete;
    ClassFactory& operator=(const ClassFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** result) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    virtual ~ClassFactory() = default;

    ModuleLock m_moduleLock;
    std::atomic<ULONG> m_references = 1;
    Creator m_creator;
};

} // namespace vellumo::com
