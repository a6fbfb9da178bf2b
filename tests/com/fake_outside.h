// What a provider under test finds around it: a bridge that returns a fixed text, record objects in memory, and a
// practice without settings. Everything is offered to COM in this process while it lives.
#pragma once

#include "simulator/norda/windows/class_objects.h"
#include "tests/support/fake_host.h"

namespace vellumo::tests
{

struct FakeOutside
{
    FakeBridge bridge;
    FakeObjects objects;
    norda::PrescriptionObjects prescriptions;
    norda::HostClasses classes{norda::Outside{&bridge, &objects, &prescriptions}};
};

} // namespace vellumo::tests
