#include "platform/windows/adapters/variant.h"

#include "host/fault.h"
#include "platform/windows/adapters/host_fault.h"
#include "platform/windows/system/bstr.h"

#include <array>
#include <charconv>
#include <limits>
#include <type_traits>
#include <variant>

namespace vellumo::windows
{
namespace
{

using host::Value;

constexpr int deepestReference = 8;

[[noreturn]] void FaultUnusable(const char* what)
{
    throw host::Fault(std::string("Il valore ricevuto dall'applicazione non è utilizzabile: ") + what + ".",
                      DISP_E_TYPEMISMATCH);
}

// The VARIANT that a chain of references ends in; null when a reference leads nowhere.
const VARIANT* FollowVariants(const VARIANT& variant)
{
    const VARIANT* current = &variant;
    for (int depth = 0; current && V_VT(current) == (VT_BYREF | VT_VARIANT); ++depth)
    {
        if (depth == deepestReference)
        {
            FaultUnusable("i riferimenti non hanno fine");
        }
        current = V_VARIANTREF(current);
    }
    return current && (V_ISBYREF(current) && !V_BYREF(current)) ? nullptr : current;
}

// A copy without references.
Variant Resolve(const VARIANT& variant)
{
    Variant resolved;
    if (const VARIANT* target = FollowVariants(variant))
    {
        ThrowIfFailed(VariantCopyInd(resolved.Put(), const_cast<VARIANT*>(target)), "VariantCopyInd");
    }
    return resolved;
}

Value FromWhole(std::int64_t number)
{
    using Small = std::numeric_limits<std::int32_t>;
    if (number >= Small::min() && number <= Small::max())
    {
        return static_cast<std::int32_t>(number);
    }
    return number;
}

Value FromUnsigned(std::uint64_t number)
{
    if (number > static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
    {
        return static_cast<double>(number);
    }
    return FromWhole(static_cast<std::int64_t>(number));
}

// The number that the host wrote: 1.2 as a Single is 1.2000000476837158 when its bits are widened.
double FromSingle(float number)
{
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.begin(), text.end(), number).ptr;
    double real = number;
    std::from_chars(text.begin(), end, real);
    return real;
}

Value FromCurrency(std::int64_t tenThousandths)
{
    constexpr std::int64_t unit = 10000;
    if (tenThousandths % unit == 0)
    {
        return FromWhole(tenThousandths / unit);
    }
    return static_cast<double>(tenThousandths) / static_cast<double>(unit);
}

Value FromDecimal(DECIMAL decimal)
{
    DECIMAL whole{};
    LONG64 number = 0;
    if (SUCCEEDED(VarDecFix(&decimal, &whole)) && VarDecCmp(&decimal, &whole) == VARCMP_EQ &&
        SUCCEEDED(VarI8FromDec(&whole, &number)))
    {
        return FromWhole(number);
    }
    double real = 0;
    ThrowIfFailed(VarR8FromDec(&decimal, &real), "VarR8FromDec");
    return real;
}

Value FromError(SCODE code)
{
    if (code != DISP_E_PARAMNOTFOUND)
    {
        FaultUnusable("è un valore di errore");
    }
    return {};
}

Variant DefaultProperty(IDispatch& object)
{
    DISPPARAMS none{};
    Variant value;
    ThrowIfFailed(object.Invoke(DISPID_VALUE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET | DISPATCH_METHOD,
                                &none, value.Put(), nullptr, nullptr),
                  "la proprietà predefinita dell'oggetto");
    return value;
}

bool HoldsObject(const VARIANT& plain)
{
    return V_VT(&plain) == VT_DISPATCH || V_VT(&plain) == VT_UNKNOWN;
}

ComPtr<IDispatch> ObjectOf(const VARIANT& plain)
{
    return ComPtr<IUnknown>(V_UNKNOWN(&plain)).As<IDispatch>(IID_IDispatch);
}

Value FromPlain(const VARIANT& plain)
{
    switch (V_VT(&plain))
    {
    case VT_EMPTY:
    case VT_NULL:
        return {};
    case VT_BOOL:
        return V_BOOL(&plain) != VARIANT_FALSE;
    case VT_I1:
        return FromWhole(static_cast<signed char>(V_I1(&plain)));
    case VT_UI1:
        return FromWhole(V_UI1(&plain));
    case VT_I2:
        return FromWhole(V_I2(&plain));
    case VT_UI2:
        return FromWhole(V_UI2(&plain));
    case VT_I4:
    case VT_INT:
        return FromWhole(V_I4(&plain));
    case VT_UI4:
    case VT_UINT:
        return FromWhole(V_UI4(&plain));
    case VT_I8:
        return FromWhole(V_I8(&plain));
    case VT_UI8:
        return FromUnsigned(V_UI8(&plain));
    case VT_R4:
        return FromSingle(V_R4(&plain));
    case VT_R8:
        return V_R8(&plain);
    case VT_CY:
        return FromCurrency(V_CY(&plain).int64);
    case VT_DECIMAL:
        return FromDecimal(V_DECIMAL(&plain));
    case VT_DATE:
        return host::Date::FromOle(V_DATE(&plain));
    case VT_BSTR:
        return FromWide(Bstr::View(V_BSTR(&plain)));
    case VT_ERROR:
        return FromError(V_ERROR(&plain));
    default:
        FaultUnusable("il suo tipo non è previsto");
    }
}

VARIANT FromWholeNumber(std::int64_t number)
{
    VARIANT result{};
    if (number >= std::numeric_limits<LONG>::min() && number <= std::numeric_limits<LONG>::max())
    {
        V_VT(&result) = VT_I4;
        V_I4(&result) = static_cast<LONG>(number);
    }
    else
    {
        ThrowIfFailed(VarDecFromI8(number, &V_DECIMAL(&result)), "VarDecFromI8");
        V_VT(&result) = VT_DECIMAL; // last: the type shares its place with the decimal's reserved word
    }
    return result;
}

struct ToVariant
{
    VARIANT result{};

