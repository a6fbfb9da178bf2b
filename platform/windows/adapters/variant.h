// Owner of one VARIANT, the only place that calls VariantClear, and the conversion between VARIANT and host::Value.
#pragma once

#include "host/value.h"
#include "platform/windows/system/com_ptr.h"

#include <windows.h> // before the header below, which does not stand alone

#include <oleauto.h>

#include <string>
#include <string_view>
#include <vector>

namespace vellumo::windows
{

class Variant
{
public:
    Variant() noexcept { VariantInit(&m_variant); }
    // Null becomes VT_NULL; whole numbers beyond 32 bits become VT_DECIMAL, since many hosts do not know VT_I8.
    explicit Variant(const host::Value& value);
    // Shares the object: takes a reference of its own. A null object is VT_DISPATCH without an object ("Nothing").
    explicit Variant(IDispatch* object) noexcept;
    // A one-dimensional array of VARIANTs whose first index is 0.
    explicit Variant(const std::vector<host::Value>& values);
    // A deep copy.
    explicit Variant(const VARIANT& other);
    Variant(Variant&& other) noexcept;
    Variant& operator=(Variant&& other) noexcept;
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&m_variant); }

    [[nodiscard]] static Variant Text(std::wstring_view text);
    [[nodiscard]] static Variant Text(std::string_view text);
    // An argument left out (VT_ERROR with DISP_E_PARAMNOTFOUND).
    [[nodiscard]] static Variant Missing() noexcept;

    [[nodiscard]] const VARIANT& Get() const noexcept { return m_variant; }
    // For functions that return a VARIANT through a pointer.
    [[nodiscard]] VARIANT* Put() noexcept;
    // Hands the content to the caller, who clears it.
    [[nodiscard]] VARIANT Detach() noexcept;

    [[nodiscard]] host::Value Value() const;
    // The same as `Value().ToText()` with one copy less: replies of the network come this way.
    [[nodiscard]] std::string ToText() const;
    // The object in it, empty when it holds none.
    [[nodiscard]] ComPtr<IDispatch> Object() const;

private:
    VARIANT m_variant;
};

// Looks through references of any depth that occurs (VT_BYREF of a plain type, of a VARIANT, of a VARIANT that is
// itself one). Missing, empty and null are the null value, an object stands for the value of its default property.
// Currency and decimals without fraction are whole numbers. Faults on arrays, structures and error values.
[[nodiscard]] host::Value ToValue(const VARIANT& variant);

// The object in `variant`, by reference or not; empty when it holds none.
[[nodiscard]] ComPtr<IDispatch> ToObject(const VARIANT& variant);

} // namespace vellumo::windows
