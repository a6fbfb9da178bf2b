// An object of the library that the host may keep for it, such as a registration's response inside a prescribing
// session. What the host gives back is the same object that it was given.
#pragma once

#include <memory>

namespace vellumo::host
{

class KeptObject
{
public:
    virtual ~KeptObject() = default;

protected:
    KeptObject() = default;
    KeptObject(const KeptObject&) = default;
    KeptObject& operator=(const KeptObject&) = default;
};

} // namespace vellumo::host
