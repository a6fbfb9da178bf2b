// Faults when there is no memory left. The compiler's library keeps some for their exceptions behind a lock, and makes
// the lock when it first needs it, with memory: where there is none, that is a fault in itself, which needs an
// exception, and so on until the stack is used up and the host with it.
#pragma once

namespace vellumo::com
{

// Before anything that can fault. Makes the lock while there is memory.
void PrepareForLackOfMemory();

} // namespace vellumo::com
