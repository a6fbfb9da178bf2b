// The base of every COM object: its reference count, and how it is asked for its interfaces. An object is born with one
// reference, which belongs to whoever created it, and is destroyed with the last one.
//
// `Interfaces` are those that the object implements, each once; `Find` says which of them an identifier stands for.
#pragma once

#include <windows.h> // before the header below, which does not stand alone

#include <oleauto.h>

#include <atomic>

namespace vellumo::windows
{

template <class... Interfaces>
class Counted : public Interfaces...
{
public:
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** result) override
    {
        if (!result)
        {
            SetErrorInfo(0, nullptr);
            return E_POINTER;
        }
        *result = Find(iid);
        if (!*result)
        {
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }

    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }

    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
        {
            // Letting go of what the object holds may lead back here; a reference taken and dropped then must not
            // destroy it a second time.
            m_references = 1;
            delete this;
        }
        return left;
    }

protected:
    Counted() = default;
    virtual ~Counted() = default;

    // The object by that interface, not counted; null when it does not have it.
    [[nodiscard]] virtual void* Find(REFIID iid) noexcept = 0;

private:
    std::atomic<ULONG> m_references = 1;
};

} // namespace vellumo::windows
