// Owner of one BSTR, the only place that calls SysFreeString. A null BSTR reads as "".
#pragma once

#include "platform/windows/system/text.h"

#include <windows.h> // before the header below, which does not stand alone

#include <oleauto.h>

#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace vellumo::windows
{

class Bstr
{
public:
    Bstr() = default;
    explicit Bstr(std::wstring_view text)
        : m_text(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
        if (!m_text)
        {
            throw std::bad_alloc();
        }
    }
    explicit Bstr(std::string_view text)
        : Bstr(std::wstring_view(ToWide(text)))
    {
    }
    Bstr(Bstr&& other) noexcept
        : m_text(std::exchange(other.m_text, nullptr))
    {
    }
    Bstr& operator=(Bstr&& other) noexcept
    {
        std::swap(m_text, other.m_text);
        return *this;
    }
    Bstr(const Bstr&) = delete;
    Bstr& operator=(const Bstr&) = delete;
    ~Bstr() { SysFreeString(m_text); }

    // Takes over a text that the caller owns.
    [[nodiscard]] static Bstr Attach(BSTR text) noexcept
    {
        Bstr owner;
        owner.m_text = text;
        return owner;
    }

    // What a BSTR holds, without owning it.
    [[nodiscard]] static std::wstring_view View(BSTR text) noexcept
    {
        return text ? std::wstring_view(text, SysStringLen(text)) : std::wstring_view();
    }

    [[nodiscard]] BSTR Get() const noexcept { return m_text; }
    [[nodiscard]] std::wstring_view Wide() const noexcept { return View(m_text); }
    [[nodiscard]] std::string Text() const { return FromWide(Wide()); }
    [[nodiscard]] bool IsEmpty() const noexcept { return SysStringLen(m_text) == 0; }

    // For functions that return a text through a pointer.
    [[nodiscard]] BSTR* Put() noexcept
    {
        Bstr().Swap(*this);
        return &m_text;
    }
    [[nodiscard]] BSTR Detach() noexcept { return std::exchange(m_text, nullptr); }

private:
    void Swap(Bstr& other) noexcept { std::swap(m_text, other.m_text); }

    BSTR m_text = nullptr;
};

} // namespace vellumo::windows
