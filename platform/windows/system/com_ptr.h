// Owner of one reference to a COM object, the only place that calls AddRef and Release. Copying takes a reference
// more, `Detach` and `CopyTo` hand one to the caller.
#pragma once

#include <unknwn.h>

#include <cstddef>
#include <utility>

namespace vellumo::windows
{

template <class Interface>
class ComPtr
{
public:
    ComPtr() = default;
    ComPtr(std::nullptr_t) {}
    explicit ComPtr(Interface* object)
        : m_object(object)
    {
        AddReference();
    }
    ComPtr(const ComPtr& other)
        : m_object(other.m_object)
    {
        AddReference();
    }
    ComPtr(ComPtr&& other) noexcept
        : m_object(std::exchange(other.m_object, nullptr))
    {
    }
    ~ComPtr() { Reset(); }
    ComPtr& operator=(ComPtr other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }

    // Takes over a reference that the caller owns.
    [[nodiscard]] static ComPtr Attach(Interface* object)
    {
        ComPtr pointer;
        pointer.m_object = object;
        return pointer;
    }

    [[nodiscard]] Interface* Get() const noexcept { return m_object; }
    Interface* operator->() const noexcept { return m_object; }
    Interface& operator*() const noexcept { return *m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    void Reset() noexcept
    {
        // The member is cleared first: releasing may lead back here.
        if (Interface* object = std::exchange(m_object, nullptr))
        {
            object->Release();
        }
    }

    // For functions that return an object through a pointer; drops what was held.
    [[nodiscard]] Interface** Put() noexcept
    {
        Reset();
        return &m_object;
    }
    [[nodiscard]] void** PutVoid() noexcept { return reinterpret_cast<void**>(Put()); }

    [[nodiscard]] Interface* Detach() noexcept { return std::exchange(m_object, nullptr); }
    void CopyTo(Interface** result) const noexcept { *result = ComPtr(*this).Detach(); }

    // The same object by another of its interfaces; empty when it does not have it.
    template <class Other>
    [[nodiscard]] ComPtr<Other> As(const IID& iid) const noexcept
    {
        ComPtr<Other> other;
        if (!m_object || FAILED(m_object->QueryInterface(iid, other.PutVoid())))
        {
            return {};
        }
        return other;
    }

private:
    void AddReference() const noexcept
    {
        if (m_object)
        {
            m_object->AddRef();
        }
    }

    Interface* m_object = nullptr;
};

} // namespace vellumo::windows
