// The base of the objects that are the host's own, not ADO's. A strict host answers in all the ways in which real ones
// do, so that none of them is taken for granted:
//
//   True               1 in two bytes and -1 in four, in turn
//   a number           its text
//   Null               Empty
//   an object          a reference to a variant of its own, or to an object variable, in turn
//   Save               nothing, when it has saved
#pragma once

#include "simulator/norda/windows/dispatch_face.h"

namespace vellumo::norda
{

class HostFace : public DispatchFace
{
public:
    // All hosts of this process, from now on.
    static void SetStrict(bool strict) noexcept;

protected:
    using DispatchFace::DispatchFace;

    [[nodiscard]] static bool IsStrict() noexcept;

    [[nodiscard]] windows::Variant Shown(windows::Variant answer) override;

private:
    windows::Variant m_answer; // what the last answer refers to
    unsigned m_turn = 0;
};

} // namespace vellumo::norda