    void operator()(std::monostate) { V_VT(&result) = VT_NULL; }
    void operator()(bool value)
    {
        V_VT(&result) = VT_BOOL;
        V_BOOL(&result) = value ? VARIANT_TRUE : VARIANT_FALSE;
    }
    void operator()(std::int32_t value) { result = FromWholeNumber(value); }
    void operator()(std::int64_t value) { result = FromWholeNumber(value); }
    void operator()(double value)
    {
        V_VT(&result) = VT_R8;
        V_R8(&result) = value;
    }
    void operator()(host::Date value)
    {
        V_VT(&result) = VT_DATE;
        V_DATE(&result) = value.ToOle();
    }
    void operator()(const std::string& value)
    {
        V_BSTR(&result) = Bstr(value).Detach();
        V_VT(&result) = VT_BSTR;
    }
};

} // namespace

Variant::Variant(const host::Value& value)
{
    ToVariant visitor;
    std::visit([&](const auto& alternative) { visitor(alternative); }, value.Get());
    m_variant = visitor.result;
}

Variant::Variant(IDispatch* object) noexcept
    : Variant()
{
    V_DISPATCH(&m_variant) = ComPtr<IDispatch>(object).Detach();
    V_VT(&m_variant) = VT_DISPATCH;
}

Variant::Variant(const std::vector<host::Value>& values)
    : Variant()
{
    SAFEARRAY* elements = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(values.size()));
    if (!elements)
    {
        throw std::bad_alloc();
    }
    V_ARRAY(&m_variant) = elements;
    V_VT(&m_variant) = VT_ARRAY | VT_VARIANT;
    auto* slot = static_cast<VARIANT*>(elements->pvData);
    for (const host::Value& value : values)
    {
        *slot++ = Variant(value).Detach();
    }
}

Variant::Variant(const VARIANT& other)
    : Variant()
{
    ThrowIfFailed(VariantCopy(&m_variant, const_cast<VARIANT*>(&other)), "VariantCopy");
}

Variant::Variant(Variant&& other) noexcept
    : m_variant(other.Detach())
{
}

Variant& Variant::operator=(Variant&& other) noexcept
{
    std::swap(m_variant, other.m_variant);
    return *this;
}

Variant Variant::Text(std::wstring_view text)
{
    Variant result;
    V_BSTR(&result.m_variant) = Bstr(text).Detach();
    V_VT(&result.m_variant) = VT_BSTR;
    return result;
}

Variant Variant::Text(std::string_view text)
{
    return Text(std::wstring_view(ToWide(text)));
}

Variant Variant::Missing() noexcept
{
    Variant result;
    V_VT(&result.m_variant) = VT_ERROR;
    V_ERROR(&result.m_variant) = DISP_E_PARAMNOTFOUND;
    return result;
}

VARIANT* Variant::Put() noexcept
{
    VariantClear(&m_variant);
    return &m_variant;
}

VARIANT Variant::Detach() noexcept
{
    const VARIANT content = m_variant;
    VariantInit(&m_variant);
    return content;
}

host::Value Variant::Value() const
{
    return ToValue(m_variant);
}

std::string Variant::ToText() const
{
    return V_VT(&m_variant) == VT_BSTR ? FromWide(Bstr::View(V_BSTR(&m_variant))) : Value().ToText();
}

ComPtr<IDispatch> Variant::Object() const
{
    return ToObject(m_variant);
}

host::Value ToValue(const VARIANT& variant)
{
    if (!V_ISBYREF(&variant) && !HoldsObject(variant))
    {
        return FromPlain(variant);
    }
    Variant plain = Resolve(variant);
    for (int depth = 0; HoldsObject(plain.Get()); ++depth)
    {
        if (!V_UNKNOWN(&plain.Get()))
        {
            return {};
        }
        const ComPtr<IDispatch> object = ObjectOf(plain.Get());
        if (!object || depth == deepestReference)
        {
            FaultUnusable("è un oggetto senza un valore");
        }
        plain = Resolve(DefaultProperty(*object).Get());
    }
    return FromPlain(plain.Get());
}

ComPtr<IDispatch> ToObject(const VARIANT& variant)
{
    const Variant plain = Resolve(variant);
    return HoldsObject(plain.Get()) ? ObjectOf(plain.Get()) : nullptr;
}

} // namespace vellumo::windows
