#include "simulator/norda/windows/host_face.h"

namespace vellumo::norda
{
namespace
{

using windows::Variant;

bool isStrict = false;

Variant TruthAs(bool value, bool wide)
{
    Variant result;
    VARIANT* const number = result.Put();
    if (wide)
    {
        V_VT(number) = VT_I4;
        V_I4(number) = value ? -1 : 0;
    }
    else
    {
        V_VT(number) = VT_I2;
        V_I2(number) = value ? 1 : 0;
    }
    return result;
}

} // namespace

void HostFace::SetStrict(bool strict) noexcept
{
    isStrict = strict;
}

bool HostFace::IsStrict() noexcept
{
    return isStrict;
}

Variant HostFace::Shown(Variant answer)
{
    if (!isStrict)
    {
        return answer;
    }
    const bool odd = ++m_turn % 2 != 0;
    switch (V_VT(&answer.Get()))
    {
    case VT_BOOL:
        return TruthAs(V_BOOL(&answer.Get()) != VARIANT_FALSE, odd);
    case VT_I4:
        return Variant::Text(std::to_string(V_I4(&answer.Get())));
    case VT_NULL:
        return {};
    case VT_DISPATCH:
    {
        m_answer = std::move(answer);
        auto& kept = const_cast<VARIANT&>(m_answer.Get());
        Variant result;
        VARIANT* const reference = result.Put();
        V_VT(reference) = VT_BYREF | (odd ? VT_VARIANT : VT_DISPATCH);
        if (odd)
        {
            V_VARIANTREF(reference) = &kept;
        }
        else
        {
            V_DISPATCHREF(reference) = &V_DISPATCH(&kept);
        }
        return result;
    }
    default:
        return answer;
    }
}

} // namespace vellumo::norda
